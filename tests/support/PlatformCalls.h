// The functions of the platform that the program calls and that can fail, each with the way it
// does.
#pragma once

#include <span>

#include "tests/support/FailingImport.h"

namespace tellurvane {

enum class Gravity {
  kGivenUp,  // the program goes on without what was asked for
  kFatal,    // it may end, with the report of a fatal error
};

struct RefusedCall {
  PlatformCall call;
  Gravity gravity = Gravity::kGivenUp;
  // Failing at every attempt: a window that cannot begin to paint is asked to paint again at once.
  bool canFailForGood = true;
};

std::span<const RefusedCall> AllFailingCalls();

}  // namespace tellurvane

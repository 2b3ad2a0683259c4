// The platform's functions that fail for users: files, registry, windows, tray, clipboard, player.
#pragma once

#include <span>

#include "tests/support/FailingImport.h"

namespace tellurvane {

enum class Severity {
  kMinor,  // the program continues without the result
  kFatal,  // the program may end with a fatal error
};

struct FailingCall {
  PlatformCall call;
  Severity severity = Severity::kMinor;
};

std::span<const FailingCall> AllFailingCalls();

}  // namespace tellurvane

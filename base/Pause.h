// Waiting without handling messages.
#pragma once

#include <functional>

namespace tellurvane {

// Blocks for this time. Handed in, so that tests need not wait.
using Pause = std::function<void(unsigned milliseconds)>;

// The platform's own.
void SleepFor(unsigned milliseconds);

}  // namespace tellurvane

// Waiting for a library's own messages while the user is kept out.
#pragma once

#include <functional>

namespace tellurvane {

// Returns when the condition holds (true), or after so many milliseconds (false). Other windows'
// messages are handled meanwhile, and what is sent; keys, the mouse and timers are thrown away: a
// click that was meant for the state before must not act on the state after. A quit message is left
// in the queue and ends the wait.
bool AwaitQuietly(const std::function<bool()>& condition, unsigned milliseconds);

}  // namespace tellurvane

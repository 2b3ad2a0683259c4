// Raising events whose handler may delete the object that raises them.
#pragma once

#include <functional>
#include <utility>

namespace tellurvane {

// Calls the handler, if there is one. It is copied first, because it may be replaced or deleted
// while it runs.
template <typename... Parameters, typename... Arguments>
void Raise(const std::function<void(Parameters...)>& event, Arguments&&... arguments) {
  if (const auto call = event) call(std::forward<Arguments>(arguments)...);
}

}  // namespace tellurvane

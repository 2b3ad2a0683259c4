// Raising events whose handler may delete the object that raises them.
#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace tellurvane {

// Calls the handler, if there is one. It is copied first, because it may be replaced or deleted
// while it runs.
template <typename... Parameters, typename... Arguments>
void Raise(const std::function<void(Parameters...)>& event, Arguments&&... arguments) {
  if (const auto call = event) call(std::forward<Arguments>(arguments)...);
}

// A member that tells, after an event, whether the object is still there:
//   const auto isGone = lifetime_.Watch();
//   Raise(Click);
//   if (isGone()) return;
class Lifetime {
 public:
  Lifetime() = default;
  Lifetime(const Lifetime&) = delete;
  Lifetime& operator=(const Lifetime&) = delete;
  ~Lifetime() = default;

  auto Watch() const {
    return [mark = std::weak_ptr<Mark>(mark_)] { return mark.expired(); };
  }

 private:
  struct Mark {};
  std::shared_ptr<Mark> mark_ = std::make_shared<Mark>();
};

}  // namespace tellurvane

// Acting inside an open popup menu.
#pragma once

#include <functional>

namespace tellurvane {

// `open` opens a menu and returns when it is closed. `act` runs once the menu is visible, and must
// close it.
void InOpenMenu(const std::function<void()>& open, const std::function<void()>& act);

}  // namespace tellurvane

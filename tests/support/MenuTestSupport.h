// Acting inside an open popup menu.
#pragma once

#include <windows.h>

#include <functional>

namespace tellurvane {

// `open` opens a menu and returns when it is closed. `act` runs once the menu is visible, and must
// close it.
void InOpenMenu(const std::function<void()>& open, const std::function<void()>& act);

// Chooses an entry, counted from 1, by the keys that the menu's owner gets.
void ChooseInMenu(const std::function<void()>& open, HWND owner, int entry);

}  // namespace tellurvane

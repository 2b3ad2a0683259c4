// Shows the program's menus.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "mainwin/Menus.h"

namespace tellurvane {

// Builds the menu, shows it and destroys it. At the mouse, unless a place of the screen is named.
// Returns the chosen entry, or 0 when the menu is dismissed.
UINT ShowPopupMenu(HWND owner, const std::vector<MenuEntry>& entries,
                   std::optional<UINT> defaultItem, std::optional<POINT> place = {});

}  // namespace tellurvane

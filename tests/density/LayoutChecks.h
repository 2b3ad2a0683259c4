// Checks of a window's layout, for every density of the screen.
#pragma once

#include <windows.h>

namespace tellurvane {

// No two visible siblings overlap, nothing leaves its parent, and no caption of a button, option,
// label, drop-down list, toolbar or column is clipped. Texts of the user are not checked: those of
// edit boxes and list rows.
void ExpectGoodLayout(HWND window);

// The text of a label or button fits.
void ExpectTextFits(HWND control);

}  // namespace tellurvane

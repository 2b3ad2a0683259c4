// The mark of the row, button or slider that has the keyboard.
#pragma once

#include <windows.h>

namespace tellurvane {

// Along the box's inner edge. Drawing it twice changes nothing, unlike the system's dotted frame.
void DrawFocusFrame(HDC target, const RECT& box);

}  // namespace tellurvane

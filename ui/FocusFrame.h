// The mark of the row, button or slider that has the keyboard.
#pragma once

#include <windows.h>

namespace tellurvane {

// Along the box's inner edge. Drawing it twice changes nothing, unlike the system's dotted frame.
// Under high contrast it has the system colour of this index, that of a text on the same ground.
void DrawFocusFrame(HDC target, const RECT& box, int systemIndex);

}  // namespace tellurvane

// The font of the toolkit's native controls: Tahoma, 9 points.
#pragma once

#include <windows.h>

namespace tellurvane {

// One font for the whole process; nobody deletes it. Where Tahoma has no Chinese and the system
// lends it none, the system's own choice among the faces that have some.
// None, and asked for again at the next call, where the system makes no font.
HFONT ToolkitFont();

}  // namespace tellurvane

// The font of the toolkit's native controls: Tahoma, 9 points.
#pragma once

#include <windows.h>

namespace tellurvane {

// One font for the whole process; nobody deletes it.
HFONT ToolkitFont();

}  // namespace tellurvane

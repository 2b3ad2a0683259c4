// The font of the toolkit's native controls: Tahoma, 9 points.
#pragma once

#include <windows.h>

namespace tellurvane {

// One font for the whole process, which owns it. Where Tahoma shows no Chinese, a face of the
// system's choice that does.
HFONT ToolkitFont();

}  // namespace tellurvane

// The plain text on the clipboard.
#pragma once

#include <windows.h>

#include <string>

namespace tellurvane {

// Empty if the clipboard has no text or cannot be opened. Line breaks are CR LF.
std::wstring ClipboardText(HWND window);

}  // namespace tellurvane

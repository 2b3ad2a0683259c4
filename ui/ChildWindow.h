// A native control inside one of our windows.
#pragma once

#include <windows.h>

namespace tellurvane {

// Pixels in the parent's client area.
struct ChildWindowArgs {
  HWND parent = nullptr;
  const wchar_t* className = nullptr;
  DWORD style = 0;
  DWORD extendedStyle = 0;
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

// Throws FatalError when it fails: no window can be used without its controls.
HWND CreateChildWindow(const ChildWindowArgs& args);

}  // namespace tellurvane

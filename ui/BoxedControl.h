// A control with its own picture box.
#pragma once

#include "ui/PictureBox.h"
#include "ui/clsControl.h"

namespace tellurvane {

struct BoxedControl {
  PictureBox box;
  clsControl control;

  // The box gets the window's colour and no size yet.
  void Create(HWND parent, ControlKind kind, const wchar_t* text);
  // In pixels of the parent. Lengths below 0 become 0.
  void Move(int x, int y, int width, int height);
};

}  // namespace tellurvane

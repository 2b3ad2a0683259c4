// A control in a picture box of its own.
#pragma once

#include "ui/PictureBox.h"
#include "ui/clsControl.h"

namespace tellurvane {

struct BoxedControl {
  PictureBox box;
  clsControl control;

  // The box on the window's ground, of no size yet, and in it the control with its text. What is to
  // hold for the control from the start is set before.
  void Create(HWND parent, ControlKind kind, const wchar_t* text);
  // Pixels on the parent; a length below 0 is none.
  void Move(int x, int y, int width, int height);
};

}  // namespace tellurvane

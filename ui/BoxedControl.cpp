#include "ui/BoxedControl.h"

#include <algorithm>

#include "ui/ModTheme.h"

namespace tellurvane {

void BoxedControl::Create(HWND parent, ControlKind kind, const wchar_t* text) {
  box.Create({.parent = parent, .backColor = ModTheme::kWindowGround});
  control.TargetPictureBox(box);
  control.Create(kind);
  control.text(text);
}

void BoxedControl::Move(int x, int y, int width, int height) {
  box.Move(x, y, std::max(width, 0), std::max(height, 0));
}

}  // namespace tellurvane

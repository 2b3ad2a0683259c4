#include "ui/BoxedControl.h"

#include "ui/ModTheme.h"

namespace tellurvane {

void BoxedControl::Create(HWND parent, ControlKind kind, const wchar_t* text) {
  box.Create({.parent = parent, .backColor = ModTheme::kWindowGround});
  control.TargetPictureBox(box);
  control.Create(kind);
  control.text(text);
}

}  // namespace tellurvane

#include "ui/PictureBox.h"

#include "ui/Event.h"

namespace tellurvane {

void PictureBox::Create(const PictureBoxArgs& args) {
  WindowArgs window;
  window.parent = args.parent;
  window.x = args.x;
  window.y = args.y;
  window.width = args.width;
  window.height = args.height;
  window.style = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
  if (args.isVisible) window.style |= WS_VISIBLE;
  // The Tab key goes through a host to its control.
  if (args.isTabStop) {
    window.style |= WS_TABSTOP;
  } else {
    window.extendedStyle |= WS_EX_CONTROLPARENT;
  }
  BackColor(args.backColor);
  CreateBound({.name = L"TellurvanePictureBox", .style = CS_DBLCLKS}, window);
}

LRESULT PictureBox::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_KEYDOWN:
      // Copied: the handler may delete this box.
      if (const auto call = KeyDown; call && call(static_cast<UINT>(wParam))) return 0;
      break;
    case WM_GETDLGCODE:
      return KeyDown ? DLGC_WANTARROWS : DLGC_STATIC;
    case WM_ENABLE:
      Raise(EnabledChanged);
      return 0;
    default:
      break;
  }
  return DrawnWindow::HandleMessage(message, wParam, lParam);
}

}  // namespace tellurvane

// The clock's mouse and keyboard.
#include "clock/FrmTime.h"

namespace tellurvane {

void FrmTime::ForwardMouse(DrawnWindow& window) {
  window.MouseDown = [this](const MouseEvent& event) { Form_MouseDown(event); };
  window.MouseMove = [this](const MouseEvent& event) { Form_MouseMove(event); };
}

void FrmTime::Form_MouseDown(const MouseEvent& event) {
  if (event.button == kLeftButton) BeginDrag();
  if (event.button == kRightButton) callbacks_.openTrayMenu(hwnd(), {});
}

void FrmTime::Form_MouseMove(const MouseEvent&) { PullInside(); }

bool FrmTime::Form_KeyDown(const KeyEvent& event) {
  if (event.key != VK_F6 || event.shift != 0) return false;
  if (!event.isRepeated) callbacks_.nextWindow();
  return true;
}

void FrmTime::ShowFocus(bool isFocused) {
  isFocused_ = isFocused;
  PrepareFace();
  if (Visible()) DrawTime();
}

// At the lower left corner.
POINT FrmTime::MenuPlace() const {
  RECT place = {};
  GetWindowRect(hwnd(), &place);
  return {place.left, place.bottom};
}

// A click on the clock or a move does not take the keyboard from another program. Under X11 a
// window that becomes active during a move also gets a new frame, which ends the move.
LRESULT FrmTime::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CLOSE:
      // Only the menu hides the clock, together with the setting.
      return 0;
    case WM_CONTEXTMENU:
      // Only from the keyboard: the mouse opens the menu when its button goes down.
      if (lParam == -1) callbacks_.openTrayMenu(hwnd(), MenuPlace());
      return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      ShowFocus(message == WM_SETFOCUS);
      return 0;
    case WM_MOUSEACTIVATE:
      return MA_NOACTIVATE;
    case WM_WINDOWPOSCHANGING:
      reinterpret_cast<WINDOWPOS*>(lParam)->flags |= SWP_NOACTIVATE;
      return Form::HandleMessage(message, wParam, lParam);
    case WM_NCLBUTTONDOWN:
      return SendMessageW(hwnd(), WM_SYSCOMMAND, SC_MOVE | wParam, lParam);
    default:
      return Form::HandleMessage(message, wParam, lParam);
  }
}

}  // namespace tellurvane

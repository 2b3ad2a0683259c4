#include "ui/DrawnWindow.h"

#include <windows.h>

#include <windowsx.h>

#include "ui/Event.h"
#include "ui/UserPreferences.h"

namespace tellurvane {
namespace {

int ShiftOf(WPARAM keys) {
  int shift = 0;
  if ((keys & MK_SHIFT) != 0) shift |= kShiftKey;
  if ((keys & MK_CONTROL) != 0) shift |= kControlKey;
  if (GetKeyState(VK_MENU) < 0) shift |= kAltKey;
  return shift;
}

MouseEvent EventOf(int button, WPARAM keys, LPARAM position) {
  return {button, ShiftOf(keys), GET_X_LPARAM(position), GET_Y_LPARAM(position)};
}

}  // namespace

int ShiftNow() {
  const auto bit = [](int key, int bits) { return GetKeyState(key) < 0 ? bits : 0; };
  return bit(VK_SHIFT, kShiftKey) | bit(VK_CONTROL, kControlKey) | bit(VK_MENU, kAltKey);
}

bool IsRepeatedKey(LPARAM lParam) { return (HIWORD(lParam) & KF_REPEAT) != 0; }

int ButtonsDown(WPARAM keys) {
  int buttons = kNoButton;
  if ((keys & MK_LBUTTON) != 0) buttons |= kLeftButton;
  if ((keys & MK_RBUTTON) != 0) buttons |= kRightButton;
  if ((keys & MK_MBUTTON) != 0) buttons |= kMiddleButton;
  return buttons;
}

void DrawnWindow::BackColor(Color color) {
  backColor_ = color;
  if (hwnd() != nullptr) Redraw();
}

void DrawnWindow::Refresh() {
  InvalidateRect(hwnd(), nullptr, FALSE);
  UpdateWindow(hwnd());
}

void DrawnWindow::Refresh(const RECT& area) {
  InvalidateRect(hwnd(), &area, FALSE);
  UpdateWindow(hwnd());
}

void DrawnWindow::Redraw() {
  FitSurface();
  if (Dc() == nullptr) return;
  Clear();
  if (Paint) Paint(Dc());
  Refresh();
}

LRESULT DrawnWindow::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      CopyToScreen();
      return 0;
    case WM_SIZE:
      FitSurface();
      Raise(Resize);
      return 0;
    case WM_SYSCOLORCHANGE:
    case WM_SETTINGCHANGE:
      RefreshHighContrast();
      // The children first: a parent may draw on them.
      Window::HandleMessage(message, wParam, lParam);
      ColorsChanged();
      return 0;
    default:
      return RaiseMouse(message, wParam, lParam) ? 0
                                                 : Window::HandleMessage(message, wParam, lParam);
  }
}

bool DrawnWindow::RaiseMouse(UINT message, WPARAM wParam, LPARAM lParam) const {
  switch (message) {
    case WM_LBUTTONDOWN:
      Raise(MouseDown, EventOf(kLeftButton, wParam, lParam));
      return true;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:  // the second of two quick presses
      Raise(MouseDown, EventOf(kRightButton, wParam, lParam));
      return true;
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
      Raise(MouseDown, EventOf(kMiddleButton, wParam, lParam));
      return true;
    case WM_LBUTTONUP:
      Raise(MouseUp, EventOf(kLeftButton, wParam, lParam));
      return true;
    case WM_RBUTTONUP:
      Raise(MouseUp, EventOf(kRightButton, wParam, lParam));
      return true;
    case WM_MBUTTONUP:
      Raise(MouseUp, EventOf(kMiddleButton, wParam, lParam));
      return true;
    case WM_LBUTTONDBLCLK:
      Raise(DblClick, EventOf(kLeftButton, wParam, lParam));
      return true;
    case WM_MOUSEMOVE:
      Raise(MouseMove, EventOf(ButtonsDown(wParam), wParam, lParam));
      return true;
    default:
      return false;
  }
}

void DrawnWindow::FitSurface() {
  if (!surface_.Resize(ScaleWidth(), ScaleHeight(), backColor_)) return;
  if (Paint) Paint(Dc());
  InvalidateRect(hwnd(), nullptr, FALSE);
}

void DrawnWindow::CopyToScreen() {
  PAINTSTRUCT paint = {};
  const HDC screen = BeginPaint(hwnd(), &paint);
  if (Dc() == nullptr) FitSurface();
  if (Dc() != nullptr) surface_.CopyTo(screen, paint.rcPaint);
  EndPaint(hwnd(), &paint);
}

}  // namespace tellurvane

#include "ui/Form.h"

#include <algorithm>
#include <utility>

#include "ui/MessageLoop.h"
#include "ui/ModTheme.h"
#include "ui/ScreenPlace.h"
#include "ui/Twips.h"

namespace tellurvane {
namespace {

DWORD StyleOf(FormBorder border) {
  switch (border) {
    case FormBorder::kNone:
      return WS_POPUP;
    case FormBorder::kFixedSingle:
      return WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
    case FormBorder::kFixedDialog:
      return WS_POPUP | WS_CAPTION | WS_SYSMENU;
  }
  return WS_OVERLAPPED;
}

DWORD ExtendedStyleOf(FormBorder border) {
  switch (border) {
    case FormBorder::kNone:
      return WS_EX_TOOLWINDOW;
    case FormBorder::kFixedSingle:
      return WS_EX_APPWINDOW;
    case FormBorder::kFixedDialog:
      return WS_EX_DLGMODALFRAME;
  }
  return 0;
}

RECT OuterRect(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  return rect;
}

RECT WorkAreaOf(HWND window) {
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof(monitor);
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
  return monitor.rcWork;
}

}  // namespace

FormArgs DialogArgs(const std::wstring& caption, int widthTwips, int heightTwips, HWND owner) {
  return {.caption = caption,
          .border = FormBorder::kFixedDialog,
          .widthTwips = widthTwips,
          .heightTwips = heightTwips,
          .backColor = ModTheme::kWindowGround,
          .owner = owner,
          .icon = ExecutableIcon()};
}

HICON ExecutableIcon() { return LoadIconW(GetModuleHandleW(nullptr), L"AAA"); }

Form::~Form() { RemoveKeyboardForm(hwnd()); }

void Form::Load(const FormArgs& args) {
  WindowArgs window;
  window.caption = args.caption;
  window.style = StyleOf(args.border) | WS_CLIPCHILDREN;
  window.extendedStyle = ExtendedStyleOf(args.border) | args.extendedStyle | WS_EX_CONTROLPARENT;
  window.x = window.y = CW_USEDEFAULT;
  if (args.border == FormBorder::kNone) window.x = window.y = 0;
  window.width = PixelsFromTwipsX(args.widthTwips);
  window.height = PixelsFromTwipsY(args.heightTwips);
  window.parent = args.owner;
  window.icon = args.icon;
  BackColor(args.backColor);
  CreateBound(args.className.c_str(), CS_DBLCLKS, window);
  AddKeyboardForm(hwnd());
  Form_Load();
}

void Form::Show() {
  ShowWindow(hwnd(), SW_SHOWNORMAL);
  UpdateWindow(hwnd());
}

void Form::ShowWithoutFocus() {
  ShowWindow(hwnd(), SW_SHOWNOACTIVATE);
  UpdateWindow(hwnd());
}

void Form::Hide() {
  isModal_ = false;
  ReleaseOwner();
  ShowWindow(hwnd(), SW_HIDE);
}

void Form::ShowModal() {
  const HWND owner = GetWindow(hwnd(), GW_OWNER);
  modalOwner_ = owner != nullptr && IsWindowEnabled(owner) ? owner : nullptr;
  if (modalOwner_ != nullptr) EnableWindow(modalOwner_, FALSE);
  isModal_ = true;
  Show();
  // Not asked by visibility: a window also disappears, for a while, with its minimised owner.
  RunMessageLoopWhile([this] { return hwnd() != nullptr && isModal_; });
  isModal_ = false;
  ReleaseOwner();
}

bool Form::Unload() {
  if (hwnd() == nullptr) return true;
  if (!Form_Unload()) return false;
  RemoveKeyboardForm(hwnd());
  ReleaseOwner();
  DestroyWindow(hwnd());
  return true;
}

// Before the form goes: a disabled owner would lose the foreground to another program.
void Form::ReleaseOwner() {
  if (modalOwner_ != nullptr) EnableWindow(std::exchange(modalOwner_, nullptr), TRUE);
}

int Form::Left() const { return static_cast<int>(OuterRect(hwnd()).left) * TwipsPerPixelX(); }

int Form::Top() const { return static_cast<int>(OuterRect(hwnd()).top) * TwipsPerPixelY(); }

int Form::Width() const {
  const RECT outer = OuterRect(hwnd());
  return static_cast<int>(outer.right - outer.left) * TwipsPerPixelX();
}

int Form::Height() const {
  const RECT outer = OuterRect(hwnd());
  return static_cast<int>(outer.bottom - outer.top) * TwipsPerPixelY();
}

void Form::Move(int leftTwips, int topTwips) {
  SetWindowPos(hwnd(), nullptr, PixelsFromTwipsX(leftTwips), PixelsFromTwipsY(topTwips), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Form::Move(int leftTwips, int topTwips, int widthTwips, int heightTwips) {
  SetWindowPos(hwnd(), nullptr, PixelsFromTwipsX(leftTwips), PixelsFromTwipsY(topTwips),
               PixelsFromTwipsX(widthTwips), PixelsFromTwipsY(heightTwips),
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void Form::BeginDrag() {
  ReleaseCapture();
  SendMessageW(hwnd(), WM_NCLBUTTONDOWN, HTCAPTION, 0);
}

void Form::PullInside() {
  const RECT outer = OuterRect(hwnd());
  const ScreenPlace now = {static_cast<int>(outer.left), static_cast<int>(outer.top),
                           static_cast<int>(outer.right - outer.left),
                           static_cast<int>(outer.bottom - outer.top)};
  const ScreenPlace inside =
      PulledInside(now, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN));
  if (inside == now) return;
  SetWindowPos(hwnd(), nullptr, inside.left, inside.top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Form::Center() {
  const RECT work = WorkAreaOf(hwnd());
  const HWND owner = GetWindow(hwnd(), GW_OWNER);
  const bool hasPlace = owner != nullptr && IsWindowVisible(owner) && !IsIconic(owner);
  const RECT around = hasPlace ? OuterRect(owner) : work;
  const RECT outer = OuterRect(hwnd());
  const auto width = outer.right - outer.left;
  const auto height = outer.bottom - outer.top;
  const auto x = (around.left + around.right - width) / 2;
  const auto y = (around.top + around.bottom - height) / 2;
  SetWindowPos(hwnd(), nullptr,
               static_cast<int>(std::max(work.left, std::min(x, work.right - width))),
               static_cast<int>(std::max(work.top, std::min(y, work.bottom - height))), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Form::ResizeInside(int width, int height) {
  RECT frame = {0, 0, width, height};
  AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongPtrW(hwnd(), GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongPtrW(hwnd(), GWL_EXSTYLE)));
  SetWindowPos(hwnd(), nullptr, 0, 0, static_cast<int>(frame.right - frame.left),
               static_cast<int>(frame.bottom - frame.top),
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Form::Opacity(BYTE opacity) {
  const LONG_PTR style = GetWindowLongPtrW(hwnd(), GWL_EXSTYLE);
  if ((style & WS_EX_LAYERED) == 0) {
    SetWindowLongPtrW(hwnd(), GWL_EXSTYLE, style | WS_EX_LAYERED);
  }
  SetLayeredWindowAttributes(hwnd(), 0, opacity, LWA_ALPHA);
}

LRESULT Form::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CLOSE:
      Unload();
      return 0;
    case WM_COMMAND:
      if (wParam == IDOK) Form_Enter();
      if (wParam == IDCANCEL) Form_Escape();
      return 0;
    case WM_ACTIVATE:
      KeepFocus();
      if (LOWORD(wParam) != WA_INACTIVE && focus_ != nullptr) {
        ::SetFocus(focus_);
        return 0;
      }
      return DrawnWindow::HandleMessage(message, wParam, lParam);
    default:
      return DrawnWindow::HandleMessage(message, wParam, lParam);
  }
}

void Form::KeepFocus() {
  const HWND now = GetFocus();
  if (now != nullptr && IsChild(hwnd(), now)) focus_ = now;
  if (focus_ != nullptr && !IsChild(hwnd(), focus_)) focus_ = nullptr;
}

void Form::OnMouseDown(const MouseEvent& event) { Form_MouseDown(event); }
void Form::OnMouseMove(const MouseEvent& event) { Form_MouseMove(event); }
void Form::OnMouseUp(const MouseEvent& event) { Form_MouseUp(event); }
void Form::OnDblClick(const MouseEvent& event) { Form_DblClick(event); }

void Form::OnResize() {
  DrawnWindow::OnResize();
  Form_Resize();
}

}  // namespace tellurvane

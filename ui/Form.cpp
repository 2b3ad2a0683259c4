#include "ui/Form.h"

#include <utility>
#include <vector>

#include "ui/Density.h"
#include "ui/Handle.h"
#include "ui/MessageLoop.h"
#include "ui/ModTheme.h"
#include "ui/ScreenPlace.h"
#include "ui/UserPreferences.h"

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

ScreenPlace PlaceOf(const RECT& rect) {
  return {static_cast<int>(rect.left), static_cast<int>(rect.top),
          static_cast<int>(rect.right - rect.left), static_cast<int>(rect.bottom - rect.top)};
}

ScreenPlace WorkAreaOf(HWND window) {
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof(monitor);
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
  return PlaceOf(monitor.rcWork);
}

BOOL CALLBACK AddScreen(HMONITOR /*monitor*/, HDC /*context*/, RECT* rect,
                        LPARAM screens) noexcept {
  reinterpret_cast<std::vector<ScreenPlace>*>(screens)->push_back(PlaceOf(*rect));
  return TRUE;
}

// The main screen alone when the system lists none.
std::vector<ScreenPlace> AllScreens() {
  std::vector<ScreenPlace> screens;
  EnumDisplayMonitors(nullptr, nullptr, AddScreen, reinterpret_cast<LPARAM>(&screens));
  if (screens.empty()) {
    screens.push_back({0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)});
  }
  return screens;
}

void MoveTo(HWND window, const ScreenPlace& place) {
  SetWindowPos(window, nullptr, place.left, place.top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// Not a shared icon: the system shares one size of it only.
HICON LoadExecutableIcon(int widthMetric, int heightMetric) {
  return static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), L"AAA", IMAGE_ICON,
                                       GetSystemMetrics(widthMetric),
                                       GetSystemMetrics(heightMetric), LR_DEFAULTCOLOR));
}

// Of the task switcher, and of the caption, the taskbar and the tray. Null without such a resource.
HICON BigIcon() {
  static const UniqueIcon icon(LoadExecutableIcon(SM_CXICON, SM_CYICON));
  return icon.Get();
}

HICON SmallIcon() {
  static const UniqueIcon icon(LoadExecutableIcon(SM_CXSMICON, SM_CYSMICON));
  return icon.Get();
}

}  // namespace

FormArgs DialogArgs(const std::wstring& caption, int widthTwips, int heightTwips, HWND owner) {
  return {.caption = caption,
          .border = FormBorder::kFixedDialog,
          .widthTwips = widthTwips,
          .heightTwips = heightTwips,
          .backColor = ModTheme::kWindowGround,
          .owner = owner};
}

Form::~Form() { RemoveKeyboardForm(hwnd()); }

void Form::Load(const FormArgs& args) {
  WindowArgs window;
  window.caption = args.caption;
  window.style = StyleOf(args.border) | WS_CLIPCHILDREN;
  window.extendedStyle = ExtendedStyleOf(args.border) | args.extendedStyle | WS_EX_CONTROLPARENT;
  window.x = window.y = CW_USEDEFAULT;
  if (args.border == FormBorder::kNone) window.x = window.y = 0;
  window.width = PixelsFromTwips(args.widthTwips);
  window.height = PixelsFromTwips(args.heightTwips);
  window.parent = args.owner;
  BackColor(args.backColor);
  // Not the window's own icons: Wine reads both again with each that a window gets.
  CreateBound({.name = args.className.c_str(),
               .style = CS_DBLCLKS,
               .bigIcon = BigIcon(),
               .smallIcon = SmallIcon()},
              window);
  if (args.border == FormBorder::kFixedDialog) ShowOwnIcons();
  AddKeyboardForm(hwnd(), [this](const MSG& message) {
    return Form_KeyDown({.key = static_cast<UINT>(message.wParam),
                         .shift = ShiftNow(),
                         .isRepeated = IsRepeatedKey(message.lParam)});
  });
  Form_Load();
  // Otherwise Windows shows the focus only after the first Tab.
  SendMessageW(hwnd(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
}

// The frame of a dialog does not show its class's.
void Form::ShowOwnIcons() const {
  SendMessageW(hwnd(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(BigIcon()));
  SendMessageW(hwnd(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(SmallIcon()));
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
  // Not by visibility: a window is also hidden while its owner is minimised.
  RunMessageLoopWhile([this] { return hwnd() != nullptr && isModal_; });
  isModal_ = false;
  ReleaseOwner();
}

bool Form::Unload() {
  if (hwnd() == nullptr) return true;
  if (!Form_Unload()) return false;
  ReleaseOwner();
  DestroyWindow(hwnd());
  return true;
}

// Also when the owner destroyed it: another window may get the handle later.
void Form::OnDestroyed(HWND window) { RemoveKeyboardForm(window); }

// Before the form is hidden: a disabled owner would lose the foreground to another program.
void Form::ReleaseOwner() {
  if (modalOwner_ != nullptr) EnableWindow(std::exchange(modalOwner_, nullptr), TRUE);
}

int Form::Left() const { return TwipsFromPixels(static_cast<int>(OuterRect(hwnd()).left)); }

int Form::Top() const { return TwipsFromPixels(static_cast<int>(OuterRect(hwnd()).top)); }

int Form::Width() const {
  const RECT outer = OuterRect(hwnd());
  return TwipsFromPixels(static_cast<int>(outer.right - outer.left));
}

int Form::Height() const {
  const RECT outer = OuterRect(hwnd());
  return TwipsFromPixels(static_cast<int>(outer.bottom - outer.top));
}

void Form::Move(int leftTwips, int topTwips) {
  SetWindowPos(hwnd(), nullptr, PixelsFromTwips(leftTwips), PixelsFromTwips(topTwips), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Form::Move(int leftTwips, int topTwips, int widthTwips, int heightTwips) {
  SetWindowPos(hwnd(), nullptr, PixelsFromTwips(leftTwips), PixelsFromTwips(topTwips),
               PixelsFromTwips(widthTwips), PixelsFromTwips(heightTwips),
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void Form::BeginDrag() {
  ReleaseCapture();
  SendMessageW(hwnd(), WM_NCLBUTTONDOWN, HTCAPTION, 0);
}

void Form::PullInside() {
  const ScreenPlace now = PlaceOf(OuterRect(hwnd()));
  const ScreenPlace inside = PulledInside(now, AllScreens());
  if (inside != now) MoveTo(hwnd(), inside);
}

void Form::Center() {
  const HWND owner = GetWindow(hwnd(), GW_OWNER);
  // The form may have been created on another screen than its owner's.
  const ScreenPlace area = WorkAreaOf(owner != nullptr ? owner : hwnd());
  const bool hasPlace = owner != nullptr && IsWindowVisible(owner) && !IsIconic(owner);
  const ScreenPlace around = hasPlace ? PlaceOf(OuterRect(owner)) : area;
  MoveTo(hwnd(), CentredOn(PlaceOf(OuterRect(hwnd())), around, area));
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

void Form::Translucency(BYTE opacity) {
  constexpr BYTE kOpaque = 255;
  Opacity(IsHighContrast() ? kOpaque : opacity);
}

void Form::Fade(std::span<const BYTE> opacities, const Pause& pause) {
  constexpr unsigned kMilliseconds = 30;
  if (!HasAnimations()) return;
  for (const BYTE opacity : opacities) {
    Opacity(opacity);
    pause(kMilliseconds);
  }
}

LRESULT Form::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CLOSE:
      // A form that waits for its dialog is disabled, and so is its close box.
      if (Enabled()) Unload();
      return 0;
    case WM_COMMAND:
      if (wParam == IDOK) Form_Enter();
      if (wParam == IDCANCEL) Form_Escape();
      return 0;
    case WM_DISPLAYCHANGE:
      // A screen may be gone or smaller. A minimised window is moved when it is restored.
      if (IsIconic(hwnd())) {
        pullInsideOnRestore_ = true;
      } else {
        PullInside();
      }
      return DrawnWindow::HandleMessage(message, wParam, lParam);
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED && std::exchange(pullInsideOnRestore_, false)) PullInside();
      DrawnWindow::HandleMessage(message, wParam, lParam);
      Form_Resize();
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(wParam) == WA_INACTIVE) ForgetPressedKey();
      KeepFocus();
      if (const HWND target = FocusTarget(); LOWORD(wParam) != WA_INACTIVE && target != nullptr) {
        ::SetFocus(target);
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

// The form itself may be hidden: its menu can be open.
bool Form::CanTakeFocus(HWND control) const {
  if (control == nullptr || !IsChild(hwnd(), control)) return false;
  for (HWND window = control; window != hwnd(); window = GetParent(window)) {
    const bool isVisible = (GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) != 0;
    if (!isVisible || !IsWindowEnabled(window)) return false;
  }
  return true;
}

HWND Form::FocusTarget() const {
  if (CanTakeFocus(focus_)) return focus_;
  if (CanTakeFocus(firstFocus_)) return firstFocus_;
  // Returns a window that is no tab stop if there is none.
  const HWND first = GetNextDlgTabItem(hwnd(), nullptr, FALSE);
  const bool isStop = first != nullptr && (GetWindowLongPtrW(first, GWL_STYLE) & WS_TABSTOP) != 0;
  return isStop && CanTakeFocus(first) ? first : nullptr;
}

}  // namespace tellurvane

#include "ui/Window.h"

#include "base/FatalError.h"
#include "ui/Boundary.h"

namespace tellurvane {
namespace {

void RegisterOnce(const WindowClass& windowClass, WNDPROC procedure) {
  WNDCLASSEXW definition = {};
  definition.cbSize = sizeof(definition);
  const HINSTANCE instance = GetModuleHandleW(nullptr);
  if (GetClassInfoExW(instance, windowClass.name, &definition)) return;
  definition = {};
  definition.cbSize = sizeof(definition);
  definition.style = windowClass.style;
  definition.lpfnWndProc = procedure;
  definition.hInstance = instance;
  definition.hIcon = windowClass.bigIcon;
  definition.hIconSm = windowClass.smallIcon;
  definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  definition.hbrBackground = nullptr;  // our windows paint all of themselves
  definition.lpszClassName = windowClass.name;
  RegisterClassExW(&definition);
}

}  // namespace

std::wstring TextOf(HWND window) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(
      static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

Window::~Window() {
  if (window_ == nullptr) return;
  SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
  DestroyWindow(window_);
}

void Window::TrackMouseLeave() const {
  TRACKMOUSEEVENT track = {};
  track.cbSize = sizeof(track);
  track.dwFlags = TME_LEAVE;
  track.hwndTrack = window_;
  TrackMouseEvent(&track);
}

int Window::ScaleWidth() const {
  RECT client = {};
  GetClientRect(window_, &client);
  return client.right;
}

int Window::ScaleHeight() const {
  RECT client = {};
  GetClientRect(window_, &client);
  return client.bottom;
}

void Window::CreateBound(const WindowClass& windowClass, const WindowArgs& args) {
  RegisterOnce(windowClass, Procedure);
  (void)CreateWindowExW(args.extendedStyle, windowClass.name, args.caption.c_str(), args.style,
                        args.x, args.y, args.width, args.height, args.parent, nullptr,
                        GetModuleHandleW(nullptr), this);
  if (window_ == nullptr) throw FatalError(L"無法建立視窗，程式無法繼續執行。");
}

LRESULT Window::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_SYSCOLORCHANGE || message == WM_SETTINGCHANGE) {
    PassToChildren(message, wParam, lParam);
  }
  return DefWindowProcW(window_, message, wParam, lParam);
}

// The system sends it to top-level windows only, and the native controls keep the old colours.
void Window::PassToChildren(UINT message, WPARAM wParam, LPARAM lParam) const {
  HWND child = GetWindow(window_, GW_CHILD);
  while (child != nullptr) {
    SendMessageW(child, message, wParam, lParam);
    child = GetWindow(child, GW_HWNDNEXT);
  }
}

LRESULT CALLBACK Window::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    auto* const created =
        static_cast<Window*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    // Fail if the object pointer was not stored.
    if (GetWindowLongPtrW(window, GWLP_USERDATA) == 0) return FALSE;
    created->window_ = window;
  }
  auto* const self = reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self == nullptr || IsEnding()) return DefWindowProcW(window, message, wParam, lParam);
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    self->window_ = nullptr;
    self->OnDestroyed(window);
    return DefWindowProcW(window, message, wParam, lParam);
  }
  return GuardBoundary([&] { return self->HandleMessage(message, wParam, lParam); });
}

}  // namespace tellurvane

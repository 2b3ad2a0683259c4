// A window that belongs to an object.
#pragma once

#include <windows.h>

#include <string>

namespace tellurvane {

// Its caption, or a control's text.
std::wstring TextOf(HWND window);

// What the windows of a class have in common.
struct WindowClass {
  const wchar_t* name;
  UINT style = 0;
  HICON bigIcon = nullptr;
  HICON smallIcon = nullptr;
};

// How a window is created. Positions and sizes are pixels, the frame included.
struct WindowArgs {
  std::wstring caption;
  DWORD style = 0;
  DWORD extendedStyle = 0;
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  HWND parent = nullptr;  // the owner, for a top-level window
};

// Binds an object to its window from WM_NCCREATE to WM_NCDESTROY. The destructor detaches first,
// then destroys the window. An exception in a handler ends the program.
class Window {
 public:
  Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window();

  // Null before the creation and after the window's end.
  HWND hwnd() const { return window_; }

  bool Enabled() const { return IsWindowEnabled(window_) != 0; }
  void Enabled(bool enabled) { EnableWindow(window_, enabled); }
  bool Visible() const { return IsWindowVisible(window_) != 0; }
  void Visible(bool visible) { ShowWindow(window_, visible ? SW_SHOWNA : SW_HIDE); }

  // Pixels, in the parent's client area or on the screen.
  void Move(int x, int y, int width, int height) { MoveWindow(window_, x, y, width, height, TRUE); }
  void SetFocus() { ::SetFocus(window_); }

  // Asks for one WM_MOUSELEAVE when the pointer leaves the window.
  void TrackMouseLeave() const;

  // The size inside the frame, in pixels.
  int ScaleWidth() const;
  int ScaleHeight() const;

 protected:
  // Creates the window; registers its class at first use. Throws FatalError when it fails.
  void CreateBound(const WindowClass& windowClass, const WindowArgs& args);

  // Every message from WM_NCCREATE on. By default the platform handles it; new system colours and
  // settings are passed to the children first.
  virtual LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);

  // The window is gone. Not called by the destructor. Must not throw.
  virtual void OnDestroyed(HWND /*window*/) {}

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void PassToChildren(UINT message, WPARAM wParam, LPARAM lParam) const;

  HWND window_ = nullptr;
};

}  // namespace tellurvane

// A window that belongs to an object.
#pragma once

#include <windows.h>

#include <string>

namespace tellurvane {

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

// Binds an object to its window in WM_NCCREATE and lets it go in WM_NCDESTROY, whoever destroys
// the window. The destructor first detaches, then destroys. What a handler throws ends the
// program.
class Window {
 public:
  Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window();

  // None before the creation and after the window's end.
  HWND hwnd() const { return window_; }

  bool Enabled() const { return IsWindowEnabled(window_) != 0; }
  void Enabled(bool enabled) { EnableWindow(window_, enabled); }
  bool Visible() const { return IsWindowVisible(window_) != 0; }
  void Visible(bool visible) { ShowWindow(window_, visible ? SW_SHOWNA : SW_HIDE); }

  // Pixels, in the parent's client area or on the screen.
  void Move(int x, int y, int width, int height) { MoveWindow(window_, x, y, width, height, TRUE); }
  void SetFocus() { ::SetFocus(window_); }

  // Has the window told once, by WM_MOUSELEAVE, when the pointer leaves it.
  void TrackMouseLeave() const;

  // The size inside the frame, in pixels.
  int ScaleWidth() const;
  int ScaleHeight() const;

 protected:
  // Creates the window of a class that is registered under this name at first use. Throws
  // FatalError where the system refuses.
  void CreateBound(const wchar_t* className, UINT classStyle, const WindowArgs& args);

  // Every message from WM_NCCREATE on. The default is the platform's own handling; what the system
  // tells top-level windows about its colours and settings is passed to the children first.
  virtual LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);

  // The window is gone, whoever destroyed it; not called by the destructor. Must not throw.
  virtual void OnDestroyed(HWND /*window*/) {}

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void PassToChildren(UINT message, WPARAM wParam, LPARAM lParam) const;

  HWND window_ = nullptr;
};

}  // namespace tellurvane

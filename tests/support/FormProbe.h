// A form seen from outside: its picture, its opacity, its messages.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "ui/DrawnWindow.h"

// A window that leaves the first screen would be on another one.
#define SKIP_UNLESS_ONE_SCREEN() \
  if (GetSystemMetrics(SM_CMONITORS) > 1) GTEST_SKIP() << "needs a computer with one screen"

namespace tellurvane {

// The object that one of our windows belongs to.
inline DrawnWindow& ObjectOf(HWND window) {
  return *static_cast<DrawnWindow*>(
      reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA)));
}

inline std::wstring ClassOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, static_cast<int>(std::size(name)));
  return name;
}

// All windows inside, of one class.
inline std::vector<HWND> InsideOf(HWND window, const std::wstring& windowClass) {
  std::vector<HWND> found;
  EnumChildWindows(
      window,
      [](HWND child, LPARAM all) {
        reinterpret_cast<std::vector<HWND>*>(all)->push_back(child);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&found));
  std::erase_if(found, [&](HWND child) { return ClassOf(child) != windowClass; });
  return found;
}

inline RECT OnScreen(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  return rect;
}

// -1 for a window without one.
inline int OpacityOf(HWND window) {
  BYTE opacity = 0;
  DWORD flags = 0;
  if (!GetLayeredWindowAttributes(window, nullptr, &opacity, &flags)) return -1;
  return flags == LWA_ALPHA ? opacity : -1;
}

// Moves the window past each edge of the screen, and then the mouse over `target`: the window must
// come back inside.
inline void ExpectPulledInside(HWND window, HWND target) {
  const RECT outer = OnScreen(window);
  const LONG right = GetSystemMetrics(SM_CXSCREEN) - (outer.right - outer.left);
  const LONG bottom = GetSystemMetrics(SM_CYSCREEN) - (outer.bottom - outer.top);
  const struct {
    LONG x, y, left, top;
  } rows[] = {{-30, 50, 0, 50},
              {50, -30, 50, 0},
              {right + 30, 50, right, 50},
              {50, bottom + 30, 50, bottom},
              {-1, bottom + 1, 0, bottom},
              {right, bottom, right, bottom},
              {70, 80, 70, 80}};
  for (const auto& [x, y, left, top] : rows) {
    SetWindowPos(window, nullptr, static_cast<int>(x), static_cast<int>(y), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    SendMessageW(target, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(OnScreen(window).left, left) << x << ", " << y;
    EXPECT_EQ(OnScreen(window).top, top) << x << ", " << y;
  }
}

// Replaces the pauses of a fade and stores the window's opacity at each.
struct FadeLog {
  HWND window = nullptr;
  std::vector<int> opacities;
  std::vector<unsigned> milliseconds;

  std::function<void(unsigned)> Pause() {
    return [this](unsigned wait) {
      opacities.push_back(OpacityOf(window));
      milliseconds.push_back(wait);
    };
  }
  void Forget() {
    opacities.clear();
    milliseconds.clear();
  }
};

// Takes one message from a window. `act` runs in the place of the window's own handling.
class CaughtMessage {
 public:
  CaughtMessage(HWND window, UINT message, std::function<void()> act = {})
      : window_(window), message_(message), act_(std::move(act)) {
    SetWindowSubclass(window, Procedure, 1, reinterpret_cast<DWORD_PTR>(this));
  }
  CaughtMessage(const CaughtMessage&) = delete;
  CaughtMessage& operator=(const CaughtMessage&) = delete;
  ~CaughtMessage() { RemoveWindowSubclass(window_, Procedure, 1); }

  // The first parameters of those that came.
  std::vector<WPARAM> Taken() { return std::exchange(taken_, {}); }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR, DWORD_PTR object) {
    auto& self = *reinterpret_cast<CaughtMessage*>(object);
    if (message != self.message_) return DefSubclassProc(window, message, wParam, lParam);
    self.taken_.push_back(wParam);
    if (self.act_) self.act_();
    return 0;
  }

  HWND window_;
  UINT message_;
  std::function<void()> act_;
  std::vector<WPARAM> taken_;
};

}  // namespace tellurvane

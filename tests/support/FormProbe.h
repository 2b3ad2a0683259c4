// A look into a form from outside: its picture, its opacity, the messages that it is sent.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "ui/DrawnWindow.h"

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

// Stands for the waiting between the steps of a fade, and writes down what the window was then.
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

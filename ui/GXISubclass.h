// The callback interface of a subclassed window's owner.
#pragma once

#include <windows.h>

namespace tellurvane {

class GXISubclass {
 public:
  GXISubclass() = default;
  GXISubclass(const GXISubclass&) = delete;
  GXISubclass& operator=(const GXISubclass&) = delete;

  // Before the window's previous procedure: `handled` set to true keeps it from running, and
  // `result` is then the answer. After it: `result` is its answer and may be changed. `userParam`
  // is the window's own value, see GXMSubclass::p_ParamUser.
  virtual void WndProc(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
                       WPARAM wParam, LPARAM lParam, LONG_PTR& userParam) = 0;

 protected:
  ~GXISubclass() = default;
};

}  // namespace tellurvane

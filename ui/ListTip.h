// A tooltip over the row of a list that is under the pointer.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "ui/GXISubclass.h"
#include "ui/GXMSubclass.h"
#include "ui/clsLictView.h"

namespace tellurvane {

// The native list has tooltips of its own, but only for texts that it cuts off itself.
class ListTip final : private GXISubclass {
 public:
  // Of a row; empty for a row without a tip.
  using TextOf = std::function<std::wstring(int row)>;

  ListTip() = default;
  ListTip(const ListTip&) = delete;
  ListTip& operator=(const ListTip&) = delete;
  ~ListTip();

  // Once. Uses the list's events MouseMove and MouseDown. The list outlives the tip. The window is
  // made at the first MouseMove. Without it nothing is shown: a tip is no reason to end the
  // program.
  void Create(clsLictView& list, TextOf textOf);
  // Call when texts may have changed, or when the list may have been scrolled.
  void Refresh();

 private:
  void WndProc(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
               WPARAM wParam, LPARAM lParam, LONG_PTR& userParam) override;
  void CreateWindowOnce();
  void MoveTo(int x, int y);
  void Show(const std::wstring& text);
  void Relay(UINT message, int x, int y) const;
  void Send(UINT message, const void* argument) const;
  TOOLINFOW Tool() const;

  clsLictView* list_ = nullptr;
  TextOf textOf_;
  HWND window_ = nullptr;
  bool isWindowTried_ = false;
  POINT pointer_ = {-1, -1};  // its latest place in the list
  int row_ = -1;
  std::wstring text_;
  GXMSubclass subclass_;
};

}  // namespace tellurvane

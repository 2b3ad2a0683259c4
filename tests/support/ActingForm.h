// A form that runs a function inside another message loop, such as that of a dialog or a menu.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "tests/support/FormProbe.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {

class ActingForm : public TestForm {
 public:
  // Posts a message. The next message loop that handles it calls `act` once.
  void ActLater(std::function<void()> act) {
    act_ = std::move(act);
    PostMessageW(hwnd(), kActMessage, 0, 0);
  }

 protected:
  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message != kActMessage) return TestForm::HandleMessage(message, wParam, lParam);
    std::exchange(act_, nullptr)();
    return 0;
  }

 private:
  static constexpr UINT kActMessage = WM_APP + 1;

  std::function<void()> act_;
};

// Presses what is there by this name; nothing where it could not be made.
inline void PressButton(HWND window, const std::wstring& caption) {
  for (const HWND button : InsideOf(window, L"Button")) {
    if (WindowText(button) == caption) SendMessageW(button, BM_CLICK, 0, 0);
  }
}

// Ends a dialog that the user could not close.
inline void EndDialogWindow(HWND window) {
  if (IsWindow(window)) DestroyWindow(window);
}

}  // namespace tellurvane

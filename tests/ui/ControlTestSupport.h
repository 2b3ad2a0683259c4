// A control in a host on a form, and the keyboard.
#pragma once

#include <array>
#include <string>

#include "tests/support/WindowTestSupport.h"
#include "ui/clsControl.h"

namespace tellurvane {

inline constexpr Color kHostColor = Rgb(200, 230, 250);

inline constexpr auto kEveryKind = [] {
  std::array<ControlKind, 13> kinds = {};
  for (int i = 0; i < 13; ++i) kinds.at(i) = static_cast<ControlKind>(i + 1);
  return kinds;
}();

// Counts the Enter and Esc keys that reach the form.
class KeyForm : public TestForm {
 public:
  int enters = 0;
  int escapes = 0;

 private:
  void Form_Enter() override { ++enters; }
  void Form_Escape() override { ++escapes; }
};

struct HostedControl {
  explicit HostedControl(ControlKind kind, int multilin = 0) {
    host.Create({.parent = form.hwnd(),
                 .x = 10,
                 .y = 10,
                 .width = 150,
                 .height = 90,
                 .backColor = kHostColor});
    control.TargetPictureBox(host);
    control.Multilin(multilin);
    control.Create(kind);
    Pump();
  }

  // Through the message loop and the form's keys.
  void Press(UINT key, HWND target = nullptr) const {
    PostMessageW(target == nullptr ? control.hwnd() : target, WM_KEYDOWN, key, 1);
    Pump();
  }

  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(control.hwnd(), message, wParam, lParam);
  }

  // The window that the user types into.
  HWND TypingWindow() const {
    const HWND box = FindWindowExW(control.hwnd(), nullptr, L"Edit", nullptr);
    return box == nullptr ? control.hwnd() : box;
  }

  KeyForm form;
  PictureBox host;
  clsControl control;
};

inline RECT ClientOf(HWND window) {
  RECT client = {};
  GetClientRect(window, &client);
  return client;
}

inline std::string NameOf(ControlKind kind) {
  return "kind " + std::to_string(static_cast<int>(kind));
}

}  // namespace tellurvane

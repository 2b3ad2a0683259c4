// What the tests of clsControl share: a control in a host on a form, and the keyboard.
#pragma once

#include <array>
#include <string>

#include "tests/support/WindowTestSupport.h"
#include "ui/clsControl.h"

namespace tellurvane {

inline constexpr Color kHostColor = Rgb(200, 230, 250);

inline constexpr std::array kEveryKind = {
    ControlKind::kCheckBox,
    ControlKind::kPushButton,
    ControlKind::kOptionButton,
    ControlKind::kLabel,
    ControlKind::kEditBox,
    ControlKind::kEditableComboBox,
    ControlKind::kDropDownList,
    ControlKind::kSimpleComboBox,
    ControlKind::kListBox,
    ControlKind::kMultiSelectListBox,
    ControlKind::kToggleSelectListBox,
    ControlKind::kRichEditBox,
    ControlKind::kSortedListBox,
};

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

  // The key goes the way of all messages, through the loop and the form's keys.
  void Press(UINT key, HWND target = nullptr) const {
    PostMessageW(target == nullptr ? control.hwnd() : target, WM_KEYDOWN, key, 1);
    Pump();
  }

  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(control.hwnd(), message, wParam, lParam);
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

// The main window, and keys for it.
#pragma once

#include <string>

#include "tests/mainwin/FrmMainFixture.h"
#include "tests/support/MenuTestSupport.h"
#include "tests/ui/ClipboardSupport.h"

namespace tellurvane {

class FrmMainKeysTest : public FrmMainTest {
 protected:
  // In the window that has the keyboard.
  void Post(UINT key, UINT message = WM_KEYDOWN, LPARAM lParam = 1) const {
    const HWND focus = GetFocus();
    PostMessageW(focus == nullptr ? window->hwnd() : focus, message, key, lParam);
  }
  void Key(UINT key, UINT message = WM_KEYDOWN, LPARAM lParam = 1) const {
    Post(key, message, lParam);
    Pump();
  }
  void ControlAnd(UINT key) const {
    const HeldKeys held({VK_CONTROL});
    Key(key);
  }
  void Focus(int row) const {
    LVITEMW item = {};
    item.stateMask = item.state = LVIS_FOCUSED;
    SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  }
  int RowThatIs(UINT state) const {
    return static_cast<int>(SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), state));
  }
  std::string Focused() const {
    const HWND focus = GetFocus();
    if (focus == toolbar) return "toolbar";
    if (focus == list) return "list";
    if (focus == VolumeSlider()) return "volume";
    return focus == PositionSlider() ? "position" : "something else";
  }
  // The name of the task in the editor that the key opens; empty if it opens none.
  std::wstring EditedBy(UINT key, HWND focus) const {
    std::wstring name;
    ActingForm user;
    SetForegroundWindow(window->hwnd());
    SetFocus(focus);
    Post(key);
    user.ActLater([&] {
      const HWND editor = GetLastActivePopup(window->hwnd());
      if (editor == window->hwnd()) return;
      name = WindowText(InsideOf(editor, L"Edit").at(0));
      EndDialogWindow(editor);
    });
    Pump();
    return name;
  }
  bool HasRun(size_t row) const { return general->tasks[row].LastRun != 0; }
};

}  // namespace tellurvane

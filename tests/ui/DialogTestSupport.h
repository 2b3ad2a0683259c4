// What the tests of dialogs share: their controls by name, and a user's clicks and keys.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace tellurvane {

struct NamedControl {
  HWND control;
  const char* name;
};

// The name of the control that has the keyboard; "nothing" or "something else" where none has.
std::string FocusedAmong(const std::vector<NamedControl>& controls);

void ClickButton(HWND button);

// Sends the key to whatever has the keyboard, or to the window itself where nothing has.
void PressKey(HWND window, UINT key);

// Goes to an entry of a combo box by keys.
void ChooseEntry(HWND comboBox, int entry);

inline int ChosenEntry(HWND comboBox) {
  return static_cast<int>(SendMessageW(comboBox, CB_GETCURSEL, 0, 0));
}

void SelectListRow(HWND list, int row);

// So many picture boxes stand on the window, all of them inside it and none over another.
void ExpectBoxesApart(HWND window, size_t count);

}  // namespace tellurvane

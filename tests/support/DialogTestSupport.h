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

// The names of the controls that the user can use, separated by blanks: the control and all its
// parents inside the window are visible and enabled.
std::string UsableAmong(const std::vector<NamedControl>& controls, HWND window);

// The name of the control that has the keyboard focus. "nothing" if no window has the focus,
// "something else" if another window has it.
std::string FocusedAmong(const std::vector<NamedControl>& controls);

void ClickButton(HWND button);

// Posts the key to the window that has the keyboard focus, or to `window` if none has it.
void PressKey(HWND window, UINT key);

// Goes to an entry of a combo box by keys.
void ChooseEntry(HWND comboBox, int entry);

inline int ChosenEntry(HWND comboBox) {
  return static_cast<int>(SendMessageW(comboBox, CB_GETCURSEL, 0, 0));
}

// The entries of a combo box.
std::vector<std::wstring> EntriesOf(HWND comboBox);

// The labels in the window. A list's container has the same window class, but is not a label.
std::vector<HWND> LabelsOf(HWND window);

void SelectListRow(HWND list, int row);
int ListRowCount(HWND list);
std::wstring ListCell(HWND list, int row, int column = 0);

// Expects `count` picture boxes in the window, all of them inside it and without overlaps.
void ExpectBoxesApart(HWND window, size_t count);

}  // namespace tellurvane

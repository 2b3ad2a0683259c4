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

// The names, one after another, of those that can be used where they stand: shown and enabled, and
// so is all around them up to the window.
std::string UsableAmong(const std::vector<NamedControl>& controls, HWND window);

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

// The entries of a combo box.
std::vector<std::wstring> EntriesOf(HWND comboBox);

// The labels on the window. What a list stands in is of the same class and is none.
std::vector<HWND> LabelsOf(HWND window);

void SelectListRow(HWND list, int row);
int ListRowCount(HWND list);
std::wstring ListCell(HWND list, int row, int column = 0);

// So many picture boxes stand on the window, all of them inside it and none over another.
void ExpectBoxesApart(HWND window, size_t count);

}  // namespace tellurvane

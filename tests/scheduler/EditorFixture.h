// The schedule editor's window in its modal loop, with fakes for its callbacks.
#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "scheduler/FrmSet.h"
#include "tests/support/DialogTestSupport.h"
#include "tests/support/Moments.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {

class EditorFixture : public testing::Test {
 protected:
  // A box that the editor showed.
  struct Question {
    std::wstring text;
    UINT flags = 0;
    bool operator==(const Question&) const = default;
  };

  static TaskRecord Task(const std::wstring& name, std::int32_t mediaType = kReminderNote,
                         const std::wstring& source = L"text");

  // Opens the editor on an element or on a new task, lets the user act, and presses "取消" when the
  // editor is still open at the end.
  void Play(std::optional<size_t> element, const std::function<void()>& user);
  // The same, but beginning in the browsing state with a row selected.
  void Browse(size_t row, const std::function<void()>& user);

  bool IsOpen() const { return IsWindow(window) != FALSE; }
  // Those of the text boxes that can be typed into.
  std::string Writable() const;
  // The name of the control that has the keyboard.
  std::string Focused() const { return FocusedAmong(Controls()); }

  // Presses a button, which has to be usable.
  static void Click(HWND button) { ClickButton(button); }
  void ClickCloseBox() const { SendMessageW(window, WM_CLOSE, 0, 0); }
  // Posts a key to the control that has the keyboard.
  void Press(UINT key) const { PressKey(window, key); }
  void Type(HWND box, const std::wstring& text) const { SetWindowTextW(box, text.c_str()); }
  // Chooses an entry of a drop-down list by its keys.
  static void Choose(HWND comboBox, int entry) { ChooseEntry(comboBox, entry); }
  // The time picker gets the same moment if there is no other.
  void Pick(DateSerial date, std::optional<DateSerial> time = {}) const;
  DateSerial Picked() const;
  void SelectRow(int row) const { SelectListRow(list, row); }
  // The row that the list shows as selected.
  int SelectedRow() const;
  std::vector<std::wstring> Rows() const;
  static std::vector<std::wstring> Entries(HWND comboBox) { return EntriesOf(comboBox); }
  static int Entry(HWND comboBox) { return ChosenEntry(comboBox); }
  static std::vector<std::wstring> Captions(const std::vector<HWND>& controls);

  TaskList tasks;
  DateSerial now = At(2011, 2, 14, 12);
  int saves = 0;
  bool doPathsExist = true;
  std::vector<Question> asked;
  int answer = IDOK;
  std::vector<std::string> called;  // the callbacks of "..."
  std::optional<std::wstring> offered;
  std::wstring noteGiven;               // to the note editor
  std::function<void()> whileBrowsing;  // while the open-file dialog would be open
  std::function<void()> whileAsking;    // while a message would be open

  TestForm* owner = nullptr;
  HWND window = nullptr;
  HWND list = nullptr;
  HWND cmdNew = nullptr;
  HWND cmdEdit = nullptr;
  HWND cmdDel = nullptr;
  HWND txtName = nullptr;
  HWND cboMediaType = nullptr;
  HWND txtSrc = nullptr;
  HWND cmdFiles = nullptr;
  HWND dtpDate = nullptr;
  HWND dtpTime = nullptr;
  HWND cboTimeType = nullptr;
  HWND txtInterval = nullptr;
  HWND lblSource = nullptr;
  HWND lblInterval = nullptr;
  HWND chkEnabled = nullptr;
  HWND cmdSaveJob = nullptr;
  HWND cmdCancelJob = nullptr;
  HWND cmdSave = nullptr;
  HWND cmdCancel = nullptr;

 private:
  std::vector<NamedControl> Controls() const;
  EditorCallbacks Callbacks();
  void FindControls();
};

}  // namespace tellurvane

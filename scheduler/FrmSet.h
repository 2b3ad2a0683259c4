// The schedule editor: makes, changes and removes tasks.
#pragma once

#include <windows.h>

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "scheduler/ScheduleEditor.h"
#include "ui/BoxedControl.h"
#include "ui/ClsDate.h"
#include "ui/Form.h"
#include "ui/PictureBox.h"
#include "ui/clsLictView.h"

namespace tellurvane {

// Calls to the editor's owner. Without `chooseStation` or `editNote` the "..." button does
// nothing for that media type; all others must be set. The first three return nothing when the user
// cancels.
struct EditorCallbacks {
  std::function<std::optional<std::wstring>(bool wantExecutables)> browseForSource;
  std::function<std::optional<std::wstring>(HWND owner)> chooseStation;
  // The note's text as the task list stores it.
  std::function<std::optional<std::wstring>(HWND owner, const std::wstring& text)> editNote;
  // A message box; flags and answer as of the system's.
  std::function<int(HWND owner, const std::wstring& text, UINT flags)> ask;
  // A stored note as it reads on the screen, and back.
  std::function<std::wstring(const std::wstring&)> noteForScreen;
  std::function<std::wstring(const std::wstring&)> noteForList;
};

class FrmSet final : public Form {
 public:
  // The list outlives the window.
  FrmSet(TaskList& tasks, ValidationCallbacks validation, std::function<void()> saveList,
         EditorCallbacks callbacks);

  // Shows the editor on an element of the list, about to be edited, or on a new task, and returns
  // when it is closed.
  void Open(HWND owner, std::optional<size_t> element);

 private:
  static constexpr int kInsideWidth = 9'600;  // twips
  static constexpr int kInsideHeight = 5'640;

  void Form_Load() override;
  void Form_Resize() override;
  bool Form_Unload() override;
  void Form_Enter() override;
  void Form_Escape() override;
  bool Form_KeyDown(const KeyEvent& event) override;

  void CreateList();
  void CreateFields();
  void NameFields();
  void CreateButtons();
  void WireFields();
  void PlaceList(int lowerY);
  void PlaceFields(int labelX, int right);
  void PlaceDates(int x, int y, int width);

  void lstJobs_ItemChanged(int row, UINT oldState, UINT newState);
  void lstJobs_KeyDown(UINT key);
  void cmdNew_Click();
  void cmdEdit_Click();
  void cmdDel_Click();
  void cmdSaveJob_Click() { (void)SaveJob(); }
  void cmdCancelJob_Click();
  void cmdSave_Click();
  void cmdCancel_Click();
  void cmdFiles_Click();
  void cboMediaType_Click();
  void cboTimeType_Click();

  // False when the task is not valid.
  bool SaveJob();
  bool IsChanged() const { return editor_.IsEditing() && ReadFields() != shown_; }
  // Asks only when something was typed.
  bool MayLoseTyping(const std::wstring& question);
  void BeginEditing();
  void FocusField(EditorField field);
  void RefreshList();
  void ShowState();
  void ShowFields();
  void ShowSource(const std::wstring& source);
  void ShowMediaWords();
  TaskFields ReadFields() const;
  std::wstring Source() const;
  int Ask(const std::wstring& text, UINT flags) { return callbacks_.ask(hwnd(), text, flags); }

  ScheduleEditor editor_;
  EditorCallbacks callbacks_;
  TaskFields shown_;             // the fields before the user changed them
  std::int32_t shownMedia_ = 0;  // the media type of the source in the box
  bool isFilling_ = false;       // the program changes the list, not the user
  bool mayClose_ = false;        // without a question

  PictureBox picJobs_;
  clsLictView lstJobs_;
  std::array<BoxedControl, 5> labels_;
  BoxedControl cmdNew_;
  BoxedControl cmdEdit_;
  BoxedControl cmdDel_;
  BoxedControl txtName_;
  BoxedControl cboMediaType_;
  BoxedControl txtSrc_;
  BoxedControl cmdFiles_;
  PictureBox picDates_;
  ClsDate dtpDate_;
  ClsDate dtpTime_;
  BoxedControl cboTimeType_;
  BoxedControl txtInterval_;
  BoxedControl lblInterval_;
  BoxedControl chkEnabled_;
  BoxedControl cmdSaveJob_;
  BoxedControl cmdCancelJob_;
  BoxedControl cmdSave_;
  BoxedControl cmdCancel_;
};

}  // namespace tellurvane

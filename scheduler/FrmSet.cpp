#include "scheduler/FrmSet.h"

#include <utility>

#include "ui/Density.h"

namespace tellurvane {
namespace {

void SetReadOnly(clsControl& control, bool isReadOnly) {
  SendMessageW(control.hwnd(), EM_SETREADONLY, isReadOnly, 0);
  control.BackColor(SystemColor(isReadOnly ? COLOR_BTNFACE : COLOR_WINDOW));
  control.ForeColor(SystemColor(isReadOnly ? COLOR_BTNTEXT : COLOR_WINDOWTEXT));
}

// Day and time of day are chosen apart.
DateSerial Joined(DateSerial day, DateSerial time) {
  CivilDateTime civil = CivilFromSerial(day);
  const CivilDateTime clock = CivilFromSerial(time);
  civil.hour = clock.hour;
  civil.minute = clock.minute;
  civil.second = clock.second;
  return SerialFromCivil(civil).value_or(day);
}

}  // namespace

FrmSet::FrmSet(TaskList& tasks, ValidationCallbacks validation, std::function<void()> saveList,
               EditorCallbacks callbacks)
    : editor_(tasks, std::move(validation), std::move(saveList)),
      callbacks_(std::move(callbacks)) {}

void FrmSet::Open(HWND owner, std::optional<size_t> element) {
  Load(DialogArgs(L"新增 / 編輯排程專案", kInsideWidth, kInsideHeight, owner));
  ResizeInside(PixelsFromTwips(kInsideWidth), PixelsFromTwips(kInsideHeight));
  Form_Resize();
  Center();
  const auto row = element ? editor_.RowOf(*element) : std::nullopt;
  if (row) {
    editor_.Select(row);
    RefreshList();
    editor_.Edit();
  } else {
    editor_.New();
  }
  BeginEditing();
  ShowModal();
}

void FrmSet::Form_Load() {
  CreateList();
  CreateFields();
  CreateButtons();
  WireFields();
  RefreshList();
  ShowFields();
  ShowState();
}

bool FrmSet::Form_Unload() {
  return mayClose_ || MayLoseTyping(L"正在編輯的排程專案尚未儲存，您確定要關閉嗎？");
}

bool FrmSet::MayLoseTyping(const std::wstring& question) {
  return !IsChanged() || Ask(question, MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
}

void FrmSet::Form_Enter() {
  if (editor_.IsEditing()) {
    cmdSaveJob_Click();
  } else {
    if (GetFocus() == lstJobs_.hwnd()) lstJobs_.SelectFocusedRow();
    cmdEdit_Click();
  }
}

// The key is more easily pressed by mistake than the button 放棄編輯, which asks nothing.
void FrmSet::Form_Escape() {
  if (!editor_.IsEditing()) {
    Unload();
  } else if (MayLoseTyping(L"排程專案尚未儲存，您確定要放棄變更嗎？")) {
    cmdCancelJob_Click();
  }
}

void FrmSet::lstJobs_ItemChanged(int row, UINT oldState, UINT newState) {
  if (isFilling_ || ((oldState ^ newState) & LVIS_SELECTED) == 0) return;
  if ((newState & LVIS_SELECTED) != 0) {
    editor_.Select(static_cast<size_t>(row));
  } else if (lstJobs_.Selected() < 0) {
    editor_.Select(std::nullopt);
  }
  ShowFields();
  ShowState();
}

// A task that was given up leaves no row selected.
void FrmSet::lstJobs_KeyDown(UINT key) {
  if (key == VK_F2 || key == VK_DELETE) lstJobs_.SelectFocusedRow();
  if (key == VK_F2) cmdEdit_Click();
  if (key == VK_INSERT) cmdNew_Click();
  if (key == VK_DELETE) cmdDel_Click();
}

// Enter in the source box makes a new line in the text of a note, and else acts as in other fields;
// with Ctrl it always does. Not left to the source box: while a message is open, that one would get
// the character of the key. Alt without Ctrl makes a key of the menu.
bool FrmSet::Form_KeyDown(const KeyEvent& event) {
  const bool isControl = (event.shift & kControlKey) != 0;
  const bool isEnter = event.key == VK_RETURN && (isControl || (event.shift & kAltKey) == 0);
  if (!isEnter || GetFocus() != txtSrc_.control.hwnd()) return false;
  if (HasNoteText(shownMedia_) && editor_.IsEditing() && !isControl) return false;
  // A key that is held down acts once.
  if (!event.isRepeated) Form_Enter();
  return true;
}

void FrmSet::cmdNew_Click() {
  if (!editor_.Abilities().newTask) return;
  editor_.New();
  BeginEditing();
}

void FrmSet::cmdEdit_Click() {
  if (!editor_.Abilities().editTask) return;
  editor_.Edit();
  BeginEditing();
}

void FrmSet::BeginEditing() {
  ShowFields();
  ShowState();
  FocusField(EditorField::kName);
}

void FrmSet::cmdDel_Click() {
  if (!editor_.Abilities().removeTask) return;
  const std::wstring name = editor_.Task(*editor_.SelectedRow()).Name;
  const std::wstring question = L"您確定要移除【" + name + L"】嗎？";
  if (Ask(question, MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) != IDYES) return;
  editor_.Remove();
  RefreshList();
  ShowFields();
  ShowState();
  lstJobs_.SetFocus();
}

void FrmSet::cmdCancelJob_Click() {
  if (!editor_.Abilities().cancelTask) return;
  editor_.Cancel();
  ShowFields();
  ShowState();
  lstJobs_.SetFocus();
}

bool FrmSet::SaveJob() {
  if (!editor_.Abilities().saveTask) return true;
  const auto error = editor_.Save(ReadFields());
  if (error) {
    Ask(error->message, MB_OK | MB_ICONINFORMATION);
    // The user may have ended the editing or the program: another message can be open beside this.
    if (!IsLoaded() || !editor_.IsEditing()) return false;
    if (error->field == EditorField::kInterval) txtInterval_.control.text(L"");
    FocusField(error->field);
    return false;
  }
  RefreshList();
  ShowFields();
  ShowState();
  lstJobs_.SetFocus();
  return true;
}

void FrmSet::FocusField(EditorField field) {
  const auto focusText = [](BoxedControl& text) {
    text.box.SetFocus();
    SendMessageW(text.control.hwnd(), EM_SETSEL, 0, -1);
  };
  switch (field) {
    case EditorField::kName:
      focusText(txtName_);
      break;
    case EditorField::kSource:
      focusText(txtSrc_);
      break;
    case EditorField::kTimeType:
      cboTimeType_.box.SetFocus();
      break;
    case EditorField::kInterval:
      focusText(txtInterval_);
      break;
  }
}

// An unchanged task is neither checked nor saved: the user may look at one that is not valid.
void FrmSet::cmdSave_Click() {
  if (IsChanged() && !SaveJob()) return;
  mayClose_ = true;
  Unload();
}

// Deliberately without a question.
void FrmSet::cmdCancel_Click() {
  mayClose_ = true;
  Unload();
}

void FrmSet::cmdFiles_Click() {
  std::optional<std::wstring> source;
  const auto media = static_cast<MediaType>(cboMediaType_.control.ListIndex());
  switch (media) {
    case kInternetRadio:
      if (callbacks_.chooseStation) source = callbacks_.chooseStation(hwnd());
      break;
    case kLocalMusic:
    case kApplication: {
      // The dialog belongs to the main window and would leave this one open to the user.
      EnableWindow(hwnd(), FALSE);
      source = callbacks_.browseForSource(media == kApplication);
      EnableWindow(hwnd(), TRUE);
      SetActiveWindow(hwnd());
      break;
    }
    case kReminderNote:
      if (callbacks_.editNote) source = callbacks_.editNote(hwnd(), Source());
      break;
  }
  if (source && IsLoaded()) ShowSource(*source);
}

// Keeps the typed source and shows it as the new media type wants it.
void FrmSet::cboMediaType_Click() {
  const std::wstring source = Source();
  shownMedia_ = cboMediaType_.control.ListIndex();
  ShowMediaWords();
  ShowSource(source);
}

void FrmSet::ShowSource(const std::wstring& source) {
  txtSrc_.control.text(HasNoteText(shownMedia_) ? callbacks_.noteForScreen(source) : source);
}

std::wstring FrmSet::Source() const {
  const std::wstring text = txtSrc_.control.text();
  return HasNoteText(shownMedia_) ? callbacks_.noteForList(text) : text;
}

void FrmSet::RefreshList() {
  isFilling_ = true;
  lstJobs_.ListCount(static_cast<int>(editor_.RowCount()));
  const auto row = editor_.SelectedRow();
  lstJobs_.SetSelectList(row ? static_cast<int>(*row) : -1);
  lstJobs_.RedrawVisibleItems();
  isFilling_ = false;
}

void FrmSet::ShowFields() {
  const TaskFields fields = editor_.Fields();
  shownMedia_ = fields.mediaType;
  txtName_.control.text(fields.name);
  cboMediaType_.control.ListIndex(fields.mediaType);
  ShowMediaWords();
  ShowSource(fields.source);
  dtpDate_.Value(fields.firstRun);
  dtpTime_.Value(fields.firstRun);
  cboTimeType_.control.ListIndex(fields.timeType);
  cboTimeType_Click();
  txtInterval_.control.text(fields.interval);
  chkEnabled_.control.Checked(fields.isEnabled);
  shown_ = ReadFields();
}

TaskFields FrmSet::ReadFields() const {
  TaskFields fields;
  fields.name = txtName_.control.text();
  // A kind or a unit from a file that the lists do not offer stays what it is.
  fields.mediaType = cboMediaType_.control.ListIndex();
  if (fields.mediaType < 0) fields.mediaType = shownMedia_;
  fields.source = Source();
  fields.firstRun = Joined(dtpDate_.Value(), dtpTime_.Value());
  fields.timeType = cboTimeType_.control.ListIndex();
  fields.interval = txtInterval_.control.text();
  fields.isEnabled = chkEnabled_.control.Checked();
  return fields;
}

void FrmSet::ShowState() {
  const EditorAbilities can = editor_.Abilities();
  EnableWindow(picJobs_.hwnd(), can.list);
  cmdNew_.box.Enabled(can.newTask);
  cmdEdit_.box.Enabled(can.editTask);
  cmdDel_.box.Enabled(can.removeTask);
  // Locked texts can still be read and copied.
  for (BoxedControl* const text : {&txtName_, &txtSrc_, &txtInterval_}) {
    SetReadOnly(text->control, !can.fields);
  }
  for (BoxedControl* const field : {&cboMediaType_, &cmdFiles_, &cboTimeType_, &chkEnabled_}) {
    field->box.Enabled(can.fields);
  }
  dtpDate_.Enabled(can.fields);
  dtpTime_.Enabled(can.fields);
  cmdSaveJob_.box.Enabled(can.saveTask);
  cmdCancelJob_.box.Enabled(can.cancelTask);
}

}  // namespace tellurvane

#include "scheduler/FrmSet.h"

#include <richedit.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/Twips.h"

namespace tellurvane {
namespace {

// Twips: the inside of the window, and the grid of its right half.
constexpr int kInsideWidth = 9'600;
constexpr int kInsideHeight = 5'640;
constexpr int kMargin = 180;
constexpr int kListWidth = 2'850;
constexpr int kLabelWidth = 1'080;
constexpr int kRowHeight = 390;
constexpr int kEditHeight = 330;  // of a single line, which stands at the upper edge of its box
constexpr int kRowGap = 150;
constexpr int kSourceHeight = 1'080;
constexpr int kButtonHeight = 405;
constexpr int kSmallButton = 900;
constexpr int kButtonWidth = 1'350;
constexpr int kDotsWidth = 480;
constexpr int kDateWidth = 2'650;
constexpr int kTimeTypeWidth = 2'400;
constexpr int kIntervalWidth = 750;

constexpr Color kGround = Rgb(0xF4, 0xF1, 0xFA);
constexpr Color kInk = Rgb(0x4B, 0x00, 0x82);
constexpr int kLongestText = 1 << 20;  // UTF-16 units; a whole list file holds no more

enum Row : size_t { kNameRow, kMediaRow, kSourceRow, kDateRow, kTimeRow };

constexpr std::array<const wchar_t*, 4> kMediaTypes = {L"網路電台", L"本地音樂", L"應用程式",
                                                       L"記事提醒"};
constexpr std::array<const wchar_t*, 4> kSourceWords = {L"來源音樂", L"來源音樂", L"執行程式",
                                                        L"提醒文字"};
constexpr std::array<const wchar_t*, 3> kTimeTypes = {L"每幾分鐘執行一次", L"每幾小時執行一次",
                                                      L"每幾天執行一次"};
constexpr std::array<const wchar_t*, 3> kIntervalWords = {L"分鐘執行一次", L"小時執行一次",
                                                          L"天執行一次"};

int Px(int twips) { return PixelsFromTwipsX(twips); }

constexpr Color SystemColor(int index) { return 0x80000000U | static_cast<Color>(index); }

void SetReadOnly(clsControl& control, bool isReadOnly) {
  SendMessageW(control.hwnd(), EM_SETREADONLY, isReadOnly, 0);
  control.BackColor(SystemColor(isReadOnly ? COLOR_BTNFACE : COLOR_WINDOW));
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

FrmSet::FrmSet(TaskList& tasks, TaskSurroundings surroundings, std::function<void()> saveList,
               EditorServices services)
    : editor_(tasks, std::move(surroundings), std::move(saveList)),
      services_(std::move(services)) {}

void FrmSet::Open(HWND owner, std::optional<size_t> element) {
  Load({.caption = L"新增 / 編輯排程專案",
        .border = FormBorder::kFixedDialog,
        .widthTwips = kInsideWidth,
        .heightTwips = kInsideHeight,
        .backColor = kGround,
        .owner = owner,
        .icon = LoadIconW(GetModuleHandleW(nullptr), L"AAA"),
        .className = L"TellurvaneForm"});
  ResizeInside(Px(kInsideWidth), Px(kInsideHeight));
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

void FrmSet::Add(Field& field, ControlKind kind, const wchar_t* text) {
  field.box.Create({.parent = hwnd(), .backColor = kGround});
  field.control.TargetPictureBox(field.box);
  field.control.Create(kind);
  field.control.text(text);
}

void FrmSet::CreateList() {
  picJobs_.Create({.parent = hwnd()});
  lstJobs_.OnData = [this](int row, int, LVITEMW& cell) {
    const auto index = static_cast<size_t>(row);
    if ((cell.mask & LVIF_TEXT) == 0 || index >= editor_.RowCount()) return;
    lstJobs_.GiveText(cell, editor_.Task(index).Name);
  };
  lstJobs_.ItemChanged = [this](int row, UINT oldState, UINT newState) {
    lstJobs_ItemChanged(row, oldState, newState);
  };
  lstJobs_.DblClick = [this](bool isLeft, int row, int) {
    if (isLeft && row >= 0) cmdEdit_Click();
  };
  lstJobs_.KeyDown = [this](UINT key, int) { lstJobs_KeyDown(key); };
  lstJobs_.Create(picJobs_);
  // Room for the scroll bar, or a long list would get one below too.
  lstJobs_.ColumnAdd(L"專案名稱", Px(kListWidth) - GetSystemMetrics(SM_CXVSCROLL));
  lstJobs_.LockColumn(true);
  Add(cmdNew_, ControlKind::kPushButton, L"新增");
  Add(cmdEdit_, ControlKind::kPushButton, L"編輯");
  Add(cmdDel_, ControlKind::kPushButton, L"移除");
}

void FrmSet::CreateFields() {
  const auto addLabel = [this](Row row, const wchar_t* text) {
    Add(labels_[row], ControlKind::kLabel, text);
    labels_[row].control.ForeColor(kInk);
  };
  const auto addList = [this](Field& field, const auto& items) {
    Add(field, ControlKind::kDropDownList, L"");
    for (const wchar_t* const item : items) field.control.AddItem(item);
  };
  addLabel(kNameRow, L"專案名稱");
  Add(txtName_, ControlKind::kEditBox, L"");
  SendMessageW(txtName_.control.hwnd(), EM_SETLIMITTEXT, kLongestText, 0);
  addLabel(kMediaRow, L"媒體類型");
  addList(cboMediaType_, kMediaTypes);
  addLabel(kSourceRow, kSourceWords[0]);
  txtSrc_.control.Multilin(1);
  Add(txtSrc_, ControlKind::kRichEditBox, L"");
  SendMessageW(txtSrc_.control.hwnd(), EM_EXLIMITTEXT, 0, kLongestText);
  Add(cmdFiles_, ControlKind::kPushButton, L"...");
  addLabel(kDateRow, L"執行日期");
  picDates_.Create({.parent = hwnd(),
                    .width = Px(2 * kDateWidth + kRowGap),
                    .height = Px(kRowHeight),
                    .backColor = kGround});
  dtpDate_.Create(picDates_.hwnd(), 0, 0, Px(kDateWidth), Px(kRowHeight), true);
  dtpTime_.Create(picDates_.hwnd(), Px(kDateWidth + kRowGap), 0, Px(kDateWidth), Px(kRowHeight),
                  false);
  addLabel(kTimeRow, L"排程類型");
  addList(cboTimeType_, kTimeTypes);
  Add(txtInterval_, ControlKind::kEditBox, L"");
  Add(lblInterval_, ControlKind::kLabel, kIntervalWords[0]);
  lblInterval_.control.ForeColor(kInk);
  Add(chkEnabled_, ControlKind::kCheckBox, L"儲存後立即啟動音樂排程");
  for (Field* const box : {&txtName_, &txtSrc_, &txtInterval_}) box->control.BorderStyle(1);
}

void FrmSet::CreateButtons() {
  Add(cmdSaveJob_, ControlKind::kPushButton, L"儲存專案");
  Add(cmdCancelJob_, ControlKind::kPushButton, L"放棄編輯");
  Add(cmdSave_, ControlKind::kPushButton, L"關閉");
  Add(cmdCancel_, ControlKind::kPushButton, L"取消");
}

void FrmSet::WireFields() {
  cmdNew_.control.Click = [this] { cmdNew_Click(); };
  cmdEdit_.control.Click = [this] { cmdEdit_Click(); };
  cmdDel_.control.Click = [this] { cmdDel_Click(); };
  cmdFiles_.control.Click = [this] { cmdFiles_Click(); };
  cmdSaveJob_.control.Click = [this] { cmdSaveJob_Click(); };
  cmdCancelJob_.control.Click = [this] { cmdCancelJob_Click(); };
  cmdSave_.control.Click = [this] { cmdSave_Click(); };
  cmdCancel_.control.Click = [this] { cmdCancel_Click(); };
  cboMediaType_.control.Click = [this] { cboMediaType_Click(); };
  cboTimeType_.control.Click = [this] { cboTimeType_Click(); };
  txtSrc_.control.KeyDown = [this](UINT key) { return txtSrc_KeyDown(key); };
}

void FrmSet::Form_Resize() {
  const int margin = Px(kMargin);
  const int gap = Px(kRowGap);
  const int rowHeight = Px(kRowHeight);
  const int buttonHeight = Px(kButtonHeight);
  const int width = ScaleWidth();
  const int lowerY = ScaleHeight() - margin - buttonHeight;
  const auto put = [](Field& field, int x, int y, int w, int h) {
    field.box.Move(x, y, std::max(w, 0), std::max(h, 0));
  };

  picJobs_.Move(margin, margin, Px(kListWidth), std::max(lowerY - gap - margin, 0));
  int x = margin;
  for (Field* const button : {&cmdNew_, &cmdEdit_, &cmdDel_}) {
    put(*button, x, lowerY, Px(kSmallButton), buttonHeight);
    x += (Px(kListWidth) - Px(kSmallButton)) / 2;
  }

  const int labelX = 2 * margin + Px(kListWidth);
  const int fieldX = labelX + Px(kLabelWidth);
  const int right = width - margin;
  const int labelDrop = Px(75);  // to the middle of a field's line
  const std::array<int, 5> heights = {rowHeight, rowHeight, Px(kSourceHeight), rowHeight,
                                      rowHeight};
  std::array<int, 5> tops = {};
  int y = margin;
  for (size_t row = 0; row < tops.size(); ++row) {
    tops[row] = y;
    put(labels_[row], labelX, y + labelDrop, Px(kLabelWidth), rowHeight - labelDrop);
    y += heights[row] + gap;
  }
  const int editHeight = Px(kEditHeight);
  const int editDrop = (rowHeight - editHeight) / 2;
  put(txtName_, fieldX, tops[kNameRow] + editDrop, right - fieldX, editHeight);
  put(cboMediaType_, fieldX, tops[kMediaRow], Px(kTimeTypeWidth), rowHeight);
  const int dotsX = right - Px(kDotsWidth);
  put(txtSrc_, fieldX, tops[kSourceRow], dotsX - gap / 2 - fieldX, Px(kSourceHeight));
  put(cmdFiles_, dotsX, tops[kSourceRow], Px(kDotsWidth), rowHeight);
  picDates_.Move(fieldX, tops[kDateRow], right - fieldX, rowHeight);
  const int dateWidth = (right - fieldX - gap) * 11 / 20;
  MoveWindow(dtpDate_.hwnd(), 0, 0, dateWidth, rowHeight, TRUE);
  MoveWindow(dtpTime_.hwnd(), dateWidth + gap, 0, right - fieldX - gap - dateWidth, rowHeight,
             TRUE);
  put(cboTimeType_, fieldX, tops[kTimeRow], Px(kTimeTypeWidth), rowHeight);
  const int intervalX = fieldX + Px(kTimeTypeWidth) + gap;
  put(txtInterval_, intervalX, tops[kTimeRow] + editDrop, Px(kIntervalWidth), editHeight);
  const int wordX = intervalX + Px(kIntervalWidth) + gap / 2;
  put(lblInterval_, wordX, tops[kTimeRow] + labelDrop, right - wordX, rowHeight - labelDrop);
  put(chkEnabled_, fieldX, y, right - fieldX, rowHeight);
  y += rowHeight + gap;
  put(cmdSaveJob_, fieldX, y, Px(kButtonWidth), buttonHeight);
  put(cmdCancelJob_, fieldX + Px(kButtonWidth) + gap, y, Px(kButtonWidth), buttonHeight);
  put(cmdCancel_, right - Px(kButtonWidth), lowerY, Px(kButtonWidth), buttonHeight);
  put(cmdSave_, right - 2 * Px(kButtonWidth) - gap, lowerY, Px(kButtonWidth), buttonHeight);
}

bool FrmSet::Form_Unload() { return mayClose_ || MayLoseTyping(); }

bool FrmSet::MayLoseTyping() {
  if (!editor_.IsEditing() || ReadFields() == shown_) return true;
  return Ask(L"正在編輯的排程專案尚未儲存，您確定要關閉嗎？",
             MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
}

void FrmSet::Form_Enter() {
  if (editor_.IsEditing()) {
    cmdSaveJob_Click();
  } else {
    cmdEdit_Click();
  }
}

void FrmSet::Form_Escape() {
  if (editor_.IsEditing()) {
    cmdCancelJob_Click();
  } else {
    Unload();
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

void FrmSet::lstJobs_KeyDown(UINT key) {
  if (key == VK_F2) cmdEdit_Click();
  if (key == VK_INSERT) cmdNew_Click();
  if (key == VK_DELETE) cmdDel_Click();
}

// Enter makes a new line in a note and saves every other task; with Ctrl it always saves.
bool FrmSet::txtSrc_KeyDown(UINT key) {
  if (key != VK_RETURN) return false;
  if (shownMedia_ == kReminderNote && GetKeyState(VK_CONTROL) >= 0) return false;
  cmdSaveJob_Click();
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
  txtName_.box.SetFocus();
  SendMessageW(txtName_.control.hwnd(), EM_SETSEL, 0, -1);
}

void FrmSet::cmdDel_Click() {
  if (!editor_.Abilities().removeTask) return;
  const std::wstring name = editor_.Task(*editor_.SelectedRow()).Name;
  if (Ask(L"您確定要移除【" + name + L"】嗎？", MB_YESNO | MB_ICONQUESTION) != IDYES) return;
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
  const auto refusal = editor_.Save(ReadFields());
  if (refusal) {
    Ask(refusal->message, MB_OK | MB_ICONINFORMATION);
    if (refusal->emptiesInterval) {
      txtInterval_.control.text(L"");
      txtInterval_.box.SetFocus();
    }
    return false;
  }
  RefreshList();
  ShowFields();
  ShowState();
  lstJobs_.SetFocus();
  return true;
}

void FrmSet::cmdSave_Click() {
  if (!SaveJob()) return;
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
  switch (cboMediaType_.control.ListIndex()) {
    case kInternetRadio:
      if (services_.chooseStation) source = services_.chooseStation(hwnd());
      break;
    case kLocalMusic:
    case kApplication: {
      // The dialog belongs to the main window and would leave this one open to the user.
      EnableWindow(hwnd(), FALSE);
      source = services_.browseForSource(cboMediaType_.control.ListIndex() == kApplication);
      EnableWindow(hwnd(), TRUE);
      SetActiveWindow(hwnd());
      break;
    }
    case kReminderNote:
      if (services_.editNote) source = services_.editNote(hwnd(), Source());
      break;
    default:
      break;
  }
  if (source && IsLoaded()) ShowSource(*source);
}

// What was typed stays; only its look follows the kind of task.
void FrmSet::cboMediaType_Click() {
  const std::wstring source = Source();
  shownMedia_ = cboMediaType_.control.ListIndex();
  ShowMediaWords();
  ShowSource(source);
}

void FrmSet::cboTimeType_Click() {
  const int unit = cboTimeType_.control.ListIndex();
  // A unit from a file that the list does not offer has no word.
  lblInterval_.control.text(unit < 0 ? L"" : kIntervalWords.at(static_cast<size_t>(unit)));
}

void FrmSet::ShowMediaWords() {
  const auto media = static_cast<size_t>(std::clamp<std::int32_t>(shownMedia_, 0, 3));
  labels_[kSourceRow].control.text(kSourceWords.at(media));
}

void FrmSet::ShowSource(const std::wstring& source) {
  txtSrc_.control.text(shownMedia_ == kReminderNote ? services_.noteForScreen(source) : source);
}

std::wstring FrmSet::Source() const {
  const std::wstring text = txtSrc_.control.text();
  return shownMedia_ == kReminderNote ? services_.noteForList(text) : text;
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
  for (Field* const text : {&txtName_, &txtSrc_, &txtInterval_}) {
    SetReadOnly(text->control, !can.fields);
  }
  for (Field* const field : {&cboMediaType_, &cmdFiles_, &cboTimeType_, &chkEnabled_}) {
    field->box.Enabled(can.fields);
  }
  dtpDate_.Enabled(can.fields);
  dtpTime_.Enabled(can.fields);
  cmdSaveJob_.box.Enabled(can.saveTask);
  cmdCancelJob_.box.Enabled(can.cancelTask);
}

}  // namespace tellurvane

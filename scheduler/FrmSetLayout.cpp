// Creates and places the controls of the schedule editor.
#include <richedit.h>

#include <algorithm>

#include "scheduler/FrmSet.h"
#include "ui/AccessibleObject.h"
#include "ui/DialogGrid.h"
#include "ui/ModTheme.h"

namespace tellurvane {
namespace {

using namespace DialogGrid;

// Twips.
constexpr int kListWidth = 2'850;
constexpr int kLabelWidth = 1'080;
constexpr int kSourceHeight = 1'080;
constexpr int kSmallButton = 900;
constexpr int kDotsWidth = 480;
constexpr int kDateWidth = 2'650;
constexpr int kTimeTypeWidth = 2'400;
constexpr int kIntervalWidth = 750;

constexpr int kLongestText = 1 << 20;  // UTF-16 units; a whole list file holds no more

enum Row : size_t { kNameRow, kMediaRow, kSourceRow, kDateRow, kTimeRow, kRowCount };

constexpr auto kSourceWords =
    std::to_array<const wchar_t*>({L"來源音樂", L"來源音樂", L"執行程式", L"提醒文字"});
static_assert(kSourceWords.size() == kMediaTypeCount);
constexpr std::array<const wchar_t*, 3> kTimeTypes = {L"每幾分鐘執行一次", L"每幾小時執行一次",
                                                      L"每幾天執行一次"};
constexpr std::array<const wchar_t*, 3> kIntervalWords = {L"分鐘執行一次", L"小時執行一次",
                                                          L"天執行一次"};

}  // namespace

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
  // Leaves space for the scroll bar. Otherwise a long list would get one below too.
  lstJobs_.ColumnAdd(L"專案名稱", Px(kListWidth) - GetSystemMetrics(SM_CXVSCROLL));
  lstJobs_.LockColumn(true);
  cmdNew_.Create(hwnd(), ControlKind::kPushButton, L"新增");
  cmdEdit_.Create(hwnd(), ControlKind::kPushButton, L"編輯");
  cmdDel_.Create(hwnd(), ControlKind::kPushButton, L"移除");
}

void FrmSet::CreateFields() {
  const auto addLabel = [this](Row row, const wchar_t* text) {
    labels_[row].Create(hwnd(), ControlKind::kLabel, text);
    labels_[row].control.ForeColor(ModTheme::kLabelInk);
  };
  const auto addList = [this](BoxedControl& field, const auto& items) {
    field.Create(hwnd(), ControlKind::kDropDownList, L"");
    for (const wchar_t* const item : items) field.control.AddItem(item);
  };
  addLabel(kNameRow, L"專案名稱");
  txtName_.Create(hwnd(), ControlKind::kEditBox, L"");
  SendMessageW(txtName_.control.hwnd(), EM_SETLIMITTEXT, kLongestText, 0);
  addLabel(kMediaRow, L"媒體類型");
  addList(cboMediaType_, kMediaTypeNames);
  addLabel(kSourceRow, kSourceWords[0]);
  txtSrc_.control.Multilin(1);
  txtSrc_.Create(hwnd(), ControlKind::kRichEditBox, L"");
  SendMessageW(txtSrc_.control.hwnd(), EM_EXLIMITTEXT, 0, kLongestText);
  cmdFiles_.Create(hwnd(), ControlKind::kPushButton, L"...");
  addLabel(kDateRow, L"執行日期");
  picDates_.Create({.parent = hwnd(),
                    .width = Px(2 * kDateWidth + kGap),
                    .height = Px(kRowHeight),
                    .backColor = ModTheme::kWindowGround});
  dtpDate_.Create(picDates_.hwnd(), 0, 0, Px(kDateWidth), Px(kRowHeight), true);
  dtpTime_.Create(picDates_.hwnd(), Px(kDateWidth + kGap), 0, Px(kDateWidth), Px(kRowHeight),
                  false);
  addLabel(kTimeRow, L"排程類型");
  addList(cboTimeType_, kTimeTypes);
  txtInterval_.Create(hwnd(), ControlKind::kEditBox, L"");
  lblInterval_.Create(hwnd(), ControlKind::kLabel, kIntervalWords[0]);
  lblInterval_.control.ForeColor(ModTheme::kLabelInk);
  chkEnabled_.Create(hwnd(), ControlKind::kCheckBox, L"儲存後立即啟動音樂排程");
  for (BoxedControl* const box : {&txtName_, &txtSrc_, &txtInterval_}) box->control.BorderStyle(1);
  NameFields();
}

void FrmSet::NameFields() {
  const auto byLabel = [this](HWND field, Row row) {
    NameByLabel(field, labels_[row].control.hwnd());
  };
  byLabel(txtName_.control.hwnd(), kNameRow);
  byLabel(cboMediaType_.control.hwnd(), kMediaRow);
  byLabel(txtSrc_.control.hwnd(), kSourceRow);
  byLabel(dtpDate_.hwnd(), kDateRow);
  byLabel(cboTimeType_.control.hwnd(), kTimeRow);
  NameByLabel(txtInterval_.control.hwnd(), lblInterval_.control.hwnd());
  NameByText(cmdFiles_.control.hwnd(), L"選擇來源");
  NameByText(dtpTime_.hwnd(), L"執行時間");
  NameByText(lstJobs_.hwnd(), L"排程專案");
}

void FrmSet::CreateButtons() {
  cmdSaveJob_.Create(hwnd(), ControlKind::kPushButton, L"儲存專案");
  cmdCancelJob_.Create(hwnd(), ControlKind::kPushButton, L"放棄編輯");
  cmdSave_.Create(hwnd(), ControlKind::kPushButton, L"關閉");
  cmdCancel_.Create(hwnd(), ControlKind::kPushButton, L"取消");
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
}

void FrmSet::Form_Resize() {
  const int margin = Px(kMargin);
  const int lowerY = ScaleHeight() - margin - Px(kButtonHeight);
  PlaceList(lowerY);
  PlaceFields(2 * margin + Px(kListWidth), ScaleWidth() - margin);
  const int right = ScaleWidth() - margin;
  cmdCancel_.Move(right - Px(kButtonWidth), lowerY, Px(kButtonWidth), Px(kButtonHeight));
  cmdSave_.Move(right - 2 * Px(kButtonWidth) - Px(kGap), lowerY, Px(kButtonWidth),
                Px(kButtonHeight));
}

void FrmSet::PlaceList(int lowerY) {
  const int margin = Px(kMargin);
  picJobs_.Move(margin, margin, Px(kListWidth), std::max(lowerY - Px(kGap) - margin, 0));
  int x = margin;
  for (BoxedControl* const button : {&cmdNew_, &cmdEdit_, &cmdDel_}) {
    button->Move(x, lowerY, Px(kSmallButton), Px(kButtonHeight));
    x += (Px(kListWidth) - Px(kSmallButton)) / 2;
  }
}

void FrmSet::PlaceFields(int labelX, int right) {
  const int gap = Px(kGap);
  const int rowHeight = Px(kRowHeight);
  const int labelDrop = Px(kLabelDrop);
  std::array<int, kRowCount> tops = {};
  int y = Px(kMargin);
  for (size_t row = 0; row < kRowCount; ++row) {
    tops[row] = y;
    labels_[row].Move(labelX, y + labelDrop, Px(kLabelWidth), rowHeight - labelDrop);
    y += (row == kSourceRow ? Px(kSourceHeight) : rowHeight) + gap;
  }
  const int x = labelX + Px(kLabelWidth);
  const int editHeight = Px(kEditHeight);
  const int editDrop = (rowHeight - editHeight) / 2;
  txtName_.Move(x, tops[kNameRow] + editDrop, right - x, editHeight);
  cboMediaType_.Move(x, tops[kMediaRow], Px(kTimeTypeWidth), rowHeight);
  const int dotsX = right - Px(kDotsWidth);
  txtSrc_.Move(x, tops[kSourceRow], dotsX - gap / 2 - x, Px(kSourceHeight));
  cmdFiles_.Move(dotsX, tops[kSourceRow], Px(kDotsWidth), rowHeight);
  PlaceDates(x, tops[kDateRow], right - x);
  cboTimeType_.Move(x, tops[kTimeRow], Px(kTimeTypeWidth), rowHeight);
  const int intervalX = x + Px(kTimeTypeWidth) + gap;
  txtInterval_.Move(intervalX, tops[kTimeRow] + editDrop, Px(kIntervalWidth), editHeight);
  const int wordX = intervalX + Px(kIntervalWidth) + gap / 2;
  lblInterval_.Move(wordX, tops[kTimeRow] + labelDrop, right - wordX, rowHeight - labelDrop);
  chkEnabled_.Move(x, y, right - x, rowHeight);
  y += rowHeight + gap;
  cmdSaveJob_.Move(x, y, Px(kButtonWidth), Px(kButtonHeight));
  cmdCancelJob_.Move(x + Px(kButtonWidth) + gap, y, Px(kButtonWidth), Px(kButtonHeight));
}

void FrmSet::PlaceDates(int x, int y, int width) {
  const int gap = Px(kGap);
  const int height = Px(kRowHeight);
  picDates_.Move(x, y, width, height);
  const int dateWidth = (width - gap) * 2 / 3;
  MoveWindow(dtpDate_.hwnd(), 0, 0, dateWidth, height, TRUE);
  MoveWindow(dtpTime_.hwnd(), dateWidth + gap, 0, width - gap - dateWidth, height, TRUE);
}

void FrmSet::cboTimeType_Click() {
  const int unit = cboTimeType_.control.ListIndex();
  // A unit from a file may be unknown.
  lblInterval_.control.text(unit < 0 ? L"" : kIntervalWords.at(static_cast<size_t>(unit)));
}

void FrmSet::ShowMediaWords() {
  const auto media =
      static_cast<size_t>(std::clamp<std::int32_t>(shownMedia_, 0, kMediaTypeCount - 1));
  labels_[kSourceRow].control.text(kSourceWords.at(media));
}

}  // namespace tellurvane

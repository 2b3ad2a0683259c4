#include "radio/frmRadioList.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

#include "base/Number.h"
#include "radio/DirectoryError.h"
#include "radio/HttpGetText.h"
#include "radio/StationRowPainter.h"
#include "ui/AccessibleObject.h"
#include "ui/DialogGrid.h"
#include "ui/MessageLoop.h"
#include "ui/ModTheme.h"

namespace tellurvane {
namespace {

using namespace DialogGrid;

// Twips.
constexpr int kWidth = 9'900;
constexpr int kHeight = 7'200;
constexpr int kSourceWidth = 2'550;
constexpr int kOptionWidth = 1'650;
constexpr int kGenreWidth = 3'600;
constexpr int kTypeColumn = 1'500;
constexpr int kBitRateColumn = 1'950;
constexpr size_t kMostShown = 1'000;  // characters; more than any column can show

// The wait cursor for as long as the object lives.
class WaitCursor {
 public:
  WaitCursor() : before_(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
  ~WaitCursor() { SetCursor(before_); }

 private:
  HCURSOR before_;
};

}  // namespace

frmRadioList::frmRadioList(RadioCallbacks callbacks) : callbacks_(std::move(callbacks)) {}

std::optional<std::wstring> frmRadioList::Open(HWND owner) {
  Load(DialogArgs(L"Radio List", kWidth, kHeight, owner));
  Form_Resize();
  Center();
  ShowModal();
  return std::exchange(chosen_, std::nullopt);
}

void frmRadioList::Form_Load() {
  CreateSearch();
  CreateList();
  picStatus_.Create(hwnd(), ControlKind::kLabel, L"");
  picStatus_.control.ForeColor(ModTheme::kLabelInk);
  picOK_.Create(hwnd(), ControlKind::kPushButton, L"新 增");
  picCancel_.Create(hwnd(), ControlKind::kPushButton, L"關 閉");
  picOK_.control.Click = [this] { cmdOk_Click(); };
  picCancel_.control.Click = [this] { cmdCancel_Click(); };
  NameFields();
  ReadSettings();
  ShowMode();
  EnableSearchControls();
}

// No label is beside them; the options before two of them say what to do.
void frmRadioList::NameFields() {
  NameByText(picRadioType_.control.hwnd(), L"電台目錄");
  NameByText(picGenre_.control.hwnd(), L"類型");
  NameByText(picEdit_.control.hwnd(), L"關鍵字");
  NameByText(list_.hwnd(), L"電台");
}

void frmRadioList::CreateSearch() {
  picRadioType_.Create(hwnd(), ControlKind::kDropDownList, L"");
  for (const wchar_t* const name : kDirectoryNames) picRadioType_.control.AddItem(name);
  picRadioType_.control.ListIndex(static_cast<int>(kFirstSource));
  picSearch1_.Create(hwnd(), ControlKind::kOptionButton, L"依類型搜尋");
  picGenre_.Create(hwnd(), ControlKind::kDropDownList, L"");
  for (const Genre& genre : kGenres) picGenre_.control.AddItem(genre.label);
  picSearchKeyword_.Create(hwnd(), ControlKind::kOptionButton, L"依關鍵字搜尋");
  picEdit_.Create(hwnd(), ControlKind::kEditBox, L"");
  picEdit_.control.BorderStyle(1);
  picSearch_.Create(hwnd(), ControlKind::kPushButton, L"搜 尋");
  picRadioType_.control.Click = [this] { cmbRadioType_Click(); };
  picSearch1_.control.Click = [this] { SearchType_Click(SearchMode::kGenre); };
  picSearchKeyword_.control.Click = [this] { SearchType_Click(SearchMode::kKeyword); };
  picSearch_.control.Click = [this] { cmdSearch_Click(); };
}

void frmRadioList::CreateList() {
  PicListView_.Create({.parent = hwnd()});
  list_.OnData = [this](int row, int column, LVITEMW& cell) { ListView_OnData(row, column, cell); };
  list_.CustomDraw = [this](NMLVCUSTOMDRAW& draw, LRESULT& result) {
    ListView_CustomDraw(draw, result);
  };
  list_.DblClick = [this](bool isLeft, int row, int) {
    if (isLeft && row >= 0) ListView_DblClick();
  };
  list_.Create(PicListView_);
  list_.RowHeight(Scaled(kStationRowHeight));
  list_.ColumnAdd(L"電台名稱", Px(kWidth - kTypeColumn - kBitRateColumn));
  list_.ColumnAdd(L"類型", Px(kTypeColumn), ColumnAlignment::kCenter);
  list_.ColumnAdd(L"壓縮頻率", Px(kBitRateColumn), ColumnAlignment::kRight);
  list_.AutoDraw(true);
}

void frmRadioList::ReadSettings() {
  const auto genre = ParseInteger(callbacks_.readSetting(L"Genre")).value_or(0);
  picGenre_.control.ListIndex(genre);
  picEdit_.control.text(callbacks_.readSetting(L"SearchName"));
  const auto type = ParseInteger(callbacks_.readSetting(L"SearchType")).value_or(0);
  mode_ = type == 1 ? SearchMode::kKeyword : SearchMode::kGenre;
}

void frmRadioList::Form_Resize() {
  const int margin = Px(kMargin);
  const int gap = Px(kGap);
  const int rowHeight = Px(kRowHeight);
  const int editHeight = Px(kEditHeight);
  const int buttonHeight = Px(kButtonHeight);
  const int right = ScaleWidth() - margin;
  const int second = margin + rowHeight + gap;
  const int optionX = margin + Px(kSourceWidth) + 2 * gap;
  const int fieldX = optionX + Px(kOptionWidth) + gap;
  const int buttonX = right - Px(kButtonWidth);
  picRadioType_.Move(margin, margin, Px(kSourceWidth), rowHeight);
  picSearch1_.Move(optionX, margin, Px(kOptionWidth), rowHeight);
  picGenre_.Move(fieldX, margin, std::min(Px(kGenreWidth), buttonX - gap - fieldX), rowHeight);
  picSearchKeyword_.Move(optionX, second, Px(kOptionWidth), rowHeight);
  picEdit_.Move(fieldX, second + (rowHeight - editHeight) / 2,
                std::min(Px(kGenreWidth), buttonX - gap - fieldX), editHeight);
  picSearch_.Move(buttonX, second, Px(kButtonWidth), buttonHeight);

  const int lower = ScaleHeight() - margin - buttonHeight;
  const int listY = second + rowHeight + gap;
  PicListView_.Move(margin, listY, right - margin, std::max(lower - gap - listY, 0));
  picStatus_.Move(margin, lower + Px(kLabelDrop), buttonX - Px(kButtonWidth) - 2 * gap - margin,
                  buttonHeight - Px(kLabelDrop));
  picOK_.Move(buttonX - gap - Px(kButtonWidth), lower, Px(kButtonWidth), buttonHeight);
  picCancel_.Move(buttonX, lower, Px(kButtonWidth), buttonHeight);
  // Includes the vertical scroll bar, so that no horizontal one is needed.
  const int scrollBar = GetSystemMetrics(SM_CXVSCROLL);
  list_.ColumnWidth(
      0,
      std::max(right - margin - scrollBar - Px(kTypeColumn) - Px(kBitRateColumn) - Scaled(4), 0));
}

LRESULT frmRadioList::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  // Here, because the end of the program closes the dialog too.
  if (message == WM_DESTROY) {
    callbacks_.writeSetting(L"Genre", std::to_wstring(picGenre_.control.ListIndex()));
    callbacks_.writeSetting(L"SearchName", picEdit_.control.text());
  }
  if (message == WM_ACTIVATE && isSearching_) return KeepOwnFocus(wParam, lParam);
  // A fetch may handle messages, and a move of the mouse would reset the cursor.
  if (message == WM_SETCURSOR && isSearching_) {
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    return TRUE;
  }
  return Form::HandleMessage(message, wParam, lParam);
}

// While the controls are locked, the form would give the keyboard to 關閉.
LRESULT frmRadioList::KeepOwnFocus(WPARAM wParam, LPARAM lParam) {
  const bool isActive = LOWORD(wParam) != WA_INACTIVE;
  if (!isActive) hadOwnFocus_ = GetFocus() == hwnd();
  const LRESULT result = Form::HandleMessage(WM_ACTIVATE, wParam, lParam);
  if (isActive && hadOwnFocus_) ::SetFocus(hwnd());
  return result;
}

void frmRadioList::Form_Enter() {
  if (GetFocus() == list_.hwnd()) {
    list_.SelectFocusedRow();
    cmdOk_Click();
  } else {
    cmdSearch_Click();
  }
}

DirectorySource frmRadioList::Source() const {
  constexpr int kLast = static_cast<int>(kDirectoryNames.size()) - 1;
  return static_cast<DirectorySource>(std::clamp(picRadioType_.control.ListIndex(), 0, kLast));
}

DirectoryQuery frmRadioList::Query() const {
  DirectoryQuery query{.source = Source(), .mode = mode_, .term = {}};
  if (mode_ == SearchMode::kKeyword) {
    query.term = picEdit_.control.text();
  } else if (const int genre = picGenre_.control.ListIndex(); genre >= 0) {
    query.term = kGenres.at(static_cast<size_t>(genre)).key;
  }
  return query;
}

void frmRadioList::cmbRadioType_Click() { EnableSearchControls(); }

void frmRadioList::EnableSearchControls() {
  const bool canSearch = CanSearch(Source());
  picSearch1_.box.Enabled(canSearch);
  picSearchKeyword_.box.Enabled(canSearch);
  picGenre_.box.Enabled(canSearch && mode_ == SearchMode::kGenre);
  picEdit_.box.Enabled(canSearch && mode_ == SearchMode::kKeyword);
}

void frmRadioList::SearchType_Click(SearchMode mode) {
  mode_ = mode;
  callbacks_.writeSetting(L"SearchType", mode == SearchMode::kKeyword ? L"1" : L"0");
  ShowMode();
  EnableSearchControls();
}

// Each option is in a box of its own, so the platform does not pair them.
void frmRadioList::ShowMode() {
  picSearch1_.control.Checked(mode_ == SearchMode::kGenre);
  picSearchKeyword_.control.Checked(mode_ == SearchMode::kKeyword);
}

void frmRadioList::cmdSearch_Click() {
  if (std::exchange(isSearching_, true)) return;
  const WaitCursor wait;
  const DirectoryQuery query = Query();
  const HWND focus = GetFocus();
  // A disabled control would lose the keyboard, and Esc with it.
  if (IsChild(hwnd(), focus)) ::SetFocus(hwnd());
  rows_.clear();
  list_.ListCount(0);
  LockControls(true);
  UpdateWindow(list_.hwnd());
  list_.Block(true);
  Say(L"搜尋中…");
  // Paints the empty list and the locked controls before the page loads.
  ProcessPendingMessages();
  if (IsLoaded()) Search(query);
  // Drops the clicks that were made while the controls were locked.
  ProcessPendingMessages();
  if (IsLoaded()) {
    list_.Block(false);
    LockControls(false);
    RestoreFocus(focus);
  }
  isSearching_ = false;
}

// Unless the user moved it elsewhere.
void frmRadioList::RestoreFocus(HWND focus) {
  const bool isOurs = GetActiveWindow() == hwnd() && !IsChild(hwnd(), GetFocus());
  if (isOurs && IsChild(hwnd(), focus)) ::SetFocus(focus);
}

void frmRadioList::Search(const DirectoryQuery& query) {
  try {
    StationSearch search = SearchDirectory(query, callbacks_.directories);
    // The fetch may have handled a message that closed the dialog.
    if (IsLoaded()) Show(std::move(search));
  } catch (const FetchError& error) {
    if (IsLoaded()) Say(UnreachableText(static_cast<std::uint32_t>(error.Code())));
  } catch (const DirectoryError& error) {
    if (IsLoaded()) Say(error.Text());
  } catch (const std::bad_alloc&) {
    if (IsLoaded()) Say(kTooLargeAnswer);
  }
}

void frmRadioList::LockControls(bool locked) {
  PicListView_.Enabled(!locked);
  picSearch_.box.Enabled(!locked);
  picRadioType_.box.Enabled(!locked);
  picOK_.box.Enabled(!locked);
  if (locked) {
    for (BoxedControl* const field : {&picSearch1_, &picSearchKeyword_, &picGenre_, &picEdit_}) {
      field->box.Enabled(false);
    }
  } else {
    EnableSearchControls();
  }
}

void frmRadioList::Show(StationSearch search) {
  rows_ = std::move(search.rows);
  list_.ListCount(static_cast<int>(rows_.size()));
  std::wstring text = rows_.empty() ? std::wstring(L"沒有找到電台")
                                    : L"找到 " + std::to_wstring(rows_.size()) + L" 個電台";
  if (!search.isWhole) text += L"，電台目錄的資料不完整";
  Say(text);
}

void frmRadioList::cmdOk_Click() {
  const int row = list_.Selected();
  if (row >= 0 && static_cast<size_t>(row) < rows_.size()) {
    const std::wstring url = rows_[static_cast<size_t>(row)].url;
    if (!url.empty()) chosen_ = url;
  }
  cmdCancel_Click();
}

void frmRadioList::cmdCancel_Click() {
  Hide();
  Unload();
}

void frmRadioList::ListView_OnData(int row, int column, LVITEMW& cell) {
  const auto index = static_cast<size_t>(row);
  if ((cell.mask & LVIF_TEXT) == 0 || index >= rows_.size()) return;
  const StationRow station = rows_[index];
  // More than there are columns: the last three are hidden.
  const std::array<const std::wstring*, 6> texts = {&station.name,      &station.type,
                                                    &station.bitRate,   &station.url,
                                                    &station.listeners, &station.reserved};
  if (column >= 0 && static_cast<size_t>(column) < texts.size()) {
    list_.GiveText(cell, *texts[static_cast<size_t>(column)]);
  }
}

void frmRadioList::ListView_CustomDraw(NMLVCUSTOMDRAW& draw, LRESULT& result) {
  result = PaintListRow(list_, rows_.size(), draw, [this](size_t row, const RowPicture& picture) {
    PaintStationRow(picture, rows_.Head(row, kMostShown), list_.ColumnWidth(0));
  });
}

}  // namespace tellurvane

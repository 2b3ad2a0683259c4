#include "mainwin/TaskRowsView.h"

#include <algorithm>
#include <utility>

#include "base/LocaleDates.h"
#include "mainwin/RowDescription.h"
#include "ui/AccessibleObject.h"
#include "ui/Density.h"
#include "ui/Event.h"

namespace tellurvane {
namespace {

constexpr int kColumnWidth = 400;  // pixels of 96 dpi
constexpr const wchar_t* kUnreadList =
    L"排程清單 JobList.dbs 目前無法開啟，也無法備份，\n可能正由其他程式使用。\n\n"
    L"原有的清單不會被覆寫，\n程式每秒會再試一次，可以開啟時便會顯示。";

bool IsRemoved(const TaskRecord& task) { return task.Deleted; }

}  // namespace

TaskRowsView::TaskRowsView(ModGeneral& general, Clock clock)
    : general_(general), clock_(std::move(clock)), painter_(general.icons, AppendLocaleDateText) {}

void TaskRowsView::Create(PictureBox& area, PictureBox& host) {
  area_ = &area;
  list_.OnData = [this](int row, int column, LVITEMW& cell) { ListView_OnData(row, column, cell); };
  list_.CustomDraw = [this](NMLVCUSTOMDRAW& draw, LRESULT& result) {
    ListView_CustomDraw(draw, result);
  };
  list_.Click = [this](bool isLeft, int, int) {
    if (!isLeft) Raise(RightClick);
  };
  list_.DblClick = [this](bool isLeft, int, int) {
    if (isLeft) Raise(DblClick);
  };
  list_.Create(host);
  // Otherwise the list would place its header again for each setting.
  list_.Block(true);
  NameByText(list_.hwnd(), L"排程任務");
  list_.RowHeight(Scaled(kTaskRowHeight));
  list_.ColumnAdd(L"專案名稱", Scaled(kColumnWidth));
  list_.LockColumn(true);
  list_.AutoDraw(true);
  tip_.Create(list_, [this](int row) { return outcomes_.Of(static_cast<size_t>(row)).reason; });
  FitColumn();
  list_.Block(false);
}

void TaskRowsView::RefreshRow(size_t row) {
  list_.RedrawItem(static_cast<int>(row));
  ReportRow(row);
}

void TaskRowsView::EnableArea(bool enable) {
  // Disabling takes the focus from the list; enabling gives it back.
  if (!enable) hadFocus_ = hadFocus_ || HasFocus();
  area_->Enabled(enable);
  if (enable && std::exchange(hadFocus_, false) && GetFocus() == nullptr) list_.SetFocus();
}

void TaskRowsView::TakeFocus() {
  hadFocus_ = !area_->Enabled();
  if (!hadFocus_) list_.SetFocus();
}

void TaskRowsView::Refill() {
  shownMarks_.assign(general_.tasks.size(), RowMark::kNone);
  list_.EmptyText(general_.taskListFile.IsUnread() ? kUnreadList : L"");
  list_.ListCount(static_cast<int>(general_.tasks.size()));
  list_.RedrawVisibleItems();
  FitColumn();
}

void TaskRowsView::DropRemoved() {
  const std::optional<size_t> selected = SelectedRow();
  playing_ = RowWithoutRemoved(playing_);
  outcomes_.DropRemoved(general_.tasks);
  if (const auto row = RowWithoutRemoved(selected); row != selected) {
    list_.SetSelectList(row ? static_cast<int>(*row) : -1);
  }
  std::erase_if(general_.tasks, IsRemoved);
}

// The task's row after the removed tasks are erased; none if the task itself was removed.
std::optional<size_t> TaskRowsView::RowWithoutRemoved(std::optional<size_t> row) const {
  const TaskList& tasks = general_.tasks;
  if (!row || *row >= tasks.size()) return row;
  if (IsRemoved(tasks[*row])) return std::nullopt;
  const auto task = tasks.begin() + static_cast<std::ptrdiff_t>(*row);
  return *row - static_cast<size_t>(std::count_if(tasks.begin(), task, IsRemoved));
}

std::optional<size_t> TaskRowsView::SelectedRow() const {
  const int row = list_.Selected();
  if (row < 0) return std::nullopt;
  return static_cast<size_t>(row);
}

std::optional<size_t> TaskRowsView::TakeRow() {
  list_.SelectFocusedRow();
  return SelectedRow();
}

void TaskRowsView::ShowPlaying(std::optional<size_t> row) {
  const std::optional<size_t> before = std::exchange(playing_, row);
  if (before && before != row) ReportRow(*before);
  if (row) ReportRow(*row);
  RefreshMarks();
}

void TaskRowsView::ShowSign(PlaybackSign sign) {
  if (std::exchange(sign_, sign) == sign) return;
  if (playing_) ReportRow(*playing_);
  RefreshMarks();
}

void TaskRowsView::SetOutcome(size_t row, const RunOutcome& outcome) {
  if (outcomes_.Of(row) == outcome) return;
  outcomes_.Set(row, outcome);
  ReportRow(row);
  RefreshMarks();
}

// Tells screen readers that the row's text has changed.
void TaskRowsView::ReportRow(size_t row) const {
  NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, list_.hwnd(), OBJID_CLIENT, static_cast<LONG>(row) + 1);
}

void TaskRowsView::SetOutcomeOfPlaying(const RunOutcome& outcome) {
  if (playing_) SetOutcome(*playing_, outcome);
}

void TaskRowsView::RefreshMarks() {
  tip_.Refresh();
  const int last = std::min(list_.BottomItem(), static_cast<int>(shownMarks_.size()) - 1);
  for (int row = std::max(list_.TopItem(), 0); row <= last; ++row) {
    const auto index = static_cast<size_t>(row);
    if (MarkOfRow(index) != shownMarks_[index]) list_.RedrawItem(row);
  }
}

void TaskRowsView::FitColumn() {
  RECT client = {};
  GetClientRect(list_.hwnd(), &client);
  // A column of its designed width would need a scroll bar.
  if (client.right > 0) list_.ColumnWidth(0, static_cast<int>(client.right));
}

POINT TaskRowsView::MenuPlace() const {
  const int row = std::max(list_.Selected(), 0);
  POINT place = {Scaled(kTaskRowTextLeft), list_.GetItemTop(row) + list_.GetItemHeight() / 2};
  RECT client = {};
  GetClientRect(list_.hwnd(), &client);
  place.y = std::clamp(place.y, client.top, client.bottom);
  ClientToScreen(list_.hwnd(), &place);
  return place;
}

void TaskRowsView::ListView_OnData(int row, int column, LVITEMW& cell) {
  const auto index = static_cast<size_t>(row);
  if ((cell.mask & LVIF_TEXT) == 0 || column != 0 || index >= general_.tasks.size()) return;
  // Screen readers read this text; the rows are painted without it. A second column would not do:
  // some readers skip a column without width.
  list_.GiveText(cell, RowDescription(general_.tasks[index], SignOf(index), outcomes_.Of(index),
                                      AppendLocaleDateText));
}

void TaskRowsView::ListView_CustomDraw(NMLVCUSTOMDRAW& draw, LRESULT& result) {
  const auto paint = [this](size_t row, const RowPicture& picture) {
    const RowMark mark = MarkOfRow(row);
    if (row < shownMarks_.size()) shownMarks_[row] = mark;
    painter_.Paint(picture, general_.tasks[row], mark);
  };
  result = PaintListRow(list_, general_.tasks.size(), draw, paint);
}

RowMark TaskRowsView::MarkOfRow(size_t row) const {
  return MarkOf(general_.tasks[row], clock_(),
                {.sign = SignOf(row), .hasFailed = outcomes_.Of(row).HasFailed()});
}

PlaybackSign TaskRowsView::SignOf(size_t row) const {
  return playing_ == row ? sign_ : PlaybackSign::kNone;
}

}  // namespace tellurvane

// The task list on the screen.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/ModGeneral.h"
#include "mainwin/PlaybackController.h"
#include "mainwin/TaskRowPainter.h"
#include "scheduler/RunOutcome.h"
#include "scheduler/TaskRunner.h"
#include "ui/ListTip.h"
#include "ui/PictureBox.h"
#include "ui/clsLictView.h"

namespace tellurvane {

// Row i is task i of the general module's list.
class TaskRowsView final : public TaskRows {
 public:
  TaskRowsView(ModGeneral& general, Clock clock);

  // `area` is disabled while a task runs. `host` is inside it and holds the list.
  void Create(PictureBox& area, PictureBox& host);

  // TaskRows
  size_t RowCount() override { return static_cast<size_t>(list_.ListCount()); }
  void SelectRow(size_t row) override { list_.SetSelectList(static_cast<int>(row)); }
  void RefreshRow(size_t row) override;
  void EnableArea(bool enable) override;
  void SetRedraw(bool redraw) override { list_.Block(!redraw); }
  void SetOutcome(size_t row, const RunOutcome& outcome) override;

  // Shows the present list of tasks and keeps the selected row. If the file could not be read, the
  // empty list says so.
  void Refill();
  // Erases the removed tasks from the list of tasks. Selection, marks and outcomes follow their
  // tasks to the new rows; those of a removed task are gone.
  void DropRemoved();
  std::optional<size_t> SelectedRow() const;
  // The selected row. If there is none, the focused row is selected first.
  std::optional<size_t> TakeRow();
  // The row of the task whose media was started.
  void ShowPlaying(std::optional<size_t> row);
  // Of that row.
  void ShowSign(PlaybackSign sign);
  void SetOutcomeOfPlaying(const RunOutcome& outcome);
  // The number of tasks whose last run has failed.
  int FailedCount() const { return outcomes_.FailedCount(general_.tasks); }
  // Redraws the visible rows whose mark has changed, and brings the tooltip up to date.
  void RefreshMarks();
  // Makes the column as wide as the list.
  void FitColumn();
  // On the screen, at the selected row, or at the first one if none is selected.
  POINT MenuPlace() const;
  bool HasFocus() const { return GetFocus() == list_.hwnd(); }
  // At once, or as soon as the area is enabled.
  void TakeFocus();
  HWND hwnd() const { return list_.hwnd(); }

  // Events of the list. Any may be left empty.
  std::function<void()> RightClick;
  std::function<void()> DblClick;

 private:
  void ListView_OnData(int row, int column, LVITEMW& cell);
  void ListView_CustomDraw(NMLVCUSTOMDRAW& draw, LRESULT& result);
  RowMark MarkOfRow(size_t row) const;
  PlaybackSign SignOf(size_t row) const;
  void ReportRow(size_t row) const;
  std::optional<size_t> RowWithoutRemoved(std::optional<size_t> row) const;

  ModGeneral& general_;
  Clock clock_;
  PictureBox* area_ = nullptr;
  bool hadFocus_ = false;  // before the area was disabled
  std::optional<size_t> playing_;
  PlaybackSign sign_ = PlaybackSign::kNone;
  RunOutcomes outcomes_;
  std::vector<RowMark> shownMarks_;  // of each row when it was last painted
  TaskRowPainter painter_;
  clsLictView list_;
  ListTip tip_;
};

}  // namespace tellurvane

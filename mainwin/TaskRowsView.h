// The task list on the screen.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/ModGeneral.h"
#include "mainwin/TaskRowPainter.h"
#include "scheduler/TaskRunner.h"
#include "ui/PictureBox.h"
#include "ui/clsLictView.h"

namespace tellurvane {

// Row i is task i of the general module's list.
class TaskRowsView final : public TaskRows {
 public:
  TaskRowsView(ModGeneral& general, Clock clock);

  // `area` is disabled with the list while a task runs; `host` lies in it and holds the list.
  void Create(PictureBox& area, PictureBox& host);

  // TaskRows
  size_t RowCount() override { return static_cast<size_t>(list_.ListCount()); }
  void SelectRow(size_t row) override { list_.SetSelectList(static_cast<int>(row)); }
  void RefreshRow(size_t row) override;
  void EnableArea(bool enable) override;
  void SetRedraw(bool redraw) override { list_.Block(!redraw); }

  // Takes over the list of tasks; the selection stays as far as there are rows. An empty list
  // says why where its file could not be read.
  void Refill();
  // Takes the tasks that were removed out of the list of tasks. The task that is selected stays
  // selected, and the one that plays keeps its mark, whatever their names and rows are by then. A
  // removed task plays on without a mark, and nothing is selected where it was.
  void DropRemoved();
  std::optional<size_t> SelectedRow() const;
  // The row of the task that plays.
  void ShowPlaying(std::optional<size_t> row);
  // Redraws the visible rows whose mark is another one by now.
  void RefreshMarks();
  // The rows take the whole width of the list.
  void FitColumn();
  // Where the selected row, or without one the list, begins on the screen.
  POINT MenuPlace() const;
  bool HasFocus() const { return GetFocus() == list_.hwnd(); }

  // Events of the list. Any may be left empty.
  std::function<void()> RightClick;
  std::function<void()> DblClick;

 private:
  void ListView_OnData(int row, int column, LVITEMW& cell);
  void ListView_CustomDraw(NMLVCUSTOMDRAW& draw, LRESULT& result);
  RowMark MarkOfRow(size_t row) const;
  std::optional<size_t> RowWithoutRemoved(std::optional<size_t> row) const;

  ModGeneral& general_;
  Clock clock_;
  PictureBox* area_ = nullptr;
  bool hadFocus_ = false;  // before the area was disabled
  std::optional<size_t> playing_;
  std::vector<RowMark> shownMarks_;  // of each row when it was last painted
  TaskRowPainter painter_;
  clsLictView list_;
};

}  // namespace tellurvane

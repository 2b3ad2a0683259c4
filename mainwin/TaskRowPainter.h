// Draws the rows of the task list.
#pragma once

#include <windows.h>

#include <memory>
#include <span>
#include <string>

#include "mainwin/TaskRow.h"
#include "ui/ClsIcon.h"
#include "ui/RowPainter.h"

namespace tellurvane {

class TaskRowPainter {
 public:
  // The icons in the order of ModGeneral. They outlive the painter.
  TaskRowPainter(std::span<const std::unique_ptr<ClsIcon>> icons, DateWriter writeDate)
      : icons_(icons), writeDate_(std::move(writeDate)) {}

  void Paint(const RowPicture& row, const TaskRecord& task, RowMark mark) const;

 private:
  void PaintIcon(const RowPicture& row, size_t icon, int x, int y, int size) const;
  void PaintTexts(const RowPicture& row, const TaskRecord& task) const;

  std::span<const std::unique_ptr<ClsIcon>> icons_;
  DateWriter writeDate_;
};

// The text cut at its end, with an ellipsis unless it is a rule, to what the width in pixels holds.
std::wstring FittingText(HDC context, const std::wstring& text, int width, RowFont font);

}  // namespace tellurvane

// Draws the rows of the task list.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <span>
#include <string>

#include "mainwin/TaskRow.h"
#include "ui/ClsIcon.h"
#include "ui/MemoryContext.h"

namespace tellurvane {

struct TaskRowLook {
  RowMark mark = RowMark::kNone;
  bool isSelected = false;
  bool isOdd = false;  // every second row has another background
};

class TaskRowPainter {
 public:
  // The icons: the four media types, then playing, disabled, due. They outlive the painter.
  TaskRowPainter(std::span<const std::unique_ptr<ClsIcon>> icons, DateWriter writeDate)
      : icons_(icons), writeDate_(std::move(writeDate)) {}

  // Draws the row in memory and copies it to the target in one go: nothing flickers.
  void Paint(HDC target, const RECT& row, const TaskRecord& task, const TaskRowLook& look);

 private:
  void PaintBackground(HDC context, int width, int height, const TaskRowLook& look) const;
  void PaintIcon(HDC context, size_t icon, int x, int y, int size) const;
  void PaintTexts(HDC context, int width, const TaskRecord& task) const;
  HDC PictureOf(int width, int height);

  std::span<const std::unique_ptr<ClsIcon>> icons_;
  DateWriter writeDate_;
  std::optional<MemoryContext> picture_;
  int pictureWidth_ = 0;
  int pictureHeight_ = 0;
};

// The text cut at its end, with an ellipsis unless it is a rule, to what the width in pixels holds.
std::wstring FittingText(HDC context, const std::wstring& text, int width, RowFont font);

}  // namespace tellurvane

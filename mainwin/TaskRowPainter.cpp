#include "mainwin/TaskRowPainter.h"

#include <algorithm>

#include "ui/Density.h"
#include "ui/ModTheme.h"

namespace tellurvane {
namespace {

constexpr Color kPaper = Adaptive(Rgb(0xFF, 0xFF, 0xFF), COLOR_WINDOW);
constexpr Color kOddPaper = Adaptive(Rgb(0xF6, 0xF4, 0xFB), COLOR_WINDOW);
constexpr Color kSelectionLight = Rgb(0xFF, 0xF3, 0xD2);
constexpr Color kSelectionBase = Adaptive(Rgb(0xF1, 0xD0, 0x84), COLOR_HIGHLIGHT);

// Pixels of 96 dpi.
constexpr int kIconSize = 32;
constexpr int kMarkSize = 16;
constexpr int kIconLeft = (kTaskRowTextLeft - kIconSize) / 2;
constexpr int kRightMargin = 6;

ModTheme::TextFont FontOf(RowFont font) {
  switch (font) {
    case RowFont::kName:
      return {.size = 14, .style = ModTheme::kBold};
    case RowFont::kRule:
    case RowFont::kLabel:
      return {.size = 12};
    case RowFont::kValue:
      return {.size = 13};
  }
  return {};
}

// The place among the icons. None has a place that no icon has.
size_t IconOf(RowMark mark) {
  constexpr RowMark kMarks[] = {RowMark::kPlaying, RowMark::kDisabled, RowMark::kDue,
                                RowMark::kTrying, RowMark::kFailed};
  return kMediaTypeCount + static_cast<size_t>(std::ranges::find(kMarks, mark) - kMarks);
}

void PaintBackground(const RowPicture& row) {
  ModTheme::SolidFill(row.context, 0, 0, row.width, row.height, row.isOdd ? kOddPaper : kPaper);
  if (!row.isSelected) return;
  ModTheme::RichHighlight(row.context, 0, 0, row.width, row.height, kSelectionLight,
                          kSelectionBase);
}

}  // namespace

std::wstring FittingText(HDC context, const std::wstring& text, int width, RowFont font) {
  return ModTheme::FittingText(context, text, width, FontOf(font),
                               font == RowFont::kRule ? L"" : L"…");
}

void TaskRowPainter::Paint(const RowPicture& row, const TaskRecord& task, RowMark mark) const {
  PaintBackground(row);
  const int iconSize = Scaled(kIconSize);
  const int iconLeft = Scaled(kIconLeft);
  const int iconTop = (row.height - iconSize) / 2;
  if (IsMediaType(task.MediaType)) {
    PaintIcon(row, static_cast<size_t>(task.MediaType), iconLeft, iconTop, iconSize);
  }
  if (mark != RowMark::kNone) {
    // Its middle is on the icon's lower right corner.
    const int markSize = Scaled(kMarkSize);
    PaintIcon(row, IconOf(mark), iconLeft + iconSize - markSize / 2,
              iconTop + iconSize - markSize / 2, markSize);
  }
  PaintTexts(row, task);
}

// In the middle of a square of this size, by the largest image that fits into it.
void TaskRowPainter::PaintIcon(const RowPicture& row, size_t icon, int x, int y, int size) const {
  if (icon >= icons_.size() || icons_[icon] == nullptr) return;
  const ClsIcon& images = *icons_[icon];
  int largest = -1;
  for (int image = 0; image < images.Count(); ++image) {
    const bool fits = images.Width(image) <= size;
    if (fits && (largest < 0 || images.Width(image) > images.Width(largest))) largest = image;
  }
  if (largest < 0) return;
  const int inset = (size - images.Width(largest)) / 2;
  ModTheme::PicturePlate(row.context, x, y, size, size, row.isSelected ? kSelectionBase : kPaper);
  images.Draw(row.context, x + inset, y + inset, largest);
}

void TaskRowPainter::PaintTexts(const RowPicture& row, const TaskRecord& task) const {
  for (const RowLine& line : TaskRowLines(task, writeDate_)) {
    const int available = row.width - Scaled(2 * line.x) - Scaled(kRightMargin);
    ModTheme::Text(row.context, FittingText(row.context, line.text, available, line.font), line.x,
                   line.y, {.text = line.color, .plain = PlainInk(row)}, FontOf(line.font));
  }
}

}  // namespace tellurvane

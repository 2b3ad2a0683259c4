#include "ui/RowPainter.h"

#include <algorithm>

#include "ui/Density.h"
#include "ui/FocusFrame.h"
#include "ui/MemoryContext.h"
#include "ui/UserPreferences.h"

namespace tellurvane {
namespace {

constexpr int kContrastInset = 2;  // pixels of 96 dpi

// From edge to edge of the list, also where the columns are narrower.
RECT BoundsOf(const clsLictView& list, size_t row) {
  RECT bounds = {LVIR_BOUNDS, 0, 0, 0};
  SendMessageW(list.hwnd(), LVM_GETITEMRECT, row, reinterpret_cast<LPARAM>(&bounds));
  RECT client = {};
  GetClientRect(list.hwnd(), &client);
  bounds.left = std::min(bounds.left, client.left);
  bounds.right = std::max(bounds.right, client.right);
  return bounds;
}

// Under high contrast it often has the colour of the row beside it, so it is inside then.
void DrawFrame(const RowPicture& row) {
  const int inset = IsHighContrast() ? Scaled(kContrastInset) : 0;
  DrawFocusFrame(row.context, {inset, inset, row.width - inset, row.height - inset},
                 PlainIndex(row));
}

}  // namespace

LRESULT PaintListRow(const clsLictView& list, size_t rowCount, const NMLVCUSTOMDRAW& draw,
                     const PaintsRow& paint) {
  if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  const size_t row = draw.nmcd.dwItemSpec;
  if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT || row >= rowCount) return CDRF_DODEFAULT;
  const RECT bounds = BoundsOf(list, row);
  const auto width = static_cast<int>(bounds.right - bounds.left);
  const auto height = static_cast<int>(bounds.bottom - bounds.top);
  if (const auto picture = MemoryContext::Create(width, height)) {
    const RowPicture shown = {.context = picture->Dc(),
                              .width = width,
                              .height = height,
                              .isSelected = list.Selected() == static_cast<int>(row),
                              .isOdd = row % 2 == 1};
    paint(row, shown);
    if (GetFocus() == list.hwnd() && list.FocusedRow() == static_cast<int>(row)) DrawFrame(shown);
    BitBlt(draw.nmcd.hdc, static_cast<int>(bounds.left), static_cast<int>(bounds.top), width,
           height, picture->Dc(), 0, 0, SRCCOPY);
  }
  return CDRF_SKIPDEFAULT;
}

}  // namespace tellurvane

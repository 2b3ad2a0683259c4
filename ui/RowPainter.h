// Owner-drawn list rows: each is painted in memory and copied to the list in one step.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>

#include "ui/clsLictView.h"

namespace tellurvane {

// A row's picture in memory, in pixels.
struct RowPicture {
  HDC context = nullptr;
  int width = 0;
  int height = 0;
  bool isSelected = false;
  bool isOdd = false;  // every second row has another background
};

// The index of the system colour that texts and the focus frame have under high contrast.
inline int PlainIndex(const RowPicture& row) {
  return row.isSelected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT;
}
inline Color PlainInk(const RowPicture& row) { return SystemColor(PlainIndex(row)); }

using PaintsRow = std::function<void(size_t row, const RowPicture& picture)>;

// For the CustomDraw event of a list whose owner has this number of rows. Returns the event's
// result.
LRESULT PaintListRow(const clsLictView& list, size_t rowCount, const NMLVCUSTOMDRAW& draw,
                     const PaintsRow& paint);

}  // namespace tellurvane

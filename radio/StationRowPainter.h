// Draws the rows of the directory's result list.
#pragma once

#include <windows.h>

#include "radio/StationRow.h"

namespace tellurvane {

// Pixels of 96 dpi.
inline constexpr int kStationRowHeight = 28;

struct StationRowLook {
  bool isSelected = false;
  bool isOdd = false;
};

// The name in the first column of so many pixels, type and bit rate behind it. Drawn in memory and
// copied in one go.
void PaintStationRow(HDC target, const RECT& row, const StationRow& station, int nameWidth,
                     const StationRowLook& look);

}  // namespace tellurvane

// Draws the rows of the directory's result list.
#pragma once

#include "radio/StationRow.h"
#include "ui/RowPainter.h"

namespace tellurvane {

// Pixels of 96 dpi.
inline constexpr int kStationRowHeight = 28;

// The name in the first column, which has this width in pixels, then type and bit rate.
void PaintStationRow(const RowPicture& row, const StationRow& station, int nameWidth);

}  // namespace tellurvane

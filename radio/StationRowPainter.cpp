#include "radio/StationRowPainter.h"

#include <algorithm>
#include <string>

#include "ui/Density.h"
#include "ui/ModTheme.h"

namespace tellurvane {
namespace {

constexpr Color kGround = Adaptive(0xEBEBEB, COLOR_WINDOW);
constexpr Color kBand = Adaptive(0xF7F7F7, COLOR_WINDOW);
constexpr Color kOddBand = Adaptive(0xF3F3F3, COLOR_WINDOW);
constexpr Color kSelection = Adaptive(0xE0D080, COLOR_HIGHLIGHT);
constexpr ModTheme::TextFont kFont = {.size = 16};
// Pixels of 96 dpi.
constexpr int kMargin = 6;
constexpr int kTextY = 2;

// In one line, and cut to its column: a long name does not run into the type.
void Write(const RowPicture& row, std::wstring text, int x, int right, ModTheme::Argb color) {
  const HDC context = row.context;
  const auto isBreak = [](wchar_t unit) { return unit < L' '; };
  std::replace_if(text.begin(), text.end(), isBreak, L' ');
  const int saved = SaveDC(context);
  IntersectClipRect(context, x, 0, right, row.height);
  ModTheme::TextAt(context, ModTheme::FittingText(context, text, right - x, kFont), x,
                   Scaled(kTextY), {.text = color, .plain = PlainInk(row)}, kFont);
  RestoreDC(context, saved);
}

}  // namespace

void PaintStationRow(const RowPicture& row, const StationRow& station, int nameWidth) {
  const HDC context = row.context;
  ModTheme::SolidFill(context, 0, 0, row.width, row.height, kGround);
  if (row.isSelected) {
    ModTheme::SimpleHighlight(context, 0, 0, row.width, row.height, kWhite, kSelection);
  } else {
    ModTheme::SolidFill(context, 0, 1, row.width, row.height - 2, row.isOdd ? kOddBand : kBand);
  }
  const int margin = Scaled(kMargin);
  Write(row, station.name, margin, nameWidth - margin, ModTheme::kBlueText);
  Write(row, L"[ " + station.type + L" ] " + station.bitRate, nameWidth + margin,
        row.width - margin, ModTheme::kBlackText);
}

}  // namespace tellurvane

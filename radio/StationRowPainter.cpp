#include "radio/StationRowPainter.h"

#include <algorithm>
#include <string>

#include "ui/Density.h"
#include "ui/ModTheme.h"

namespace tellurvane {
namespace {

constexpr Color kGround = 0xEBEBEB;
constexpr Color kBand = 0xF7F7F7;
constexpr Color kOddBand = 0xF3F3F3;
constexpr Color kSelection = 0xE0D080;
constexpr ModTheme::TextFont kFont = {.size = 16};
// Pixels of 96 dpi.
constexpr int kMargin = 6;
constexpr int kTextY = 2;

// In one line, and cut to its column: a long name does not run into the type.
void Write(HDC context, std::wstring text, int x, int right, int height, ModTheme::Argb color) {
  const auto isBreak = [](wchar_t unit) { return unit < L' '; };
  std::replace_if(text.begin(), text.end(), isBreak, L' ');
  const int saved = SaveDC(context);
  IntersectClipRect(context, x, 0, right, height);
  ModTheme::TextAt(context, ModTheme::FittingText(context, text, right - x, kFont), x,
                   Scaled(kTextY), {.text = color}, kFont);
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
  Write(context, station.name, margin, nameWidth - margin, row.height, ModTheme::kBlueText);
  Write(context, L"[ " + station.type + L" ] " + station.bitRate, nameWidth + margin,
        row.width - margin, row.height, ModTheme::kBlackText);
}

}  // namespace tellurvane

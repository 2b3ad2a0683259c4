#include "clock/ClockDrawing.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "ui/Density.h"
#include "ui/Handle.h"
#include "ui/ModTheme.h"
#include "ui/ToolkitFont.h"

namespace tellurvane {
namespace {

// Pixels of 96 dpi.
constexpr int kDiscMargin = 2;
constexpr int kDotSize = 1;
constexpr int kMarkReach = 1;  // from the mark's centre to its edge

constexpr Color kDisc = Adaptive(Rgb(0xFB, 0xF1, 0xDC), COLOR_WINDOW);
constexpr Color kMark = Adaptive(kBlack, COLOR_WINDOWTEXT);
constexpr Color kHourHand = Adaptive(kBlack, COLOR_WINDOWTEXT);
constexpr Color kMinuteHand = Adaptive(Rgb(0, 0, 0xFF), COLOR_WINDOWTEXT);
constexpr Color kSecondHand = Adaptive(Rgb(0xFF, 0, 0), COLOR_HIGHLIGHT);

void DrawLine(HDC context, FacePoint from, FacePoint to, Color color) {
  color = ModTheme::TranslateColor(color);
  const UniquePen pen(CreatePen(PS_SOLID, 1, color));
  const SelectedObject selected(context, pen.Get());
  MoveToEx(context, from.x, from.y, nullptr);
  LineTo(context, to.x, to.y);
  // LineTo leaves out the last pixel.
  SetPixel(context, to.x, to.y, color);
}

}  // namespace

Scale OwnScale() { return FaceScale(DotsPerInch()); }

int DiscRadius(const ClockFace& face) { return face.radius + OwnScale().Scaled(kDiscMargin); }

// Anti-aliased.
void DrawDisc(HDC context, const ClockFace& face) {
  const int centre = face.centre;
  const int radius = DiscRadius(face);
  const Color disc = ModTheme::TranslateColor(kDisc);
  const Color night = ModTheme::TranslateColor(kNight);
  for (int y = centre - radius - 1; y <= centre + radius + 1; ++y) {
    for (int x = centre - radius - 1; x <= centre + radius + 1; ++x) {
      const double distance = std::hypot(x - centre, y - centre);
      const double cover = std::clamp(radius + 0.5 - distance, 0.0, 1.0);
      if (cover > 0) {
        SetPixel(context, x, y, Blend(disc, night, static_cast<int>(std::lround(cover * 255))));
      }
    }
  }
}

void DrawMarks(HDC context, const ClockFace& face) {
  const UniqueBrush brush(CreateSolidBrush(ModTheme::TranslateColor(kMark)));
  const int dotSize = OwnScale().Scaled(kDotSize);
  for (const FacePoint& dot : MinuteDots(face)) {
    const int left = dot.x - dotSize / 2;
    const int top = dot.y - dotSize / 2;
    const RECT box = {left, top, left + dotSize, top + dotSize};
    FillRect(context, &box, brush.Get());
  }
  const int reach = OwnScale().Scaled(kMarkReach);
  for (const FacePoint& mark : HourMarks(face)) {
    const RECT box = {mark.x - reach, mark.y - reach, mark.x + reach + 1, mark.y + reach + 1};
    FrameRect(context, &box, brush.Get());
  }
}

void DrawHands(HDC context, const ClockFace& face, const FaceHands& hands) {
  const FacePoint centre = {face.centre, face.centre};
  DrawLine(context, centre, hands.hour, kHourHand);
  DrawLine(context, centre, hands.minute, kMinuteHand);
  DrawLine(context, centre, hands.second, kSecondHand);
}

void WriteDigit(HDC context, const RECT& cell, int digit) {
  const UniqueBrush ground(CreateSolidBrush(ModTheme::TranslateColor(kNight)));
  FillRect(context, &cell, ground.Get());
  LOGFONTW look = {};
  GetObjectW(ToolkitFont(), sizeof(look), &look);
  look.lfHeight = -(cell.bottom - cell.top) * 4 / 5;  // of a character, not of a line
  const UniqueFont font(CreateFontIndirectW(&look));
  const SelectedObject selected(context, font.Get());
  const int mode = SetBkMode(context, TRANSPARENT);
  const COLORREF ink = SetTextColor(context, ModTheme::TranslateColor(kWheat));
  RECT place = cell;
  DrawTextW(context, std::to_wstring(digit).c_str(), 1, &place,
            DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOCLIP);
  SetTextColor(context, ink);
  SetBkMode(context, mode);
}

}  // namespace tellurvane

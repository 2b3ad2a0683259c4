#include "ui/ModTheme.h"

#include "base/Number.h"
#include "ui/Density.h"
#include "ui/MemoryContext.h"
#include "ui/UserPreferences.h"

namespace tellurvane::ModTheme {
namespace {

constexpr int kInsideOpacity = 100;
constexpr int kPlateEdge = 2;  // pixels of 96 dpi

int RoundedOpacity(double opacity) { return static_cast<int>(RoundHalfToEven(opacity)); }

struct FramePens {
  UniquePen outer;
  UniquePen inner;
};

FramePens MakeFramePens(Color light, Color base) {
  return {UniquePen(CreatePen(PS_SOLID, 1, Blend(kBlack, base, 10))),
          UniquePen(CreatePen(PS_SOLID, 1, Blend(light, kWhite, 10)))};
}

// A column of one pixel, as a brush that repeats it. `rowColor` is asked for each row from 0.
template <typename RowColor>
UniqueBrush MakeColumnBrush(int height, RowColor rowColor) {
  const auto column = MemoryContext::Create(1, height);
  if (!column) return {};
  for (int row = 0; row < height; ++row) SetPixelV(column->Dc(), 0, row, rowColor(row));
  return UniqueBrush(CreatePatternBrush(column->Bitmap()));
}

void RoundedRectangle(HDC target, HPEN pen, HGDIOBJ brush, const RECT& box, int corner) {
  const SelectedObject selectedPen(target, pen);
  const SelectedObject selectedBrush(target, brush);
  RoundRect(target, box.left, box.top, box.right, box.bottom, corner, corner);
}

// Draws on a copy of the target's area and copies it back in one step.
template <typename Drawing>
void DrawOnCopy(HDC target, int x, int y, int width, int height, Drawing drawing) {
  if (width <= 0 || height <= 0) return;
  const auto copy = MemoryContext::Create(width, height);
  if (!copy) return;
  BitBlt(copy->Dc(), 0, 0, width, height, target, x, y, SRCCOPY);
  drawing(copy->Dc());
  BitBlt(target, x, y, width, height, copy->Dc(), 0, 0, SRCCOPY);
}

}  // namespace

Color TranslateColor(Color color) {
  if ((color & kSystemColorBit) != 0) return GetSysColor(static_cast<int>(color & 0xFF));
  const auto adaptive = static_cast<int>(color >> kAdaptiveShift & kAdaptiveBits);
  if (adaptive != 0 && IsHighContrast()) return GetSysColor(adaptive - 1);
  return color & kWhite;
}

bool IsDarkGround(Color ground) {
  constexpr int kMiddle = 128;
  return IsHighContrast() && Brightness(TranslateColor(ground)) < kMiddle;
}

void PicturePlate(HDC target, int x, int y, int width, int height, Color ground) {
  if (!IsDarkGround(ground)) return;
  const int edge = Scaled(kPlateEdge);
  SolidFill(target, x - edge, y - edge, width + 2 * edge, height + 2 * edge, kWhite);
}

void FramedBox(HDC target, int x, int y, int width, int height, Color color) {
  color = TranslateColor(color);
  const UniquePen pen(CreatePen(PS_SOLID, 1, color));
  const Color inside =
      IsHighContrast() ? GetSysColor(COLOR_WINDOW) : Blend(color, kWhite, kInsideOpacity);
  const UniqueBrush brush(CreateSolidBrush(inside));
  const SelectedObject selectedPen(target, pen.Get());
  const SelectedObject selectedBrush(target, brush.Get());
  Rectangle(target, x, y, x + width, y + height);
}

void SolidFill(HDC target, int x, int y, int width, int height, Color color) {
  if (width <= 0 || height <= 0) return;
  const auto fill = MemoryContext::Create(width, height);
  if (!fill) return;
  const RECT all = {0, 0, width, height};
  const UniqueBrush brush(CreateSolidBrush(TranslateColor(color)));
  FillRect(fill->Dc(), &all, brush.Get());
  const BLENDFUNCTION opaque = {AC_SRC_OVER, 0, 255, 0};
  // GDI's own name for the alpha blend: the one in msimg32 only calls it.
  GdiAlphaBlend(target, x, y, width, height, fill->Dc(), 0, 0, width, height, opaque);
}

void SimpleHighlight(HDC target, int x, int y, int width, int height, Color light, Color base) {
  if (IsHighContrast()) {
    SolidFill(target, x, y, width, height, base);
    return;
  }
  light = TranslateColor(light);
  base = TranslateColor(base);
  const FramePens pens = MakeFramePens(light, base);
  const Color middle = Blend(base, light, 25);
  const UniqueBrush column = MakeColumnBrush(height, [&](int row) {
    return Blend(base, middle, RoundedOpacity(255.0 * (row + 1) / height));
  });
  DrawOnCopy(target, x, y, width, height, [&](HDC copy) {
    RoundedRectangle(copy, pens.outer.Get(), GetStockObject(WHITE_BRUSH), {0, 0, width, height}, 1);
    RoundedRectangle(copy, pens.inner.Get(), column.Get(), {0, 0, width - 1, height}, 1);
  });
}

void RichHighlight(HDC target, int x, int y, int width, int height, Color light, Color base) {
  if (IsHighContrast()) {
    SolidFill(target, x, y, width, height, base);
    return;
  }
  light = TranslateColor(light);
  base = TranslateColor(base);
  const FramePens pens = MakeFramePens(light, base);
  const Color upper = Blend(base, light, 25);
  const Color lower = Blend(base, light, 155);
  const double third = height / 3.0;
  const int turn = static_cast<int>(RoundHalfToEven(third));
  const UniqueBrush column = MakeColumnBrush(height, [&](int row) {
    if (row < turn) return Blend(lower, upper, RoundedOpacity(255.0 * row / third));
    return Blend(lower, base, RoundedOpacity(255.0 * row / (height - third)));
  });
  const POINT corners[] = {{0, 0}, {width - 1, 0}, {width - 1, height - 1}, {0, height - 1}};
  const POINT insets[] = {{1, 1}, {width - 2, 1}, {width - 2, height - 2}, {1, height - 2}};
  DrawOnCopy(target, x, y, width, height, [&](HDC copy) {
    RoundedRectangle(copy, pens.outer.Get(), GetStockObject(WHITE_BRUSH), {0, 0, width, height}, 3);
    RoundedRectangle(copy, pens.inner.Get(), column.Get(), {2, 2, width - 2, height - 2}, 3);
    for (const POINT& corner : corners) {
      SetPixelV(copy, corner.x, corner.y, GetPixel(target, x + corner.x, y + corner.y));
    }
    for (const POINT& inset : insets) SetPixelV(copy, inset.x, inset.y, base);
  });
}

}  // namespace tellurvane::ModTheme

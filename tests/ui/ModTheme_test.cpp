#include "ui/ModTheme.h"

#include <gtest/gtest.h>

#include "Canvas.h"
#include "tests/support/FailingImport.h"

namespace tellurvane {
namespace {

constexpr Color kGround = Rgb(255, 0, 255);
constexpr int kAbsurd = 1 << 20;

struct ThemeCanvas : Canvas {
  ThemeCanvas() : Canvas(80, 60, kGround) {}
};

// The colours of the highlights: red falls from light to base, green rises, blue stays.
constexpr Color kLight = Rgb(255, 0, 100);
constexpr Color kBase = Rgb(0, 255, 100);
// A tenth part of black on the base: 255 * 245 / 255.
constexpr Color kOuterPen = Rgb(0, 245, 96);
// A tenth part of the light colour on white: 100 gives (255 * 245 + 100 * 10) / 255 = 248.9.
constexpr Color kInnerPen = Rgb(255, 245, 249);

// Each routine that draws a box, beside each other.
void DrawAll(HDC target, Color light, Color base) {
  ModTheme::FramedBox(target, 0, 0, 20, 20, base);
  ModTheme::SolidFill(target, 20, 0, 20, 20, light);
  ModTheme::SimpleHighlight(target, 0, 20, 20, 20, light, base);
  ModTheme::RichHighlight(target, 20, 20, 20, 20, light, base);
}

TEST(ModThemeTest, DrawsABoxInItsFrame) {
  const ThemeCanvas canvas;
  ModTheme::FramedBox(canvas.Dc(), 10, 5, 30, 20, Rgb(0, 0, 255));
  const Color inside = Rgb(155, 155, 255);
  for (const auto& [x, y] : {std::pair(10, 5), {39, 5}, {10, 24}, {39, 24}, {25, 5}, {10, 12}}) {
    EXPECT_EQ(canvas.At(x, y), Rgb(0, 0, 255)) << x << ", " << y;
  }
  for (const auto& [x, y] : {std::pair(11, 6), {38, 6}, {11, 23}, {38, 23}, {25, 12}}) {
    EXPECT_EQ(canvas.At(x, y), inside) << x << ", " << y;
  }
  EXPECT_TRUE(canvas.FindInk().IsWithin(10, 5, 30, 20));
}

TEST(ModThemeTest, FillsARectangleOpaquely) {
  const ThemeCanvas canvas;
  ModTheme::SolidFill(canvas.Dc(), 10, 5, 30, 20, Rgb(1, 2, 3));
  for (int y = 5; y < 25; ++y) {
    for (int x = 10; x < 40; ++x) ASSERT_EQ(canvas.At(x, y), Rgb(1, 2, 3)) << x << ", " << y;
  }
  EXPECT_TRUE(canvas.FindInk().IsWithin(10, 5, 30, 20));
}

TEST(ModThemeTest, DrawsNothingWithoutASizeOrWithoutMemory) {
  const ThemeCanvas canvas;
  for (const auto& [width, height] : {std::pair(0, 10), {10, 0}, {-5, 10}, {10, -5}}) {
    ModTheme::SolidFill(canvas.Dc(), 10, 5, width, height, kBlack);
    ModTheme::SimpleHighlight(canvas.Dc(), 10, 5, width, height, kLight, kBase);
    ModTheme::RichHighlight(canvas.Dc(), 10, 5, width, height, kLight, kBase);
  }
  EXPECT_FALSE(MemoryContext::Create(kAbsurd, kAbsurd));
  ModTheme::SolidFill(canvas.Dc(), 0, 0, kAbsurd, kAbsurd, kBlack);
  EXPECT_EQ(canvas.FindInk().pixels, 0);
}

TEST(ModThemeTest, TakesSystemColorsEverywhere) {
  constexpr Color kReference = 0x80000000U | COLOR_HIGHLIGHT;
  const Color highlight = GetSysColor(COLOR_HIGHLIGHT);
  const ThemeCanvas byReference;
  const ThemeCanvas byValue;
  DrawAll(byReference.Dc(), kReference, kReference);
  DrawAll(byValue.Dc(), highlight, highlight);
  EXPECT_EQ(byReference.Pixels(), byValue.Pixels());
}

TEST(ModThemeTest, SimpleHighlightRunsFromNearTheMiddleColorToTheBase) {
  const ThemeCanvas canvas;
  ModTheme::SimpleHighlight(canvas.Dc(), 4, 3, 20, 10, kLight, kBase);
  // The middle colour is 230, 25, 100. Row k of 10 has the opacity 25.5 k, halves to even: 26, 51,
  // 76, 102, 128, 153, 178, 204, 230, 255. The frame covers the first and the last.
  const int reds[] = {184, 161, 138, 115, 92, 69, 46, 23};
  for (int row = 0; row < 8; ++row) {
    EXPECT_EQ(canvas.At(12, 4 + row), Rgb(reds[row], 255 - reds[row], 100)) << row;
  }
  for (int y = 4; y < 12; ++y) {
    EXPECT_EQ(canvas.At(4, y), kInnerPen) << y;
    EXPECT_EQ(canvas.At(22, y), kInnerPen) << y;
    EXPECT_EQ(canvas.At(23, y), kOuterPen) << y;
  }
  for (int x = 5; x < 22; ++x) {
    EXPECT_EQ(canvas.At(x, 3), kInnerPen) << x;
    EXPECT_EQ(canvas.At(x, 12), kInnerPen) << x;
  }
  EXPECT_TRUE(canvas.FindInk().IsWithin(4, 3, 20, 10));
}

struct Point {
  int x, y;
  Color color;
};

void ExpectColors(const Canvas& canvas, const std::vector<Point>& points) {
  for (const Point& point : points) {
    EXPECT_EQ(canvas.At(point.x, point.y), point.color) << point.x << ", " << point.y;
  }
}

TEST(ModThemeTest, RichHighlightHasAGlossInItsUpperThird) {
  // The colours to blend are 230, 25, 100 and 100, 155, 100. The frames cover the first and the
  // last three rows. Row 3 of 12 has the opacity 191 (255 * 3 / 4); rows 4 to 8 have 255 k / 8:
  // 128, 159, 191, 223, 255.
  const ThemeCanvas canvas;
  ModTheme::RichHighlight(canvas.Dc(), 0, 0, 20, 12, kLight, kBase);
  ExpectColors(canvas, {{8, 3, Rgb(133, 122, 100)},
                        {8, 4, Rgb(50, 205, 100)},
                        {8, 5, Rgb(62, 193, 100)},
                        {8, 6, Rgb(75, 180, 100)},
                        {8, 7, Rgb(87, 168, 100)},
                        {8, 8, Rgb(100, 155, 100)}});
  // Of 30 rows, row 26: 255 * 26 / 20 = 331.5, halves to even, 332. The rounded third belongs to
  // the lower part: 255 * 10 / 20 = 127.5.
  ModTheme::RichHighlight(canvas.Dc(), 0, 20, 20, 30, kLight, kBase);
  ExpectColors(
      canvas,
      {{10, 46, Rgb(130, 125, 100)}, {10, 30, Rgb(50, 205, 100)}, {10, 29, Rgb(113, 142, 100)}});
}

TEST(ModThemeTest, RichHighlightHasTwoFramesAndRoundedCorners) {
  const ThemeCanvas canvas;
  ModTheme::RichHighlight(canvas.Dc(), 4, 3, 20, 12, kLight, kBase);
  ExpectColors(canvas, {{12, 3, kOuterPen},
                        {12, 14, kOuterPen},
                        {4, 9, kOuterPen},
                        {23, 9, kOuterPen},
                        {12, 4, kWhite},
                        {5, 9, kWhite},
                        {12, 5, kInnerPen},
                        {12, 12, kInnerPen},
                        {6, 9, kInnerPen},
                        {21, 9, kInnerPen}});
  ExpectColors(canvas, {{4, 3, kGround}, {23, 3, kGround}, {23, 14, kGround}, {4, 14, kGround}});
  ExpectColors(canvas, {{5, 4, kBase}, {22, 4, kBase}, {22, 13, kBase}, {5, 13, kBase}});
  EXPECT_TRUE(canvas.FindInk().IsWithin(4, 3, 20, 12));
}

TEST(ModThemeTest, AMemoryContextIsAsLargeAsAskedForAndLikeTheDisplay) {
  const auto made = MemoryContext::Create(7, 5);
  ASSERT_TRUE(made);
  BITMAP bitmap = {};
  GetObjectW(made->Bitmap(), sizeof(bitmap), &bitmap);
  EXPECT_EQ(bitmap.bmWidth, 7);
  EXPECT_EQ(bitmap.bmHeight, 5);
  const WindowDc screen(nullptr);
  EXPECT_EQ(bitmap.bmBitsPixel, GetDeviceCaps(screen.Get(), BITSPIXEL));
  EXPECT_EQ(GetCurrentObject(made->Dc(), OBJ_BITMAP), made->Bitmap());
}

TEST(ModThemeTest, LeavesNothingBehind) {
  const ThemeCanvas canvas;
  const HGDIOBJ pen = GetCurrentObject(canvas.Dc(), OBJ_PEN);
  const HGDIOBJ brush = GetCurrentObject(canvas.Dc(), OBJ_BRUSH);
  EXPECT_EQ(LeakedBy([&] {
              DrawAll(canvas.Dc(), kLight, kBase);
              auto replaced = MemoryContext::Create(10, 10);
              replaced = MemoryContext::Create(20, 20);
              (void)MemoryContext::Create(kAbsurd, kAbsurd);
              FailingImport call({"CreateCompatibleDC"});
              call.Fail(1);
              EXPECT_FALSE(MemoryContext::Create(5, 5));
            }),
            ResourceCounts());
  EXPECT_EQ(GetCurrentObject(canvas.Dc(), OBJ_PEN), pen);
  EXPECT_EQ(GetCurrentObject(canvas.Dc(), OBJ_BRUSH), brush);
}

}  // namespace
}  // namespace tellurvane

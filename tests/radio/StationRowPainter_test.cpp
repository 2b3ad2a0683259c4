#include "radio/StationRowPainter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/GdiPlusSession.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/MemoryContext.h"
#include "ui/ModTheme.h"

namespace tellurvane {
namespace {

constexpr int kWidth = 500;
constexpr int kNameWidth = 300;

class StationRowPainterTest : public testing::Test {
 protected:
  void Paint(const StationRow& station, int nameWidth = kNameWidth) {
    PaintStationRow(row, station, nameWidth);
  }

  Color At(int x, int y) const { return PixelOf(picture.Dc(), x, y); }
  std::vector<Color> Pixels(int left, int right) const {
    return PixelsIn(picture.Dc(), {left, 0, right, kStationRowHeight});
  }
  int Blue(int left, int right) const {
    return static_cast<int>(std::ranges::count_if(Pixels(left, right), [](Color color) {
      return (color & 0xFF) < 80 && (color >> 8 & 0xFF) < 80 && color >> 16 > 200;
    }));
  }
  // Edges are grey, and brackets are nothing else.
  int Black(int left, int right) const {
    return static_cast<int>(std::ranges::count_if(Pixels(left, right), [](Color color) {
      const int red = static_cast<int>(color & 0xFF);
      const int green = static_cast<int>(color >> 8 & 0xFF);
      const int blue = static_cast<int>(color >> 16);
      return red < 170 && std::abs(red - green) < 30 && std::abs(red - blue) < 30;
    }));
  }
  std::vector<Color> PictureOf(const std::wstring& name) {
    Paint({.name = name});
    return Pixels(0, kNameWidth);
  }

  GdiPlusSession gdiPlus;
  MemoryContext picture = MemoryContext::Create(kWidth, kStationRowHeight).value();
  RowPicture row = {.context = picture.Dc(), .width = kWidth, .height = kStationRowHeight};
};

TEST_F(StationRowPainterTest, WritesTheNameInBlueAndTypeAndBitRateInBlack) {
  Paint({});
  const int brackets = Black(kNameWidth, kWidth);
  Paint({.type = L"MP3"});
  const int type = Black(kNameWidth, kWidth);
  Paint({.name = L"爵士 Jazz", .type = L"MP3", .bitRate = L"128 kbps"});
  EXPECT_GT(brackets, 10);
  EXPECT_GT(type, brackets);
  EXPECT_GT(Black(kNameWidth, kWidth), type);
  EXPECT_EQ(Black(0, kNameWidth), 0);
  EXPECT_GT(Blue(0, kNameWidth), 50);
  EXPECT_EQ(Blue(kNameWidth, kWidth), 0);
  EXPECT_GT(std::ranges::count(Pixels(0, kNameWidth), Rgb(0xF5, 0xDE, 0xB3)), 20) << "the glow";
}

TEST_F(StationRowPainterTest, PaintsABandOnGrey) {
  for (const bool isOdd : {false, true}) {
    row.isOdd = isOdd;
    Paint({});
    const Color band = isOdd ? 0xF3F3F3 : 0xF7F7F7;
    for (const int x : {0, 3, kNameWidth - 1, kWidth - 1}) {
      EXPECT_EQ(At(x, 0), 0xEBEBEBU) << x;
      EXPECT_EQ(At(x, 1), band) << x;
      EXPECT_EQ(At(x, kStationRowHeight - 2), band) << x;
      EXPECT_EQ(At(x, kStationRowHeight - 1), 0xEBEBEBU) << x;
    }
  }
}

TEST_F(StationRowPainterTest, PaintsTheSelectionAsTheThemesBar) {
  const MemoryContext bar = MemoryContext::Create(kWidth, kStationRowHeight).value();
  ModTheme::SolidFill(bar.Dc(), 0, 0, kWidth, kStationRowHeight, 0xEBEBEB);
  ModTheme::SimpleHighlight(bar.Dc(), 0, 0, kWidth, kStationRowHeight, kWhite, 0xE0D080);
  row.isSelected = row.isOdd = true;
  Paint({});
  for (int y = 0; y < kStationRowHeight; ++y) EXPECT_EQ(At(2, y), PixelOf(bar.Dc(), 2, y)) << y;
}

TEST_F(StationRowPainterTest, CutsLongTextsToTheirColumns) {
  Paint({.name = std::wstring(500, L'長')});
  EXPECT_EQ(Blue(kNameWidth - 5, kWidth), 0);
  EXPECT_GT(Blue(kNameWidth - 60, kNameWidth - 5), 20) << "as far as they fit";
  Paint({.type = std::wstring(500, L'W')});
  EXPECT_EQ(Black(kWidth - 5, kWidth), 0);
  constexpr int kNarrow = 12;  // narrower than the ellipsis
  Paint({.name = L"長長"}, kNarrow);
  EXPECT_EQ(Blue(kNarrow, kWidth), 0);
  const std::wstring fitting =
      ModTheme::FittingText(picture.Dc(), std::wstring(100, L'長'), kNameWidth - 12, {.size = 16});
  ASSERT_TRUE(fitting.ends_with(L"長…"));
  EXPECT_EQ(PictureOf(std::wstring(100, L'長')), PictureOf(fitting));
}

TEST_F(StationRowPainterTest, WritesInOneLine) {
  EXPECT_EQ(PictureOf(L"a\tb\r\nc"), PictureOf(L"a b  c"));
}

TEST_F(StationRowPainterTest, TakesAnyTextAndAnyWidth) {
  for (const int nameWidth : {-1, 0, 3, kWidth, 10 * kWidth}) {
    Paint({.name = L"a\tb\r\nc", .type = L"\xD800", .bitRate = std::wstring(1, L'\0')}, nameWidth);
    EXPECT_EQ(At(0, 0), 0xEBEBEBU) << nameWidth;
  }
}

}  // namespace
}  // namespace tellurvane

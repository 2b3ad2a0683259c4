#include "radio/StationRowPainter.h"

#include <gtest/gtest.h>

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

  // How many pixels between two columns are of a kind.
  template <typename Kind>
  int Count(int left, int right, Kind isOfTheKind) const {
    int count = 0;
    for (int y = 0; y < kStationRowHeight; ++y) {
      for (int x = left; x < right; ++x) count += isOfTheKind(PixelOf(picture.Dc(), x, y)) ? 1 : 0;
    }
    return count;
  }
  static int Red(Color color) { return static_cast<int>(color & 0xFF); }
  static int Green(Color color) { return static_cast<int>((color >> 8) & 0xFF); }
  static int Blue(Color color) { return static_cast<int>((color >> 16) & 0xFF); }
  static bool IsBlue(Color color) {
    return Red(color) < 80 && Green(color) < 80 && Blue(color) > 200;
  }
  // Edges are grey; brackets are nothing else.
  static bool IsBlack(Color color) {
    return Red(color) < 170 && std::abs(Red(color) - Green(color)) < 30 &&
           std::abs(Red(color) - Blue(color)) < 30;
  }

  // The colours of a row with that name.
  std::vector<Color> PictureOf(const std::wstring& name) {
    Paint({name, L"", L"", L"", L"", L""});
    std::vector<Color> colors;
    Count(0, kNameWidth, [&](Color color) {
      colors.push_back(color);
      return true;
    });
    return colors;
  }

  GdiPlusSession gdiPlus;
  MemoryContext picture = MemoryContext::Create(kWidth, kStationRowHeight).value();
  RowPicture row = {.context = picture.Dc(), .width = kWidth, .height = kStationRowHeight};
};

const StationRow kStation = {L"爵士 Jazz", L"MP3", L"128 kbps", L"u", L"l", L""};
const StationRow kEmpty;

TEST_F(StationRowPainterTest, WritesTheNameInBlueAndTheRestInBlack) {
  Paint(kStation);
  EXPECT_GT(Count(0, kNameWidth, IsBlue), 50);
  EXPECT_EQ(Count(0, kNameWidth, IsBlack), 0);
  EXPECT_GT(Count(kNameWidth, kWidth, IsBlack), 50);
  EXPECT_EQ(Count(kNameWidth, kWidth, IsBlue), 0);
}

TEST_F(StationRowPainterTest, PutsBracketsRoundTheTypeBeforeTheBitRate) {
  Paint(kEmpty);
  const int brackets = Count(kNameWidth, kWidth, IsBlack);
  EXPECT_GT(brackets, 10);
  Paint({L"", L"MP3", L"", L"", L"", L""});
  const int type = Count(kNameWidth, kWidth, IsBlack);
  EXPECT_GT(type, brackets);
  Paint({L"", L"MP3", L"128 kbps", L"", L"", L""});
  EXPECT_GT(Count(kNameWidth, kWidth, IsBlack), type);
  EXPECT_EQ(Count(0, kNameWidth, IsBlack), 0);
}

TEST_F(StationRowPainterTest, LiesInABandOnGrey) {
  for (const bool isOdd : {false, true}) {
    row.isOdd = isOdd;
    Paint(kEmpty);
    const Color band = isOdd ? 0xF3F3F3 : 0xF7F7F7;
    for (const int x : {0, 3, kNameWidth - 1, kWidth - 1}) {
      EXPECT_EQ(PixelOf(picture.Dc(), x, 0), 0xEBEBEBU) << x;
      EXPECT_EQ(PixelOf(picture.Dc(), x, 1), band) << x;
      EXPECT_EQ(PixelOf(picture.Dc(), x, kStationRowHeight - 2), band) << x;
      EXPECT_EQ(PixelOf(picture.Dc(), x, kStationRowHeight - 1), 0xEBEBEBU) << x;
    }
  }
}

TEST_F(StationRowPainterTest, TheSelectionIsTheThemesBarInItsColour) {
  const MemoryContext bar = MemoryContext::Create(kWidth, kStationRowHeight).value();
  ModTheme::SolidFill(bar.Dc(), 0, 0, kWidth, kStationRowHeight, 0xEBEBEB);
  ModTheme::SimpleHighlight(bar.Dc(), 0, 0, kWidth, kStationRowHeight, kWhite, 0xE0D080);
  for (const bool isOdd : {false, true}) {
    row.isSelected = true;
    row.isOdd = isOdd;
    Paint(kEmpty);
    for (int y = 0; y < kStationRowHeight; ++y) {
      EXPECT_EQ(PixelOf(picture.Dc(), 2, y), PixelOf(bar.Dc(), 2, y)) << y;
      EXPECT_EQ(PixelOf(picture.Dc(), kNameWidth - 8, y), PixelOf(bar.Dc(), kNameWidth - 8, y))
          << y;
    }
  }
  // Red in the low byte: a light blue.
  const Color low = PixelOf(picture.Dc(), 20, kStationRowHeight - 4);
  EXPECT_GT(Blue(low), Red(low) + 20);
}

TEST_F(StationRowPainterTest, ALongNameEndsBeforeTheTypeAndALongTypeBeforeTheEdge) {
  Paint({std::wstring(500, L'長'), L"", L"", L"", L"", L""});
  EXPECT_EQ(Count(kNameWidth - 5, kWidth, IsBlue), 0);
  EXPECT_GT(Count(kNameWidth - 60, kNameWidth - 5, IsBlue), 20) << "as much as fits";
  constexpr int kNarrow = 12;
  Paint({L"長長", L"", L"", L"", L"", L""}, kNarrow);
  EXPECT_EQ(Count(kNarrow, kWidth, IsBlue), 0) << "narrower than the ellipsis";
  Paint({L"", std::wstring(500, L'W'), L"", L"", L"", L""});
  EXPECT_EQ(Count(kWidth - 5, kWidth, IsBlack), 0);
  EXPECT_GT(Count(kWidth - 60, kWidth - 5, IsBlack), 20);
}

TEST_F(StationRowPainterTest, CutsWhatDoesNotFitAtAnEllipsis) {
  const std::wstring fitting =
      ModTheme::FittingText(picture.Dc(), std::wstring(100, L'長'), kNameWidth - 12, {.size = 16});
  ASSERT_TRUE(fitting.ends_with(L"長…"));
  EXPECT_EQ(PictureOf(std::wstring(100, L'長')), PictureOf(fitting));
  EXPECT_NE(PictureOf(std::wstring(100, L'長')), PictureOf(fitting.substr(0, fitting.size() - 1)));
}

TEST_F(StationRowPainterTest, WritesInOneLine) {
  EXPECT_EQ(PictureOf(L"a\tb\r\nc"), PictureOf(L"a b  c"));
}

TEST_F(StationRowPainterTest, TakesAnyTextAndAnyWidth) {
  for (const int nameWidth : {-1, 0, 3, kWidth, 10 * kWidth}) {
    Paint({L"a\tb\r\nc", L"\xD800", std::wstring(1, L'\0'), L"", L"", L""}, nameWidth);
    EXPECT_EQ(PixelOf(picture.Dc(), 0, 0), 0xEBEBEBU) << nameWidth;
  }
}

}  // namespace
}  // namespace tellurvane

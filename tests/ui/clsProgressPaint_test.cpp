#include <algorithm>

#include "SliderTestSupport.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

// Worked out by hand: the accent laid on white with 150 of 255, and that laid on white with 100.
constexpr Color kGoldBar = Rgb(226, 196, 105);
constexpr Color kGoldInside = Rgb(244, 232, 196);
constexpr Color kGreyBar = Rgb(194, 194, 194);
constexpr Color kGreyInside = Rgb(231, 231, 231);
constexpr Color kGoldAccent = Rgb(206, 154, 0);
constexpr Color kIndigo = Rgb(0x4B, 0x00, 0x82);

class SliderPaintTest : public SliderTest {
 protected:
  Color At(int x, int y) const { return PixelOf(host.Dc(), x, y); }

  struct Point {
    int x, y;
    Color color;
  };
  void ExpectColors(const std::vector<Point>& points) const {
    for (const Point& point : points) {
      EXPECT_EQ(At(point.x, point.y), point.color) << point.x << ", " << point.y;
    }
  }

  // Whether there is text between two columns of the bar.
  bool HasText(int left, int right) const {
    return std::ranges::any_of(PixelsIn(host.Dc(), {left, 1, right, 12}), [](Color color) {
      return color != kGoldInside && color != kGoldBar;
    });
  }
};

TEST_F(SliderPaintTest, TheTrackIsAFramedBoxBelowTheInset) {
  ExpectColors({{0, 0, kGoldBar}, {64, 0, kGoldBar}, {0, 12, kGoldBar}, {64, 12, kGoldBar}});
  ExpectColors({{1, 1, kGoldInside}, {63, 11, kGoldInside}, {65, 0, kWhite}, {0, 13, kWhite}});
  slider.ProgressHeightDelta(8);
  EXPECT_EQ(slider.ProgressHeightDelta(), 8);
  ExpectColors({{30, 2, kWhite}, {30, 3, kGoldBar}, {30, 4, kGoldInside}});
  ExpectColors({{30, 12, kGoldBar}, {30, 13, kWhite}});
}

TEST_F(SliderPaintTest, IsPaintedAtOnceAndLeavesItsHostAtItsEnd) {
  const size_t blocks = LiveSubclassBlocks();
  PictureBox other;
  other.Create({.parent = form.hwnd(), .width = 70, .height = 18});
  {
    clsProgress brief;
    brief.TargetPictureBox(other);
    brief.Create();
    EXPECT_EQ(PixelOf(other.Dc(), 0, 0), kGoldBar);
  }
  EXPECT_FALSE(other.Paint || other.MouseDown || other.KeyDown);
  SendMouse(other.hwnd(), WM_LBUTTONDOWN, 20, 5, MK_LBUTTON);
  EXPECT_EQ(LiveSubclassBlocks(), blocks);
}

TEST_F(SliderPaintTest, FillIsInProportionToTheValue) {
  slider.Value(25);
  ExpectColors({{1, 1, kGoldBar}, {16, 11, kGoldBar}, {17, 6, kGoldInside}});
  slider.Max(50);
  ExpectColors({{32, 6, kGoldBar}, {33, 6, kGoldInside}});
  slider.Max(200);
  host.Move(kLeft, kTop, 240, 18);
  slider.Value(100);
  ExpectColors({{117, 6, kGoldBar}, {118, 6, kGoldInside}, {235, 6, kWhite}});
}

TEST_F(SliderPaintTest, ANewValueIsOnTheScreenWhenItIsReported) {
  const WindowDc screen(host.hwnd());
  Color seen = 0;
  slider.PositionSet = [&](double, double) { seen = PixelOf(screen.Get(), 60, 6); };
  slider.PositionSetByMouse = [&](double) { seen = PixelOf(screen.Get(), 60, 6); };
  slider.Value(100);
  EXPECT_EQ(seen, kGoldBar);
  slider.ValHit(0);
  EXPECT_EQ(seen, kGoldInside);
}

TEST_F(SliderPaintTest, IsGreyWhenDisabledAndFramedInIndigoWhenFocused) {
  slider.Value(50);
  host.Enabled(false);
  ExpectColors({{0, 0, kGreyBar}, {32, 6, kGreyBar}, {33, 6, kGreyInside}, {64, 12, kGreyBar}});
  slider.PaintMe();
  ExpectColors({{0, 0, kGoldBar}});
  slider.PaintDef();
  ExpectColors({{0, 0, kGreyBar}});
  host.Enabled(true);
  ExpectColors({{0, 0, kGoldBar}});
  host.SetFocus();
  ExpectColors({{0, 0, kIndigo}, {64, 12, kIndigo}, {63, 11, kGoldInside}});
  form.SetFocus();
  ExpectColors({{0, 0, kGoldBar}});
}

TEST_F(SliderPaintTest, BarColourIsMixedWithTheHostsBackColour) {
  slider.BackColor(kBlack);
  // 206 x 150 / 255, 154 x 150 / 255.
  EXPECT_EQ(At(0, 0), Rgb(121, 91, 0));
  EXPECT_EQ(At(69, 17), kBlack);
  constexpr Color kReference = 0x80000000U | COLOR_HIGHLIGHT;
  const Color ground = GetSysColor(COLOR_HIGHLIGHT);
  host.BackColor(kReference);
  EXPECT_EQ(host.BackColor(), kReference);
  EXPECT_EQ(At(0, 0), Blend(kGoldAccent, ground, 150));
  EXPECT_EQ(At(69, 17), ground);
}

TEST_F(SliderPaintTest, PostRenderDrawsOverTheBarAndKnowsTheEnabledState) {
  std::vector<bool> states;
  slider.PostRender = [&](bool isEnabled) {
    states.push_back(isEnabled);
    slider.text(L"");  // no repaint inside a repaint
    SetPixelV(host.Dc(), 30, 6, Rgb(1, 2, 3));
  };
  slider.Refresh();
  EXPECT_EQ(At(30, 6), Rgb(1, 2, 3));
  host.Enabled(false);
  EXPECT_EQ(states, (std::vector<bool>{true, false}));
  const WindowDc screen(host.hwnd());
  EXPECT_EQ(PixelOf(screen.Get(), 30, 6), Rgb(1, 2, 3));
}

TEST_F(SliderPaintTest, TheCaptionIsInTheBarsMiddle) {
  slider.text(L"MMM");
  const int width = slider.TextWidth(L"MMM");
  const int left = (65 - width) / 2;
  const int right = left + width;
  EXPECT_TRUE(HasText(left, left + width / 3));
  EXPECT_TRUE(HasText(right - width / 3, right));
  EXPECT_FALSE(HasText(1, left - 1));
  EXPECT_FALSE(HasText(right + 1, 64));
  slider.FontSize(5);
  EXPECT_FALSE(HasText(1, 18));
  slider.text(L"");
  EXPECT_FALSE(HasText(1, 64));
  slider.text(L"████");
  const Color enabled = At(32, 6);
  slider.Enabled(false);
  EXPECT_GT(At(32, 6) & 0xFF, (enabled & 0xFF) + 40) << "paler";
}

TEST_F(SliderPaintTest, PrintTextWritesInTheAskedColour) {
  constexpr Color kInk = Rgb(0, 0, 255);
  slider.PostRender = [&](bool) { slider.PrintText(L"中文 %", kInk); };
  slider.Refresh();
  // Edges are smoothed: more blue than red, which neither the bar nor the track has.
  const auto isBlue = [](Color color) { return GetBValue(color) > GetRValue(color) + 30; };
  EXPECT_GT(std::ranges::count_if(PixelsIn(host.Dc(), {0, 0, 65, 13}), isBlue), 20);
  slider.PostRender = [&](bool) { slider.PrintText(L"████", 0x80000000U | COLOR_HIGHLIGHT); };
  slider.Refresh();
  EXPECT_EQ(At(32, 6), GetSysColor(COLOR_HIGHLIGHT));
}

TEST_F(SliderPaintTest, PaleTextOnTheFilledPartHasAGlowThatStaysOnTheBar) {
  slider.PostRender = [&](bool) { slider.PrintText(L"88 %", Rgb(151, 151, 151)); };
  slider.Value(100);
  EXPECT_GT(std::ranges::count(PixelsIn(host.Dc(), {1, 1, 64, 12}), kWhite), 10);
  slider.BackColor(kBlack);
  slider.FontSize(40);
  for (int y = 13; y < 18; ++y) {
    for (int x = 0; x < 70; ++x) EXPECT_LT(At(x, y) & 0xFF, 180U) << x << ", " << y;
  }
}

}  // namespace
}  // namespace tellurvane

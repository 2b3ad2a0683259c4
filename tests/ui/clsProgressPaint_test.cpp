// The slider's picture, pixel by pixel.
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

class SliderPaintTest : public SliderTest {
 protected:
  Color At(int x, int y) const { return PixelOf(host.Dc(), x, y); }

  // Whether any pixel of the box is not of the two colours.
  bool HasInk(const RECT& box, Color first, Color second) const {
    for (int y = static_cast<int>(box.top); y < box.bottom; ++y) {
      for (int x = static_cast<int>(box.left); x < box.right; ++x) {
        if (At(x, y) != first && At(x, y) != second) return true;
      }
    }
    return false;
  }
};

TEST_F(SliderPaintTest, TrackIsAFramedBoxInTheBarColour) {
  // Columns 0 to 64 and rows 0 to 12 of a host of 70 x 18.
  for (const POINT& frame : {POINT{0, 0}, {64, 0}, {0, 12}, {64, 12}, {30, 0}, {30, 12}, {0, 6}}) {
    EXPECT_EQ(At(frame.x, frame.y), kGoldBar) << frame.x << ", " << frame.y;
  }
  for (const POINT& inside : {POINT{1, 1}, {63, 1}, {1, 11}, {63, 11}, {30, 6}}) {
    EXPECT_EQ(At(inside.x, inside.y), kGoldInside) << inside.x << ", " << inside.y;
  }
  for (const POINT& outside : {POINT{65, 0}, {65, 12}, {69, 6}, {0, 13}, {64, 13}, {69, 17}}) {
    EXPECT_EQ(At(outside.x, outside.y), kWhite) << outside.x << ", " << outside.y;
  }
}

TEST_F(SliderPaintTest, FillIsInProportionToTheValue) {
  struct Row {
    double value;
    int columns;  // of the 63 inside the frame
  };
  for (const Row& row :
       {Row{0, 0}, Row{1, 1}, Row{25, 16}, Row{50, 32}, Row{99, 62}, Row{100, 63}}) {
    slider.Value(row.value);
    for (const int y : {1, 6, 11}) {
      for (int x = 1; x <= 63; ++x) {
        EXPECT_EQ(At(x, y), x <= row.columns ? kGoldBar : kGoldInside)
            << row.value << " at " << x << ", " << y;
      }
    }
  }
}

TEST_F(SliderPaintTest, SettingTheMaximumPaintsTheNewProportion) {
  slider.Value(50);
  EXPECT_EQ(At(40, 6), kGoldInside);
  slider.Max(50);
  EXPECT_EQ(At(40, 6), kGoldBar);
}

TEST_F(SliderPaintTest, ValueIsPaintedWhenItIsTold) {
  Color seen = 0;
  slider.PositionSet = [&](double, double) { seen = At(60, 6); };
  slider.PositionSetByMouse = [&](double) { seen = At(60, 6); };
  slider.Value(100);
  EXPECT_EQ(seen, kGoldBar);
  slider.ValHit(0);
  EXPECT_EQ(seen, kGoldInside);
}

TEST_F(SliderPaintTest, DisabledSliderIsGreyWithTheSameParts) {
  slider.Value(50);
  host.Enabled(false);
  EXPECT_EQ(At(0, 0), kGreyBar);
  EXPECT_EQ(At(32, 6), kGreyBar);
  EXPECT_EQ(At(33, 6), kGreyInside);
  EXPECT_EQ(At(64, 12), kGreyBar);
  host.Enabled(true);
  EXPECT_EQ(At(0, 0), kGoldBar);
}

TEST_F(SliderPaintTest, EitherLookMayBeAskedFor) {
  slider.PaintDef();
  EXPECT_EQ(At(0, 0), kGreyBar);
  slider.PaintMe();
  EXPECT_EQ(At(0, 0), kGoldBar);
}

TEST_F(SliderPaintTest, FocusIsShownByTheFrame) {
  form.SetFocus();
  EXPECT_EQ(At(0, 0), kGoldBar);
  host.SetFocus();
  EXPECT_EQ(At(0, 0), kGoldAccent);
  EXPECT_EQ(At(64, 12), kGoldAccent);
  EXPECT_EQ(At(30, 6), kGoldInside);
  form.SetFocus();
  EXPECT_EQ(At(0, 0), kGoldBar);
}

TEST_F(SliderPaintTest, BarColourIsMixedWithTheHostsBackColour) {
  slider.BackColor(kBlack);
  // 206 x 150 / 255, 154 x 150 / 255.
  EXPECT_EQ(At(0, 0), Rgb(121, 91, 0));
  EXPECT_EQ(At(69, 17), kBlack);
}

TEST_F(SliderPaintTest, SystemBackColourIsMixedAndShownAsTheColourItStandsFor) {
  constexpr Color kReference = 0x80000000U | COLOR_HIGHLIGHT;
  const Color ground = GetSysColor(COLOR_HIGHLIGHT);
  host.BackColor(kReference);
  EXPECT_EQ(host.BackColor(), kReference);
  EXPECT_EQ(At(0, 0), Blend(kGoldAccent, ground, 150));
  EXPECT_EQ(At(69, 17), ground);
}

TEST_F(SliderPaintTest, HeightDeltaMovesTheUpperEdgeAlone) {
  slider.ProgressHeightDelta(8);
  EXPECT_EQ(slider.ProgressHeightDelta(), 8);
  EXPECT_EQ(At(30, 2), kWhite);
  EXPECT_EQ(At(30, 3), kGoldBar);
  EXPECT_EQ(At(30, 4), kGoldInside);
  EXPECT_EQ(At(30, 12), kGoldBar);
  EXPECT_EQ(At(30, 13), kWhite);
  // Without an inset the box begins above the host.
  slider.ProgressHeightDelta(0);
  EXPECT_EQ(At(30, 0), kGoldInside);
  slider.ProgressHeightDelta(50);
  EXPECT_EQ(At(30, 6), kWhite);
}

TEST_F(SliderPaintTest, PictureReachesTheScreenAtOnce) {
  slider.Value(100);
  const WindowDc screen(host.hwnd());
  EXPECT_EQ(PixelOf(screen.Get(), 60, 6), kGoldBar);
  slider.Value(0);
  EXPECT_EQ(PixelOf(screen.Get(), 60, 6), kGoldInside);
}

TEST_F(SliderPaintTest, FollowsTheHostsSize) {
  slider.Value(100);
  host.Move(kLeft, kTop, 240, 18);
  EXPECT_EQ(At(233, 6), kGoldBar);
  EXPECT_EQ(At(235, 6), kWhite);
}

TEST_F(SliderPaintTest, PostRenderDrawsOverTheBarAndKnowsTheEnabledState) {
  std::vector<bool> states;
  slider.PostRender = [&](bool isEnabled) {
    states.push_back(isEnabled);
    SetPixelV(host.Dc(), 30, 6, Rgb(1, 2, 3));
  };
  slider.Refresh();
  EXPECT_EQ(At(30, 6), Rgb(1, 2, 3));
  host.Enabled(false);
  EXPECT_EQ(states, (std::vector<bool>{true, false}));
  const WindowDc screen(host.hwnd());
  EXPECT_EQ(PixelOf(screen.Get(), 30, 6), Rgb(1, 2, 3));
}

TEST_F(SliderPaintTest, RepaintAskedForInsidePostRenderIsNotDone) {
  int calls = 0;
  slider.PostRender = [&](bool) {
    ++calls;
    slider.text(L"x");
  };
  slider.Refresh();
  EXPECT_EQ(calls, 1);
}

TEST_F(SliderPaintTest, CaptionStandsInTheBarsMiddle) {
  slider.text(L"MMM");
  EXPECT_EQ(slider.text(), L"MMM");
  const int width = slider.TextWidth(L"MMM");
  const LONG left = (65 - width) / 2;
  const LONG right = left + width;
  EXPECT_TRUE(HasInk({left, 1, right, 12}, kGoldInside, kGoldBar));
  EXPECT_TRUE(HasInk({left, 1, left + width / 3, 12}, kGoldInside, kGoldBar));
  EXPECT_TRUE(HasInk({right - width / 3, 1, right, 12}, kGoldInside, kGoldBar));
  EXPECT_FALSE(HasInk({1, 1, left - 1, 12}, kGoldInside, kGoldBar));
  EXPECT_FALSE(HasInk({right + 1, 1, 64, 12}, kGoldInside, kGoldBar));
  slider.text(L"");
  EXPECT_FALSE(HasInk({1, 1, 64, 12}, kGoldInside, kGoldBar));
}

TEST_F(SliderPaintTest, PrintTextWritesInTheAskedColour) {
  constexpr Color kInk = Rgb(0, 0, 255);
  slider.PostRender = [&](bool) { slider.PrintText(L"中文 %", kInk); };
  slider.Refresh();
  EXPECT_TRUE(HasInk({1, 1, 64, 12}, kGoldInside, kGoldBar));
  // Edges are smoothed: more blue than red, which neither the bar nor the track has.
  int blue = 0;
  for (int y = 0; y < 13; ++y) {
    for (int x = 0; x < 65; ++x) {
      const Color color = At(x, y);
      if (GetBValue(color) > GetRValue(color) + 30) ++blue;
    }
  }
  EXPECT_GT(blue, 20);
}

TEST_F(SliderPaintTest, PaleTextOnTheFilledPartHasAGlowThatStaysOnTheBar) {
  slider.PostRender = [&](bool) { slider.PrintText(L"88 %", Rgb(151, 151, 151)); };
  slider.Value(100);
  int white = 0;
  for (int y = 1; y < 12; ++y) {
    for (int x = 1; x < 64; ++x) white += At(x, y) == kWhite ? 1 : 0;
  }
  EXPECT_GT(white, 10);
  slider.BackColor(kBlack);
  slider.FontSize(40);
  for (int y = 13; y < 18; ++y) {
    for (int x = 0; x < 70; ++x) EXPECT_LT(At(x, y) & 0xFF, 180U) << x << ", " << y;
  }
}

TEST_F(SliderPaintTest, PrintTextLeavesTheContextAsItWas) {
  const HDC context = host.Dc();
  SetTextAlign(context, TA_RIGHT);
  SetTextColor(context, Rgb(9, 8, 7));
  SetBkMode(context, OPAQUE);
  const HGDIOBJ font = GetCurrentObject(context, OBJ_FONT);
  slider.PrintText(L"88 %", kBlack);
  EXPECT_EQ(GetTextAlign(context), static_cast<UINT>(TA_RIGHT));
  EXPECT_EQ(GetTextColor(context), Rgb(9, 8, 7));
  EXPECT_EQ(GetBkMode(context), OPAQUE);
  EXPECT_EQ(GetCurrentObject(context, OBJ_FONT), font);
}

TEST_F(SliderPaintTest, CaptionIsPalerWhileDisabled) {
  slider.text(L"████");
  const Color enabled = At(32, 6);
  slider.Enabled(false);
  EXPECT_GT(At(32, 6) & 0xFF, (enabled & 0xFF) + 40);
}

TEST_F(SliderPaintTest, PrintTextTakesASystemColour) {
  slider.Value(0);
  slider.PostRender = [&](bool) { slider.PrintText(L"████", 0x80000000U | COLOR_HIGHLIGHT); };
  slider.Refresh();
  EXPECT_EQ(At(32, 6), GetSysColor(COLOR_HIGHLIGHT));
}

TEST_F(SliderPaintTest, FontSizeChangesTheCaption) {
  slider.text(L"MMM");
  slider.FontSize(5);
  const LONG left = (65 - slider.TextWidth(L"MMM")) / 2;
  EXPECT_GT(left, 18);
  EXPECT_FALSE(HasInk({1, 1, left - 1, 12}, kGoldInside, kGoldBar));
}

}  // namespace
}  // namespace tellurvane

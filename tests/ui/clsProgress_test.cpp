#include "ui/clsProgress.h"

#include "SliderTestSupport.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(SliderTest, TheValueIsClampedAndAlwaysReported) {
  for (const double asked : {101.0, -1.0, 30.0, 30.0}) slider.Value(asked);
  EXPECT_THAT(Events(),
              ElementsAre("PositionSet 100", "PositionSet 0", "PositionSet 30", "PositionSet 30"));
  for (const double asked : {250.0, -3.0, 12.5}) slider.ValHit(asked);
  EXPECT_EQ(slider.Value(), 12.5);
  EXPECT_THAT(Events(), ElementsAre("PositionSetByMouse 100", "PositionSetByMouse 0",
                                    "PositionSetByMouse 12.5"));
  slider.Max(10);
  EXPECT_EQ(slider.Value(), 10);
  EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(SliderTest, PositionSetCarriesTheValueUnderThePointer) {
  double underPointer = -1;
  slider.PositionSet = [&](double, double under) { underPointer = under; };
  slider.Value(10);
  EXPECT_EQ(underPointer, 0);
  SetCursorPos(kLeft + 35, kTop + 5);
  slider.Value(10);
  EXPECT_EQ(underPointer, 50);
}

TEST_F(SliderTest, CursorOnPosDependsOnlyOnThePointersColumn) {
  struct Row {
    int x;
    int y;
    double value;
  };
  for (const Row& row : {Row{0, 5, 0}, Row{7, 5, 10}, Row{35, 5, 50}, Row{35, 200, 50},
                         Row{69, 5, 100}, Row{70, 5, 100}, Row{71, 5, 0}, Row{-1, 5, 0}}) {
    SetCursorPos(kLeft + row.x, kTop + row.y);
    EXPECT_EQ(slider.CursorOnPos(), row.value) << row.x << ", " << row.y;
  }
  SetCursorPos(kLeft, kTop);
  host.Move(kLeft, kTop, 0, 18);
  EXPECT_EQ(slider.CursorOnPos(), 0) << "without width";
}

TEST_F(SliderTest, SharesStateWithItsHost) {
  EXPECT_EQ(slider.hwnd(), host.hwnd());
  EXPECT_TRUE(slider.Enabled());
  slider.Enabled(false);
  EXPECT_FALSE(host.Enabled());
  host.Enabled(true);
  EXPECT_TRUE(slider.Enabled());
  slider.BackColor(Rgb(10, 20, 30));
  EXPECT_EQ(host.BackColor(), Rgb(10, 20, 30));
  slider.BackColor(0x80000000 | COLOR_BTNFACE);
  EXPECT_EQ(slider.BackColor(), GetSysColor(COLOR_BTNFACE));
  host.Move(kLeft, kTop, 240, 18);
  EXPECT_THAT(Events(), ElementsAre("Resize"));
}

TEST_F(SliderTest, MeasuresTextInItsFontSize) {
  const int width = slider.TextWidth(L"37.25 %");
  const int height = slider.TextHeight(L"37.25 %");
  EXPECT_GT(width, 20);
  EXPECT_GT(height, 8);
  EXPECT_EQ(slider.TextWidth(L""), 0);
  EXPECT_GT(slider.TextWidth(L"37.25 %音樂"), width);
  slider.FontSize(18);
  EXPECT_NEAR(slider.TextWidth(L"37.25 %"), 2 * width, 8);
  EXPECT_NEAR(slider.TextHeight(L"37.25 %"), 2 * height, 4);
  slider.FontSize(-5);
  EXPECT_EQ(slider.FontSize(), 1);
}

TEST_F(SliderTest, CreateNeedsAHostThatIsNoSliderYet) {
  EXPECT_THROW(slider.Create(), SubclassError);
  clsProgress alone;
  EXPECT_THROW(alone.Create(), SubclassError);
}

TEST_F(SliderTest, LeavesItsHostForAnotherOne) {
  const size_t blocks = LiveSubclassBlocks();
  PictureBox second;
  second.Create({.parent = form.hwnd(), .width = 100, .height = 18});
  slider.TargetPictureBox(second);
  slider.Create();
  EXPECT_EQ(slider.hwnd(), second.hwnd());
  EXPECT_FALSE(host.Paint);
  EXPECT_FALSE(host.KeyDown);
  Press(35);
  EXPECT_THAT(Events(), IsEmpty());
  EXPECT_EQ(LiveSubclassBlocks(), blocks);
  SendMouse(second.hwnd(), WM_LBUTTONDOWN, 20, 5, MK_LBUTTON);
  EXPECT_EQ(slider.Value(), 20);
  slider.TargetPictureBox(host);
}

TEST_F(SliderTest, SurvivesTheEndOfItsWindow) {
  slider.Value(40);
  form.Unload();
  EXPECT_EQ(slider.hwnd(), nullptr);
  slider.Value(60);
  EXPECT_EQ(slider.Value(), 60);
}

}  // namespace
}  // namespace tellurvane

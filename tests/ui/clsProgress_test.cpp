#include "ui/clsProgress.h"

#include "SliderTestSupport.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(SliderTest, MaxOfZeroOrLessIsOne) {
  for (const double asked : {0.0, -1.0, -100.0, 0.5}) {
    slider.Max(100);
    slider.Max(asked);
    EXPECT_EQ(slider.Max(), 1) << asked;
  }
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(SliderTest, ValueBeyondTheEndsIsClampedAndStillTold) {
  slider.Value(101);
  EXPECT_EQ(slider.Value(), 100);
  EXPECT_THAT(Told(), ElementsAre("PositionSet 100"));
  slider.Value(-1);
  EXPECT_EQ(slider.Value(), 0);
  EXPECT_THAT(Told(), ElementsAre("PositionSet 0"));
}

TEST_F(SliderTest, ValueIsToldWhenItStaysTheSame) {
  slider.Value(30);
  slider.Value(30);
  EXPECT_THAT(Told(), ElementsAre("PositionSet 30", "PositionSet 30"));
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

TEST_F(SliderTest, ValHitIsClampedAndToldAsTheUsersAlone) {
  slider.ValHit(250);
  EXPECT_EQ(slider.Value(), 100);
  slider.ValHit(-3);
  EXPECT_EQ(slider.Value(), 0);
  slider.ValHit(12.5);
  EXPECT_THAT(Told(), ElementsAre("PositionSetByMouse 100", "PositionSetByMouse 0",
                                  "PositionSetByMouse 12.5"));
}

TEST_F(SliderTest, SmallerMaximumTakesTheValueAlongSilently) {
  slider.Value(80);
  Told();
  slider.Max(50);
  EXPECT_EQ(slider.Value(), 50);
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(SliderTest, CursorOnPosLooksOnlyAtThePointersColumn) {
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
}

TEST_F(SliderTest, CursorOnPosIsZeroWithoutWidth) {
  SetCursorPos(kLeft, kTop);
  host.Move(kLeft, kTop, 0, 18);
  EXPECT_EQ(slider.CursorOnPos(), 0);
}

TEST_F(SliderTest, EnabledIsTheHosts) {
  EXPECT_TRUE(slider.Enabled());
  slider.Enabled(false);
  EXPECT_FALSE(IsWindowEnabled(host.hwnd()));
  host.Enabled(true);
  EXPECT_TRUE(slider.Enabled());
}

TEST_F(SliderTest, ResizeOfTheHostIsTold) {
  host.Move(kLeft, kTop, 240, 18);
  EXPECT_THAT(Told(), ElementsAre("Resize"));
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

TEST_F(SliderTest, BackColorIsTheHosts) {
  slider.BackColor(Rgb(10, 20, 30));
  EXPECT_EQ(host.BackColor(), Rgb(10, 20, 30));
  slider.BackColor(0x80000000 | COLOR_BTNFACE);
  EXPECT_EQ(slider.BackColor(), GetSysColor(COLOR_BTNFACE));
}

TEST_F(SliderTest, HwndIsTheHosts) {
  EXPECT_EQ(slider.hwnd(), host.hwnd());
  EXPECT_EQ(clsProgress().hwnd(), nullptr);
}

TEST_F(SliderTest, CreateTwiceIsRefused) { EXPECT_THROW(slider.Create(), SubclassError); }

TEST(SliderWithoutHostTest, CreateIsRefusedAndTheRestKeepsTheValue) {
  clsProgress slider;
  EXPECT_THROW(slider.Create(), SubclassError);
  slider.Max(50);
  slider.Value(70);
  slider.text(L"文字");
  slider.PrintText(L"文字", kBlack);
  slider.PaintMe();
  slider.PaintDef();
  slider.Enabled(true);
  EXPECT_EQ(slider.Value(), 50);
  EXPECT_EQ(slider.CursorOnPos(), 0);
  EXPECT_FALSE(slider.Enabled());
  EXPECT_FALSE(slider.MouseDriving());
}

TEST_F(SliderTest, LeavesTheHostWhenItEnds) {
  const size_t blocks = LiveSubclassBlocks();
  TestForm other;
  PictureBox box;
  PictureBoxArgs args;
  args.parent = other.hwnd();
  args.width = args.height = 20;
  box.Create(args);
  {
    clsProgress shortLived;
    shortLived.TargetPictureBox(box);
    shortLived.Create();
    EXPECT_EQ(LiveSubclassBlocks(), blocks + 1);
  }
  SendMessageW(box.hwnd(), WM_NULL, 0, 0);
  EXPECT_EQ(LiveSubclassBlocks(), blocks);
  EXPECT_FALSE(box.Paint);
  EXPECT_FALSE(box.MouseDown);
  EXPECT_FALSE(box.KeyDown);
  SendMouse(box.hwnd(), WM_LBUTTONDOWN, 3, 3, MK_LBUTTON);
}

TEST_F(SliderTest, MovesToAnotherHost) {
  PictureBox second;
  PictureBoxArgs args;
  args.parent = form.hwnd();
  args.width = 100;
  args.height = 18;
  second.Create(args);
  slider.TargetPictureBox(second);
  slider.Create();
  EXPECT_EQ(slider.hwnd(), second.hwnd());
  Press(35);
  EXPECT_THAT(Told(), IsEmpty());
  SendMouse(second.hwnd(), WM_LBUTTONDOWN, 20, 5, MK_LBUTTON);
  EXPECT_EQ(slider.Value(), 20);
  slider.TargetPictureBox(host);
}

TEST_F(SliderTest, SurvivesTheEndOfItsWindow) {
  slider.Value(40);
  form.Unload();
  EXPECT_EQ(slider.hwnd(), nullptr);
  slider.Value(60);
  slider.Refresh();
  EXPECT_EQ(slider.Value(), 60);
  EXPECT_EQ(slider.CursorOnPos(), 0);
}

TEST(SliderLeakTest, LeavesNothingBehind) {
  TestForm form;
  const size_t blocks = LiveSubclassBlocks();
  EXPECT_EQ(LeakedBy([&] {
              PictureBox host;
              host.Create({.parent = form.hwnd(), .width = 70, .height = 18});
              clsProgress slider;
              slider.TargetPictureBox(host);
              slider.PostRender = [&](bool) { slider.PrintText(L"50 %", Rgb(151, 151, 151)); };
              slider.Create();
              slider.Max(100);
              slider.Value(50);
              slider.FontSize(8);
              slider.text(L"文字");
              SendMouse(host.hwnd(), WM_LBUTTONDOWN, 10, 5, MK_LBUTTON);
              SendMouse(host.hwnd(), WM_LBUTTONUP, 10, 5);
              slider.Enabled(false);
            }),
            ResourceCounts());
  EXPECT_EQ(LiveSubclassBlocks(), blocks);
}

}  // namespace
}  // namespace tellurvane

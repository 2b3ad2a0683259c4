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
  EXPECT_EQ(slider.BackColor(), SystemColor(COLOR_BTNFACE));
  host.Move(kLeft, kTop, 240, 18);
  EXPECT_THAT(Events(), ElementsAre("Resize"));
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

TEST_F(SliderTest, APressOfAnyButtonSetsTheValueUnderIt) {
  struct Case {
    UINT down, up;
  };
  for (const Case& row :
       {Case{WM_LBUTTONDOWN, WM_LBUTTONUP}, Case{WM_LBUTTONDBLCLK, WM_LBUTTONUP},
        Case{WM_RBUTTONDOWN, WM_RBUTTONUP}, Case{WM_RBUTTONDBLCLK, WM_RBUTTONUP},
        Case{WM_MBUTTONDOWN, WM_MBUTTONUP}, Case{WM_MBUTTONDBLCLK, WM_MBUTTONUP}}) {
    SetFocus(form.hwnd());
    Press(7, 5, row.down);
    EXPECT_THAT(Events(), ElementsAre("MousePress", "PositionSet 10", "PositionSetByMouse 10"));
    EXPECT_TRUE(slider.MouseDriving());
    EXPECT_EQ(GetFocus(), host.hwnd());
    Release(7, 5, row.up);
    EXPECT_FALSE(slider.MouseDriving());
  }
  slider.Max(241.37);
  for (const auto& [x, value] : {std::pair{0, 0.0}, {69, 241.37}, {70, 241.37}}) {
    Press(x);
    EXPECT_EQ(slider.Value(), value) << x;
  }
  Release(70);
  bool isDriving = false;
  slider.MousePress = [&] { isDriving = slider.MouseDriving(); };
  Press(7);
  EXPECT_TRUE(isDriving) << "already in the event";
}

TEST_F(SliderTest, DraggingDrivesTheValueUntilTheRelease) {
  Press(7);
  EXPECT_TRUE(slider.MouseDriving());
  EXPECT_EQ(GetCapture(), host.hwnd());
  Events();
  Drag(14);
  Drag(35, 6);
  Drag(35, 6);
  EXPECT_THAT(Events(), ElementsAre("PositionSet 20", "PositionSetByMouse 20", "PositionSet 50",
                                    "PositionSetByMouse 50"));
  Release(35);
  EXPECT_FALSE(slider.MouseDriving());
  EXPECT_EQ(GetCapture(), nullptr);
  Drag(14);
  EXPECT_THAT(Events(), IsEmpty());
  EXPECT_EQ(slider.Value(), 50);
  Press(35);
  Drag(-40, 90);
  EXPECT_EQ(slider.Value(), 0);
  Drag(500, -90);
  EXPECT_EQ(slider.Value(), 100);
}

TEST_F(SliderTest, MovingWithoutAPressOrWithTheRightButtonSetsNothing) {
  Drag(14);
  SendMouse(host.hwnd(), WM_MOUSEMOVE, 21, 5);
  EXPECT_THAT(Events(), IsEmpty());
  Press(7, 5, WM_RBUTTONDOWN);
  Events();
  SendMouse(host.hwnd(), WM_MOUSEMOVE, 35, 5, MK_RBUTTON);
  EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(SliderTest, DrivingEndsWithTheButtonsTheCaptureTheHostAndTheSlider) {
  Press(7);
  Press(14, 5, WM_RBUTTONDOWN);
  Release(14, 5, WM_RBUTTONUP);
  EXPECT_TRUE(slider.MouseDriving());
  host.Enabled(false);
  EXPECT_FALSE(slider.MouseDriving());
  host.Enabled(true);
  Press(7);
  SetCapture(form.hwnd());
  EXPECT_FALSE(slider.MouseDriving());
  Drag(35);
  EXPECT_EQ(slider.Value(), 10);
  Release(35);
  EXPECT_EQ(GetCapture(), form.hwnd()) << "the other window keeps it";
  Press(7);
  slider.TargetPictureBox(host);
  EXPECT_EQ(GetCapture(), nullptr) << "the slider has left";
}

TEST_F(SliderTest, WheelMovesByTwoWhateverTheMaximum) {
  for (const double max : {100.0, 7.0, 5'000.0}) {
    slider.Max(max);
    slider.Value(3);
    Events();
    Wheel(120);
    EXPECT_EQ(slider.Value(), 5) << max;
    Wheel(-120);
    EXPECT_THAT(Events(), ElementsAre("PositionSet 5", "PositionSetByMouse 5", "PositionSet 3",
                                      "PositionSetByMouse 3"));
  }
}

TEST_F(SliderTest, WheelArgumentBelowOneIsTowardsTheUser) {
  struct Row {
    int distance;
    int keys;
    double value;
  };
  // The held keys are in the lower half of the argument. Deliberate: the whole one is compared.
  for (const Row& row : {Row{0, 0, 48}, Row{-1, MK_LBUTTON, 48}, Row{0, MK_CONTROL, 52},
                         Row{1, 0, 52}, Row{-120, MK_SHIFT, 48}, Row{32'767, 0, 52}}) {
    slider.Value(50);
    Wheel(row.distance, row.keys);
    EXPECT_EQ(slider.Value(), row.value) << row.distance;
  }
}

TEST_F(SliderTest, WheelOnAMaximumOfOneGoesStraightToTheEnds) {
  slider.Max(1);
  Events();
  Wheel(120);
  Wheel(120);
  EXPECT_EQ(slider.Value(), 1);
  EXPECT_THAT(Events(), ElementsAre("PositionSet 1", "PositionSetByMouse 1", "PositionSet 1",
                                    "PositionSetByMouse 1"));
  Wheel(-120);
  EXPECT_EQ(slider.Value(), 0);
}

TEST_F(SliderTest, KeysMoveTheValue) {
  struct Row {
    UINT key;
    double value;
  };
  for (const Row& row : {Row{VK_LEFT, 48}, Row{VK_DOWN, 48}, Row{VK_RIGHT, 52}, Row{VK_UP, 52},
                         Row{VK_HOME, 0}, Row{VK_END, 100}, Row{VK_NEXT, 40}, Row{VK_PRIOR, 60}}) {
    slider.Value(50);
    Events();
    Key(row.key);
    EXPECT_EQ(slider.Value(), row.value) << row.key;
    EXPECT_EQ(Events().size(), 2U) << row.key;
  }
  Key('A');
  EXPECT_THAT(Events(), IsEmpty());
  EXPECT_NE(SendMessageW(host.hwnd(), WM_GETDLGCODE, 0, 0) & DLGC_WANTARROWS, 0);
  SetFocus(form.hwnd());
  SendMessageW(host.hwnd(), WM_SETFOCUS, 0, 0);
  EXPECT_EQ(GetFocus(), host.hwnd());
}

TEST_F(SliderTest, DisabledSliderHearsNeitherMouseNorWheelNorKeys) {
  slider.Value(50);
  slider.Enabled(false);
  Events();
  Press(7);
  Wheel(120);
  Key(VK_END);
  EXPECT_THAT(Events(), IsEmpty());
  EXPECT_EQ(slider.Value(), 50);
  slider.Value(60);
  EXPECT_THAT(Events(), ElementsAre("PositionSet 60"));
}

TEST_F(SliderTest, ThePointerIsReportedOnceWhenItComesAndWhenItLeaves) {
  EXPECT_FALSE(slider.CursorInside());
  SetCursorPos(kLeft + 10, kTop + 5);
  EXPECT_TRUE(PumpUntil([&] { return slider.CursorInside(); }));
  SetCursorPos(kLeft + 20, kTop + 5);
  Pump();
  SendMouse(host.hwnd(), WM_MOUSEMOVE, 20, 5);
  EXPECT_THAT(Events(), ElementsAre("in"));
  SetCursorPos(kLeft + 200, kTop + 100);
  EXPECT_TRUE(PumpUntil([&] { return !slider.CursorInside(); }));
  EXPECT_THAT(Events(), ElementsAre("out"));
}

TEST_F(SliderTest, PointerDraggedOutsideIsOutside) {
  SetCursorPos(kLeft + 10, kTop + 5);
  EXPECT_TRUE(PumpUntil([&] { return slider.CursorInside(); }));
  Press(10);
  SetCursorPos(kLeft + 10, kTop + 80);
  Drag(10, 80);
  EXPECT_FALSE(slider.CursorInside());
  EXPECT_TRUE(slider.MouseDriving());
}

}  // namespace
}  // namespace tellurvane

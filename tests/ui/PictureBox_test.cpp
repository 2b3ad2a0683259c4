#include "ui/PictureBox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "tests/support/WindowTestSupport.h"
#include "ui/Density.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;

constexpr Color kRed = Rgb(255, 0, 0);
constexpr Color kBlue = Rgb(0, 0, 255);

class PictureBoxTest : public testing::Test {
 protected:
  void SetUp() override {
    box.Create(
        {.parent = form.hwnd(), .x = 10, .y = 20, .width = 60, .height = 30, .backColor = kRed});
  }

  Color OnScreen(int x, int y) const {
    const WindowDc screen(box.hwnd());
    return PixelOf(screen.Get(), x, y);
  }

  TestForm form;
  PictureBox box;
};

TEST_F(PictureBoxTest, ShowsItsPictureWhenItIsRefreshed) {
  EXPECT_TRUE(PumpUntil([&] { return OnScreen(5, 5) == kRed; }));
  SetPixel(box.Dc(), 3, 4, kBlue);
  box.Refresh();
  EXPECT_EQ(OnScreen(3, 4), kBlue);
  EXPECT_EQ(OnScreen(4, 4), kRed);
  {
    const WindowDc screen(box.hwnd());
    SetPixel(screen.Get(), 3, 4, kWhite);
  }
  box.Refresh({0, 0, 10, 10});
  EXPECT_EQ(OnScreen(3, 4), kBlue) << "the picture is kept";
  box.Clear();
  EXPECT_EQ(PixelOf(box.Dc(), 3, 4), kRed);
}

TEST_F(PictureBoxTest, IsPaintedAgainWhenItsSizeOrColourChanges) {
  int paints = 0;
  int resizes = 0;
  box.Paint = [&](HDC target) {
    ++paints;
    SetPixel(target, 1, 1, kBlue);
  };
  box.Resize = [&] { ++resizes; };
  box.Move(10, 20, 80, 40);
  EXPECT_EQ(paints, 1);
  EXPECT_EQ(resizes, 1);
  EXPECT_EQ(PixelOf(box.Dc(), 1, 1), kBlue);
  box.BackColor(kWhite);
  EXPECT_EQ(paints, 2);
  EXPECT_EQ(PixelOf(box.Dc(), 2, 2), kWhite);
  EXPECT_EQ(PixelOf(box.Dc(), 1, 1), kBlue);
}

TEST_F(PictureBoxTest, HasNoPictureWhileItHasNoArea) {
  PictureBox empty;
  int paints = 0;
  empty.Paint = [&](HDC target) {
    ++paints;
    SetPixel(target, empty.ScaleWidth() - 1, 0, kRed);
  };
  empty.Create({.parent = form.hwnd(), .x = 80, .y = 20});
  for (const bool isFirst : {true, false}) {
    empty.BackColor(kBlue);
    EXPECT_EQ(empty.Dc(), nullptr);
    EXPECT_EQ(paints, 0);
    empty.Move(80, 20, 10, 10);
    EXPECT_EQ(std::exchange(paints, 0), 1);
    ASSERT_NE(empty.Dc(), nullptr) << isFirst;
    EXPECT_EQ(PixelOf(empty.Dc(), 9, 0), kRed);
    EXPECT_EQ(PixelOf(empty.Dc(), 0, 0), kBlue);
    empty.Move(80, 20, 0, 10);
  }
}

TEST_F(PictureBoxTest, ReportsTheMouse) {
  std::vector<std::string> events;
  const auto record = [&](const char* name) {
    return [&events, name](const MouseEvent& event) {
      events.push_back(std::string(name) + " " + std::to_string(event.button) + " " +
                       std::to_string(event.x) + "," + std::to_string(event.y));
    };
  };
  box.MouseDown = record("down");
  box.MouseMove = record("move");
  box.MouseUp = record("up");
  box.DblClick = record("double");
  SendMouse(box.hwnd(), WM_LBUTTONDOWN, 1, 2, MK_LBUTTON);
  SendMouse(box.hwnd(), WM_MOUSEMOVE, -3, 4, MK_LBUTTON | MK_RBUTTON);
  SendMouse(box.hwnd(), WM_LBUTTONUP, 5, 6);
  SendMouse(box.hwnd(), WM_LBUTTONDBLCLK, 7, 8);
  SendMouse(box.hwnd(), WM_RBUTTONDOWN, 1, 1);
  SendMouse(box.hwnd(), WM_MBUTTONDOWN, 9, 9);
  EXPECT_THAT(events, ElementsAre("down 1 1,2", "move 3 -3,4", "up 1 5,6", "double 1 7,8",
                                  "down 2 1,1", "down 4 9,9"));
}

TEST_F(PictureBoxTest, ReportsKeysAndWhenItIsEnabled) {
  int changes = 0;
  box.EnabledChanged = [&] { ++changes; };
  box.Enabled(false);
  box.Enabled(true);
  EXPECT_EQ(changes, 2);
  std::vector<UINT> keys;
  box.KeyDown = [&](UINT key) {
    keys.push_back(key);
    return true;
  };
  SendMessageW(box.hwnd(), WM_KEYDOWN, VK_LEFT, 0);
  EXPECT_THAT(keys, ElementsAre(VK_LEFT));
  EXPECT_EQ(SendMessageW(box.hwnd(), WM_GETDLGCODE, 0, 0), DLGC_WANTARROWS);
}

TEST(DensityTest, IsTheScreens) {
  const WindowDc screen(nullptr);
  const int dpi = GetDeviceCaps(screen.Get(), LOGPIXELSX);
  EXPECT_EQ(DotsPerInch(), dpi);
  EXPECT_EQ(PixelsFromTwips(1'440), dpi);
  EXPECT_EQ(TwipsFromPixels(dpi), 1'440);
  EXPECT_EQ(Scaled(96), dpi);
}

}  // namespace
}  // namespace tellurvane

// The main window's position slider while music plays.
#include <functional>

#include "tests/mainwin/FrmMainFixture.h"

namespace tellurvane {
namespace {

class FrmMainPositionTest : public FrmMainTest {
 protected:
  void SetUp() override {
    FrmMainTest::SetUp();
    WriteBytes(folder.File(L"music.mp3"), "");
    Tasks({{kLocalMusic, folder.File(L"music.mp3")}});
    player.duration = 100;
    Open();
    Select(0);
    slider = PositionSlider();
  }

  // The slider's pixels after two more ticks.
  std::vector<Color> PictureAt(double seconds) {
    player.position = seconds;
    const int reads = player.positionReads;
    EXPECT_TRUE(PumpUntil([&] { return player.positionReads >= reads + 2; }));
    return Shown(slider);
  }

  HWND slider = nullptr;
};

TEST_F(FrmMainPositionTest, IsNotDrawnWhileTheWindowIsHidden) {
  const struct {
    const char* name;
    std::function<void()> hide, show;
  } ways[] = {
      {"hidden", [&] { window->FormMin(); }, [&] { window->FormMin(); }},
      {"minimised", [&] { ShowWindow(window->hwnd(), SW_MINIMIZE); },
       [&] { ShowWindow(window->hwnd(), SW_RESTORE); }},
  };
  for (const auto& [name, hide, show] : ways) {
    SCOPED_TRACE(name);
    window->RunSelectedTask();
    const std::vector<Color> at40 = PictureAt(40);
    const std::vector<Color> at10 = PictureAt(10);
    EXPECT_NE(at40, at10);
    hide();
    EXPECT_EQ(PictureAt(40), at10);
    show();
    EXPECT_EQ(Shown(slider), at40) << "without waiting for a tick";
  }
  Press(kStop);
  const std::vector<Color> stopped = Shown(slider);
  window->RunSelectedTask();
  EXPECT_NE(PictureAt(40), stopped);
  window->FormMin();
  Press(kStop);
  window->FormMin();
  EXPECT_EQ(Shown(slider), stopped) << "stopped while hidden";
}

TEST_F(FrmMainPositionTest, FollowsTheMusicTenTimesASecond) {
  window->RunSelectedTask();
  PictureAt(1);
  const int reads = player.positionReads;
  const int stateReads = player.stateReads;
  const ULONGLONG start = GetTickCount64();
  EXPECT_TRUE(PumpUntil([&] { return player.positionReads >= reads + 10; }));
  const ULONGLONG waited = GetTickCount64() - start;
  EXPECT_GE(waited, 700U);
  EXPECT_LE(waited, 4'000U) << "also on a busy machine";
  EXPECT_LE(player.stateReads - stateReads, 15) << "three a second";
}

}  // namespace
}  // namespace tellurvane

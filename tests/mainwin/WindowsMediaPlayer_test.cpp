// With the system's own control. tests/program listens to the sound.
#include "mainwin/WindowsMediaPlayer.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "tests/support/TemporaryFolder.h"
#include "tests/support/WindowTestSupport.h"
#include "tests/support/Wine.h"

namespace tellurvane {
namespace {

// The control of Windows may keep another state after a failure.
void ExpectIdle(WindowsMediaPlayer& player) {
  if (!IsWine()) return;
  EXPECT_EQ(player.PlayState(), kUndefinedState);
  EXPECT_EQ(player.Position(), 0);
  EXPECT_EQ(player.Duration(), 0);
  EXPECT_FALSE(player.IsOpening());
  EXPECT_FALSE(player.HasEnded());
}

TEST(WindowsMediaPlayerTest, SurvivesMediaThatItCannotPlay) {
  const ComApartment apartment;
  WindowsMediaPlayer player;
  player.Volume(50);
  ExpectIdle(player);
  const TemporaryFolder folder;
  const std::wstring broken = folder.File(L"broken.wav");
  WriteBytes(broken, "RIFF, and nothing more");
  for (const std::wstring& source :
       {folder.File(L"missing.mp3"), broken, folder.Path(), std::wstring(),
        std::wstring(L"http://127.0.0.1:9/stream"), std::wstring(40'000, L'x')}) {
    player.Url(source);
    player.Play();
    // An address that does not answer may take Windows longer.
    EXPECT_TRUE(PumpUntil([&] { return !player.IsOpening(); }) || !IsWine());
    Pump();
    player.Position(3);
    EXPECT_EQ(player.Duration(), 0);
    EXPECT_EQ(player.DurationText(), L"00:00");
    player.Close();
    player.Stop();
    Pump();
    ExpectIdle(player);
  }
}

}  // namespace
}  // namespace tellurvane

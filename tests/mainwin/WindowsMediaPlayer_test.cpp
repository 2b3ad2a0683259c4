// With the system's own control. tests/program listens to the sound.
#include "mainwin/WindowsMediaPlayer.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "tests/support/TemporaryFolder.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {
namespace {

constexpr int kRate = 8'000;

void Append(std::string& bytes, std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i) bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
}

// A quiet tone, 8 bits a sample.
std::string Wave(int seconds) {
  const auto size = static_cast<std::uint32_t>(seconds * kRate);
  std::string bytes = "RIFF";
  Append(bytes, 36 + size, 4);
  bytes += "WAVEfmt ";
  for (const auto& [value, count] : {std::pair<std::uint32_t, int>{16, 4},
                                     {1, 2},
                                     {1, 2},
                                     {kRate, 4},
                                     {kRate, 4},
                                     {1, 2},
                                     {8, 2}}) {
    Append(bytes, value, count);
  }
  bytes += "data";
  Append(bytes, size, 4);
  for (std::uint32_t i = 0; i < size; ++i) {
    bytes += static_cast<char>(
        static_cast<int>(128 + 20 * std::sin(2 * std::numbers::pi * 440 * i / kRate)));
  }
  return bytes;
}

class WindowsMediaPlayerTest : public testing::Test {
 protected:
  std::wstring WaveFile(int seconds) {
    const std::wstring path = folder.File(L"音樂.wav");
    WriteBytes(path, Wave(seconds));
    return path;
  }
  void Start(const std::wstring& source) {
    player.Close();
    player.Stop();
    player.Url(source);
    player.Play();
    EXPECT_TRUE(PumpUntil([&] { return !player.IsOpening(); }));
  }

  TemporaryFolder folder;
  ComApartment apartment;
  WindowsMediaPlayer player;
};

TEST_F(WindowsMediaPlayerTest, PlaysAFileBetweenIdleStates) {
  player.Close();
  player.Stop();
  player.Volume(50);
  EXPECT_EQ(player.PlayState(), kUndefinedState);
  EXPECT_EQ(player.Position(), 0);
  EXPECT_EQ(player.Duration(), 0);
  EXPECT_FALSE(player.IsOpening());
  EXPECT_FALSE(player.HasEnded());

  Start(WaveFile(5));
  EXPECT_NEAR(player.Duration(), 5, 0.2);
  EXPECT_TRUE(PumpUntil([&] { return player.PlayState() == kPlayingState; }));
  EXPECT_TRUE(PumpUntil([&] { return player.Position() > 0.2; }));
  EXPECT_EQ(player.DurationText(), L"00:05");
  EXPECT_EQ(player.PositionText().substr(0, 4), L"00:0");
  EXPECT_FALSE(player.Status().empty());

  player.Close();
  player.Stop();
  Pump();
  EXPECT_EQ(player.PlayState(), kUndefinedState);
}

TEST_F(WindowsMediaPlayerTest, Seeks) {
  Start(WaveFile(60));
  player.Position(40);
  EXPECT_TRUE(PumpUntil([&] { return player.Position() >= 40; }));
  EXPECT_LT(player.Position(), 50);
}

TEST_F(WindowsMediaPlayerTest, PlaysAgainFromTheStart) {
  const std::wstring file = WaveFile(2);
  Start(file);
  player.Position(1.8);
  EXPECT_TRUE(PumpUntil([&] { return player.Position() > 1.85; }));
  Start(file);
  EXPECT_LT(player.Position(), 1.5);
  EXPECT_TRUE(PumpUntil([&] { return player.Position() > 0.1 && player.Position() < 1.5; }));
}

TEST_F(WindowsMediaPlayerTest, HasEndedUntilTheNextUrlOrStop) {
  for (const bool isStopped : {false, true}) {
    const std::wstring file = WaveFile(1);
    Start(file);
    EXPECT_FALSE(player.HasEnded());
    EXPECT_TRUE(PumpUntil([&] { return player.HasEnded(); }));
    if (isStopped) {
      player.Stop();
    } else {
      player.Url(file);
    }
    EXPECT_FALSE(player.HasEnded());
    Pump();
    EXPECT_FALSE(player.HasEnded());
  }
}

TEST_F(WindowsMediaPlayerTest, SurvivesMediaThatItCannotPlay) {
  const std::wstring broken = folder.File(L"broken.wav");
  WriteBytes(broken, "RIFF, and nothing more");
  for (const std::wstring& source :
       {folder.File(L"missing.mp3"), broken, folder.Path(), std::wstring(),
        std::wstring(L"http://127.0.0.1:9/stream"), std::wstring(40'000, L'x')}) {
    Start(source);
    Pump();
    player.Position(3);
    EXPECT_EQ(player.Duration(), 0);
    EXPECT_EQ(player.DurationText(), L"00:00");
  }
  Start(WaveFile(5));
  EXPECT_NEAR(player.Duration(), 5, 0.2) << "and plays the next";
}

}  // namespace
}  // namespace tellurvane

#include "mainwin/PlaybackController.h"

#include <gmock/gmock.h>

#include "tests/mainwin/FakePlayer.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The controller between stand-ins. Every call of the player and of the window goes into one list.
class PlaybackTest : public testing::Test, public PlaybackView {
 protected:
  void ShowPlaying(size_t row) override { Write(L"playing: row " + std::to_wstring(row)); }
  void ShowStopped() override { Write(L"stopped"); }
  void EnablePosition(bool enable) override { Write(enable ? L"slider on" : L"slider off"); }
  void PositionRange(double seconds) override { Write(L"range " + std::to_wstring(seconds)); }
  void PositionValue(double seconds) override { Write(L"value " + std::to_wstring(seconds)); }
  void EnableTimerVis(bool enable) override { Write(enable ? L"timer on" : L"timer off"); }
  void EnableTimerOpening(bool enable) override {
    Write(enable ? L"opening timer on" : L"opening timer off");
  }

  void Write(const std::wstring& call) { player.calls.push_back(call); }
  std::vector<std::wstring> Taken() { return std::exchange(player.calls, {}); }

  FakePlayer player;
  bool radioFlag = false;
  bool isSongLoop = false;
  std::uint64_t milliseconds = 1'000'000;
  PlaybackController playback{
      player,
      *this,
      radioFlag,
      {.songLoop = [this] { return isSongLoop; },
       .runSelectedTask = [this] { Write(L"run selected"); },
       .writeSavedVolume =
           [this](std::int32_t volume) { Write(L"write " + std::to_wstring(volume)); },
       .milliseconds = [this] { return milliseconds; }}};
};

TEST_F(PlaybackTest, StopsInTheOrderThatTheUserSees) {
  playback.StopPlayback();
  EXPECT_THAT(Taken(), ElementsAre(L"close", L"stop", L"stopped", L"slider off", L"value 0.000000",
                                   L"timer off", L"opening timer off"));
}

TEST_F(PlaybackTest, LeavesTheRadioFlagAsItIsWhenItStops) {
  for (const bool isRadio : {true, false}) {
    playback.SetRadioFlag(isRadio);
    playback.StopPlayback();
    EXPECT_EQ(radioFlag, isRadio);
  }
}

TEST_F(PlaybackTest, HandsTheSourceAndTheRowOn) {
  playback.SetUrl(L"http://example.invalid/");
  playback.Play();
  playback.ShowPlaying(7);
  EXPECT_THAT(Taken(), ElementsAre(L"url http://example.invalid/", L"play", L"playing: row 7"));
}

TEST_F(PlaybackTest, FollowsAtOnceWhatIsNotOpening) {
  for (const double duration : {12.5, 0.0}) {
    player.duration = duration;
    playback.FollowPosition();
    EXPECT_THAT(Taken(),
                ElementsAre(L"range " + std::to_wstring(duration), L"slider on", L"timer on"));
  }
}

TEST_F(PlaybackTest, FollowsWhatIsOpeningOnceItIsOpen) {
  player.isOpening = true;
  playback.FollowPosition();
  EXPECT_THAT(Taken(), ElementsAre(L"opening timer on")) << "it does not wait";
  milliseconds += 29'999;
  playback.TimerOpening_Tick();
  EXPECT_THAT(Taken(), IsEmpty());
  player.isOpening = false;
  player.duration = 12.5;
  playback.TimerOpening_Tick();
  EXPECT_THAT(Taken(),
              ElementsAre(L"opening timer off", L"range 12.500000", L"slider on", L"timer on"));
}

TEST_F(PlaybackTest, TakesWhatIsStillOpeningAfterHalfAMinuteForEnded) {
  player.isOpening = true;
  playback.FollowPosition();
  Taken();
  milliseconds += 30'000;
  playback.TimerOpening_Tick();
  EXPECT_THAT(Taken(),
              ElementsAre(L"opening timer off", L"range 0.000000", L"slider on", L"timer on"));
  playback.TimerVis_Tick();
  EXPECT_EQ(Taken().front(), L"close");
}

TEST_F(PlaybackTest, CountsTheTimeOfEachOpeningByItself) {
  player.isOpening = true;
  playback.FollowPosition();
  milliseconds += 20'000;
  playback.StopPlayback();
  playback.FollowPosition();
  milliseconds += 20'000;
  Taken();
  playback.TimerOpening_Tick();
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(PlaybackTest, FollowsTheMedia) {
  player.position = 3.25;
  player.duration = 12.5;
  playback.TimerVis_Tick();
  EXPECT_THAT(Taken(), ElementsAre(L"range 12.500000", L"value 3.250000"));
}

TEST_F(PlaybackTest, FollowsNoStream) {
  radioFlag = true;
  player.position = player.duration = 5;
  playback.TimerVis_Tick();
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(PlaybackTest, TakesEqualWholeSecondsForTheEnd) {
  const struct {
    double position;
    double duration;
    bool isEnd;
  } cases[] = {
      {0, 0, true},                          // not opened yet
      {9.6, 10.4, true},                     // 10 and 10: a fraction is left
      {9.5, 10.5, true},                     // halves go to the even number: 10 and 10
      {9.4, 10, false},                      // 9 and 10
      {10.5, 11.4, false},                   // 10 and 11
      {0, 0.5, true},                        // 0 and 0
      {0, 0.6, false},     {12, 10, false},  // beyond the end is not at the end
  };
  for (const auto& [position, duration, isEnd] : cases) {
    player.position = position;
    player.duration = duration;
    playback.TimerVis_Tick();
    EXPECT_EQ(Taken().front() == L"close", isEnd) << position << " of " << duration;
  }
}

// A control that rewinds is never seen at its end, and a stated length can be too long.
TEST_F(PlaybackTest, TakesThePlayersOwnWordForTheEnd) {
  player.duration = 205.52;
  for (const double position : {0.0, 12.0, 203.0}) {
    player.position = position;
    player.hasEnded = true;
    playback.TimerVis_Tick();
    EXPECT_EQ(Taken().front(), L"close") << position;
    playback.TimerVis_Tick();
    EXPECT_THAT(Taken(), ElementsAre(L"range 205.520000", L"value " + std::to_wstring(position)))
        << "it acts once";
  }
}

TEST_F(PlaybackTest, TakesNoStreamForEnded) {
  radioFlag = player.hasEnded = true;
  playback.TimerVis_Tick();
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(PlaybackTest, RunsTheSelectedTaskAgainWithContinuousPlay) {
  isSongLoop = true;
  player.duration = 20;
  for (const bool isRewound : {false, true}) {
    player.position = isRewound ? 0 : 20;
    player.hasEnded = isRewound;
    playback.TimerVis_Tick();
    // Its own stop step is part of the run.
    EXPECT_THAT(Taken(), ElementsAre(L"run selected"));
  }
}

TEST_F(PlaybackTest, RunsASoundOfLessThanHalfASecondAgainOnceThePlayerReportsItsEnd) {
  isSongLoop = true;
  player.duration = 0.4;
  player.hasEnded = true;
  playback.TimerVis_Tick();
  EXPECT_THAT(Taken(), ElementsAre(L"run selected"));
}

TEST_F(PlaybackTest, StopsWhatNeverOpenedThoughPlayIsContinuous) {
  isSongLoop = true;
  playback.TimerVis_Tick();
  EXPECT_EQ(Taken().front(), L"close");
}

TEST_F(PlaybackTest, SeeksToTheVeryPosition) {
  playback.SliderH_PositionSetByMouse(3.75);
  EXPECT_THAT(Taken(), ElementsAre(L"position 3.750000"));
}

TEST_F(PlaybackTest, SetsAndWritesTheVolumeRoundedToTheEvenNumber) {
  const struct {
    double value;
    const wchar_t* volume;
  } cases[] = {{37.5, L"38"}, {36.5, L"36"}, {0, L"0"}, {100, L"100"}, {99.4, L"99"}};
  for (const auto& [value, volume] : cases) {
    playback.SliderVolH_PositionSet(value);
    EXPECT_THAT(Taken(),
                ElementsAre(std::wstring(L"volume ") + volume, std::wstring(L"write ") + volume));
  }
}

}  // namespace
}  // namespace tellurvane

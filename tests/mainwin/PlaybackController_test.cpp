#include "mainwin/PlaybackController.h"

#include <gmock/gmock.h>

#include "tests/mainwin/PlaybackFixture.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(PlaybackTest, StopsAndKeepsTheRadioFlag) {
  for (const bool isRadio : {true, false}) {
    playback.SetRadioFlag(isRadio);
    playback.StopPlayback();
    EXPECT_THAT(Taken(), ElementsAre(L"close", L"stop", L"stopped", L"slider off",
                                     L"value 0.000000", L"timer off", L"opening timer off"));
    EXPECT_EQ(radioFlag, isRadio);
  }
}

TEST_F(PlaybackTest, StartsTheSourceAndFollowsIt) {
  playback.SetUrl(L"C:\\music.mp3");
  playback.Play();
  playback.ShowPlaying(7);
  EXPECT_THAT(Taken(), ElementsAre(L"url C:\\music.mp3", L"play", L"playing: row 7"));
  player.duration = 12.5;
  playback.FollowPosition();
  EXPECT_THAT(Taken(), ElementsAre(L"range 12.500000", L"slider on", L"timer on"));
  playback.SliderH_PositionSetByMouse(3.75);
  EXPECT_THAT(Taken(), ElementsAre(L"position 3.750000"));
}

TEST_F(PlaybackTest, FollowsOpeningMediaOnceItIsOpen) {
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

TEST_F(PlaybackTest, MediaThatDoesNotOpenInHalfAMinuteHasEnded) {
  player.isOpening = true;
  playback.FollowPosition();
  milliseconds += 20'000;
  playback.StopPlayback();
  playback.FollowPosition();
  milliseconds += 20'000;
  Taken();
  playback.TimerOpening_Tick();
  EXPECT_THAT(Taken(), IsEmpty()) << "the time of the second opening counts";
  milliseconds += 10'000;
  playback.TimerOpening_Tick();
  EXPECT_THAT(Taken(),
              ElementsAre(L"opening timer off", L"range 0.000000", L"slider on", L"timer on"));
  playback.TimerVis_Tick();
  EXPECT_EQ(Taken().front(), L"close");
}

TEST_F(PlaybackTest, FollowsTheMediaToItsEnd) {
  const struct {
    const char* name;
    double position;
    double duration;
    bool hasEnded;
    bool isEnd;
    bool isPlayedAgain;  // with continuous play
  } cases[] = {
      {"in the middle", 3.25, 12.5, false, false, false},
      {"not opened", 0, 0, false, true, false},
      {"10 of 10, a fraction is left", 9.6, 10.4, false, true, true},
      {"10 of 10, halves go to the even number", 9.5, 10.5, false, true, true},
      {"9 of 10", 9.4, 10, false, false, false},
      {"10 of 11", 10.5, 11.4, false, false, false},
      {"0 of 0", 0, 0.5, false, true, false},
      {"0 of 1", 0, 0.6, false, false, false},
      {"past the end", 12, 10, false, false, false},
      // The control may rewind, or the stated length may be too long.
      {"reported at the start", 0, 205.52, true, true, true},
      {"reported in the middle", 12, 205.52, true, true, true},
      {"reported for a short sound", 0, 0.4, true, true, true},
  };
  for (const auto& [name, position, duration, hasEnded, isEnd, isPlayedAgain] : cases) {
    for (const bool isRadio : {false, true}) {
      for (const bool isContinuous : {false, true}) {
        SCOPED_TRACE(testing::Message() << name << (isContinuous ? ", continuous" : ""));
        radioFlag = isRadio;
        isSongLoop = isContinuous;
        player.position = position;
        player.duration = duration;
        player.hasEnded = hasEnded;
        player.positionReads = player.durationReads = 0;
        playback.TimerVis_Tick();
        const std::vector<std::wstring> calls = Taken();
        if (isRadio) {
          EXPECT_THAT(calls, IsEmpty()) << "a stream has no end";
        } else if (!isEnd) {
          EXPECT_THAT(calls, ElementsAre(L"range " + std::to_wstring(duration),
                                         L"value " + std::to_wstring(position)));
          EXPECT_EQ(player.positionReads, 1);
          EXPECT_EQ(player.durationReads, 1);
        } else if (isContinuous && isPlayedAgain) {
          EXPECT_THAT(calls, ElementsAre(L"run selected"));
        } else {
          EXPECT_EQ(calls.front(), L"close");
        }
      }
    }
  }
}

TEST_F(PlaybackTest, RoundsTheVolumeToTheEvenNumber) {
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

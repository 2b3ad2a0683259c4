// What the playback makes of the player's state: tries, signs, outcomes, and the computer awake.
#include <gmock/gmock.h>

#include "tests/mainwin/PlaybackFixture.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const wchar_t* kStream = L"http://example.invalid/";
constexpr const wchar_t* kMusic = L"C:\\music.mp3";

class PlaybackWatchingTest : public PlaybackTest {
 protected:
  void Start(const std::wstring& source) {
    playback.StopPlayback();
    playback.SetRadioFlag(source != kMusic);
    playback.SetUrl(source);
    playback.Play();
    playback.ShowPlaying(0);
    if (source == kMusic) playback.FollowPosition();
    Taken();
  }
  void LetPass(int seconds) {
    for (int i = 0; i < seconds; ++i) {
      milliseconds += 1'000;
      playback.TimerSet_Tick(mayTry);
    }
  }
  void LetPassIn(int state, int seconds) {
    player.state = state;
    LetPass(seconds);
  }

  bool mayTry = true;
};

TEST_F(PlaybackWatchingTest, ALostStreamIsTriedByItsAddressAndPlayAlone) {
  player.state = kPlayingState;
  Start(kStream);
  EXPECT_EQ(sign, PlaybackSign::kPlaying);
  LetPass(100);
  EXPECT_THAT(Taken(), IsEmpty());
  EXPECT_EQ(outcome, RunOutcome());
  LetPassIn(kStoppedState, 1);
  EXPECT_EQ(sign, PlaybackSign::kTrying);
  EXPECT_EQ(outcome, StreamIsLost());
  LetPass(4);
  EXPECT_THAT(Taken(), IsEmpty());
  LetPass(1);
  EXPECT_THAT(Taken(), ElementsAre(std::wstring(L"url ") + kStream, L"play"));
  LetPassIn(kPlayingState, 1);
  EXPECT_EQ(sign, PlaybackSign::kPlaying);
  EXPECT_EQ(outcome, RunOutcome());
}

TEST_F(PlaybackWatchingTest, AStopEndsTheTriesAndThePromiseOfThem) {
  player.state = kReadyState;
  Start(kStream);
  LetPass(30);
  ASSERT_EQ(outcome, StreamIsLost());
  playback.StopPlayback();
  EXPECT_EQ(outcome, CannotPlay());
  Taken();
  LetPass(300);
  EXPECT_THAT(Taken(), IsEmpty());
  Start(kStream);
  EXPECT_EQ(outcome, RunOutcome()) << "the next run is not known yet";
  // Neither a stream that plays nor one that has only begun has failed.
  for (const int state : {int{kPlayingState}, int{kTransitioningState}}) {
    player.state = state;
    Start(kStream);
    LetPass(20);
    playback.StopPlayback();
    EXPECT_EQ(outcome, RunOutcome()) << state;
  }
}

TEST_F(PlaybackWatchingTest, AStoppedStreamHasFailedOnlyIfItsLatestStartNeverPlayed) {
  player.state = kPlayingState;
  Start(kStream);
  LetPass(10);
  LetPassIn(kStoppedState, 40);
  ASSERT_EQ(outcome, StreamIsLost());
  playback.StopPlayback();
  EXPECT_EQ(outcome, RunOutcome());
  Start(kStream);
  LetPass(10);
  ASSERT_EQ(outcome, StreamIsLost());
  playback.StopPlayback();
  EXPECT_EQ(outcome, CannotPlay()) << "only the start before it has played";
}

TEST_F(PlaybackWatchingTest, AStreamThatTheControlStillOpensHasHalfAMinute) {
  player.state = kReadyState;
  player.isOpening = true;
  Start(kStream);
  LetPass(30);
  EXPECT_EQ(outcome, RunOutcome());
  EXPECT_EQ(sign, PlaybackSign::kTrying);
  LetPass(1);
  EXPECT_EQ(outcome, StreamIsLost());
  EXPECT_THAT(Taken(), IsEmpty());
  LetPass(5);
  EXPECT_THAT(Taken(), ElementsAre(std::wstring(L"url ") + kStream, L"play"));
}

TEST_F(PlaybackWatchingTest, APausedStreamHasNoMarkAndIsNotTried) {
  player.state = kPlayingState;
  Start(kStream);
  LetPass(10);
  EXPECT_THAT(awake, ElementsAre(true));
  LetPassIn(kPausedState, 1'000);
  EXPECT_EQ(sign, PlaybackSign::kNone);
  EXPECT_THAT(awake, ElementsAre(true, false));
  EXPECT_EQ(outcome, RunOutcome());
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(PlaybackWatchingTest, ATryIsNotPlayedAfterAStopOrAnotherStartInsideIt) {
  const struct {
    const char* name;
    std::function<void()> inside;
    int plays;
  } cases[] = {{"stop", [this] { playback.StopPlayback(); }, 0},
               {"another stream", [this] { Start(L"http://other.invalid/"); }, 0},
               {"another try", [this] { LetPass(20); }, 1}};
  for (const auto& [name, inside, plays] : cases) {
    player.state = kReadyState;
    Start(kStream);
    player.whileOpening = [this, &inside] {
      player.whileOpening = nullptr;
      inside();
    };
    LetPass(8);
    EXPECT_EQ(std::ranges::count(Taken(), L"play"), plays) << name;
    EXPECT_EQ(player.whileOpening, nullptr) << name;
  }
}

TEST_F(PlaybackWatchingTest, OnlyALostStreamOutlivesTheSleepOfTheComputer) {
  const struct {
    const char* name;
    const wchar_t* source;
    int state;
    bool isKept;
  } cases[] = {
      {"plays", kStream, kPlayingState, false}, {"opens", kStream, kTransitioningState, false},
      {"lost", kStream, kReadyState, true},     {"paused", kStream, kPausedState, false},
      {"music", kMusic, kPlayingState, false},  {"silent music", kMusic, kReadyState, false}};
  for (const auto& [name, source, state, isKept] : cases) {
    player.state = state;
    Start(source);
    LetPass(5);
    playback.FallAsleep();
    EXPECT_EQ(Taken().empty(), isKept) << name;
    mayTry = false;
    LetPassIn(kReadyState, 100);
    EXPECT_THAT(Taken(), IsEmpty()) << name;
    mayTry = true;
    LetPass(1);
    EXPECT_EQ(Taken().size(), isKept ? 2U : 0U) << name;
  }
}

TEST_F(PlaybackWatchingTest, MusicAfterAStreamIsNotTriedAgain) {
  player.state = kReadyState;
  Start(kStream);
  LetPass(10);
  Start(kMusic);
  LetPass(100);
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(PlaybackWatchingTest, ShowsHowMusicGoes) {
  const struct {
    const char* name;
    int state;
    bool isOpening;
    bool hasEnded;
    int seconds;
    PlaybackSign sign;
    std::optional<RunOutcome> outcome;
  } cases[] = {
      {"plays", kPlayingState, false, false, 1, PlaybackSign::kPlaying, RunOutcome()},
      {"opens", kTransitioningState, true, false, 20, PlaybackSign::kTrying, std::nullopt},
      {"ready, but it opens", kReadyState, true, false, 20, PlaybackSign::kTrying, std::nullopt},
      {"buffers", kBufferingState, false, false, 20, PlaybackSign::kTrying, std::nullopt},
      {"paused", kPausedState, false, false, 20, PlaybackSign::kNone, std::nullopt},
      {"just started", kReadyState, false, false, 2, PlaybackSign::kTrying, std::nullopt},
      {"short, has ended", kReadyState, false, true, 2, PlaybackSign::kNone, std::nullopt},
      {"open, but never plays", kReadyState, false, false, 3, PlaybackSign::kNone, CannotPlay()},
      {"given up", kUndefinedState, false, false, 3, PlaybackSign::kNone, CannotPlay()},
      {"ended, nothing is selected", kMediaEndedState, false, true, 20, PlaybackSign::kNone,
       std::nullopt},
  };
  for (const auto& [name, state, isOpening, hasEnded, seconds, expectedSign, expected] : cases) {
    player.isOpening = isOpening;
    Start(kMusic);
    player.state = state;
    player.hasEnded = hasEnded;
    outcome.reset();
    LetPass(seconds);
    EXPECT_EQ(sign, expectedSign) << name;
    EXPECT_EQ(outcome, expected) << name;
  }
}

// Without events the control does not report the end of its media.
TEST_F(PlaybackWatchingTest, TheOutcomeOfMusicDoesNotAlternate) {
  player.state = kReadyState;
  Start(kMusic);
  LetPass(5);
  ASSERT_EQ(outcome, CannotPlay());
  Start(kMusic);
  LetPassIn(kPlayingState, 5);
  ASSERT_EQ(outcome, RunOutcome());
  outcomeChanges = 0;
  for (int i = 0; i < 5; ++i) {
    LetPassIn(kStoppedState, 5);
    LetPassIn(kPlayingState, 5);
  }
  // Shorter than half a second.
  player.state = kStoppedState;
  playback.TimerVis_Tick();
  EXPECT_EQ(outcomeChanges, 0);
}

TEST_F(PlaybackWatchingTest, TheEndOfMusicTellsWhetherItHasPlayed) {
  const struct {
    double duration;
    bool hasEnded;
    RunOutcome outcome;
  } cases[] = {{12, true, {}}, {12, false, {}}, {0.4, true, {}}, {0, false, CannotPlay()}};
  for (const auto& [duration, hasEnded, expected] : cases) {
    for (const bool isContinuous : {false, true}) {
      isSongLoop = isContinuous;
      Start(kMusic);
      player.position = player.duration = duration;
      player.hasEnded = hasEnded;
      outcome.reset();
      playback.TimerVis_Tick();
      EXPECT_EQ(outcome, expected) << duration;
    }
  }
}

TEST_F(PlaybackWatchingTest, KeepsTheComputerAwakeWhileItPlaysOrTries) {
  LetPass(5);
  EXPECT_THAT(awake, IsEmpty());
  Start(kMusic);
  LetPassIn(kTransitioningState, 5);
  EXPECT_THAT(awake, IsEmpty());
  LetPassIn(kPlayingState, 5);
  EXPECT_THAT(awake, ElementsAre(true));
  LetPassIn(kMediaEndedState, 5);
  EXPECT_THAT(awake, ElementsAre(true, false));
  Start(kStream);
  LetPassIn(kTransitioningState, 1);
  EXPECT_THAT(awake, ElementsAre(true, false, true));
  LetPass(600);
  EXPECT_THAT(awake, ElementsAre(true, false, true, false)) << "tried for ten minutes";
  LetPassIn(kPlayingState, 5);
  playback.StopPlayback();
  EXPECT_THAT(awake, ElementsAre(true, false, true, false, true, false));
}

}  // namespace
}  // namespace tellurvane

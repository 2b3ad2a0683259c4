#include "mainwin/StreamKeeper.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "mainwin/MediaPlayer.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;

constexpr int kScanningState = 4;
constexpr int kWaitingState = 7;
constexpr int kReconnectingState = 11;
constexpr const wchar_t* kStream = L"http://example.invalid/";

// The state of a player, by the number of tries so far and the seconds since the latest start.
using Player = std::function<int(size_t tries, int seconds)>;

using Tries = std::vector<int>;  // their seconds

// A keeper that looks at a player each second.
struct Watch {
  explicit Watch(Player behaviour) : player(std::move(behaviour)) { keeper.Start(kStream, now); }

  void Look(int seconds) {
    for (int i = 0; i < seconds; ++i) {
      now += 1'000;
      ++second;
      if (!keeper.Look(player(tries.size(), second - startedAt), now)) continue;
      tries.push_back(second);
      startedAt = second;
    }
  }

  Player player;
  StreamKeeper keeper;
  std::uint64_t now = 1'000'000;
  int second = 0;
  int startedAt = 0;
  Tries tries;
};

Player Always(int state) {
  return [state](size_t, int) { return state; };
}
Player PlaysFor(int seconds) {
  return [seconds](size_t, int since) { return since <= seconds ? kPlayingState : kStoppedState; };
}

TEST(SoundOf, KnowsEachState) {
  EXPECT_EQ(SoundOf(kPlayingState), Sound::kPlaying);
  EXPECT_EQ(SoundOf(kPausedState), Sound::kPaused);
  for (const int state : {kUndefinedState, kStoppedState, kMediaEndedState, kReadyState}) {
    EXPECT_EQ(SoundOf(state), Sound::kSilent) << state;
  }
  for (const int state : {kScanningState, 5, int{kBufferingState}, kWaitingState,
                          int{kTransitioningState}, kReconnectingState}) {
    EXPECT_EQ(SoundOf(state), Sound::kWaiting) << state;
  }
}

TEST(StreamKeeperTest, TriesALostStreamAgainAndAgain) {
  const struct {
    const char* name;
    Player player;
    int seconds;
    Tries tries;
  } cases[] = {
      {"plays", Always(kPlayingState), 7'200, {}},
      {"paused", Always(kPausedState), 7'200, {}},
      // Lost after the three seconds of a start.
      {"ready", Always(kReadyState), 240, {8, 23, 53, 113, 173, 233}},
      {"stopped", Always(kStoppedState), 30, {8, 23}},
      {"ended", Always(kMediaEndedState), 30, {8, 23}},
      {"undefined", Always(kUndefinedState), 30, {8, 23}},
      // Lost after more than 30 seconds.
      {"never opens", Always(kTransitioningState), 240, {36, 67, 98, 158, 218}},
      {"buffers", Always(kBufferingState), 40, {36}},
      {"waits", Always(kWaitingState), 40, {36}},
      {"reconnects", Always(kReconnectingState), 40, {36}},
      {"opens in time",
       [](size_t, int since) { return since <= 30 ? kTransitioningState : kPlayingState; },
       600,
       {}},
      {"opens late",
       [](size_t, int since) { return since < 40 ? kTransitioningState : kPlayingState; },
       600,
       {36, 67, 98}},
      {"comes back at the third try",
       [](size_t tries, int) { return tries < 3 ? kReadyState : kPlayingState; },
       600,
       {8, 23, 53}},
      {"plays for an hour", PlaysFor(3'600), 7'300, {3'606, 7'212}},
      {"plays for a minute", PlaysFor(61), 300, {67, 134, 201, 268}},
      {"plays for less than a minute", PlaysFor(60), 520, {66, 142, 233, 354, 475}},
      {"lost at once after a long time",
       [](size_t tries, int since) {
         return tries == 0 && since <= 100 ? kPlayingState : kReadyState;
       },
       230,
       {106, 121, 151, 211}},
      {"buffers now and then",
       [](size_t, int since) { return since % 40 < 30 ? kBufferingState : kPlayingState; },
       600,
       {}},
      {"waits and rests in turns",
       [](size_t, int since) { return since % 2 == 0 ? kTransitioningState : kReadyState; },
       30,
       {9, 24}},
      {"paused, then buffers",
       [](size_t, int since) { return since <= 100 ? kPausedState : kBufferingState; },
       140,
       {136}},
  };
  for (const auto& [name, player, seconds, tries] : cases) {
    Watch watch(player);
    watch.Look(seconds);
    EXPECT_EQ(watch.tries, tries) << name;
  }
}

TEST(StreamKeeperTest, KnowsItsStreamAndHowItGoes) {
  Watch watch([](size_t tries, int) { return tries == 0 ? kReadyState : kPlayingState; });
  StreamKeeper& keeper = watch.keeper;
  const auto state = [&] { return std::vector{keeper.IsPlaying(), keeper.IsLost()}; };
  EXPECT_TRUE(keeper.IsKeeping());
  EXPECT_EQ(keeper.Source(), kStream);
  watch.Look(2);
  EXPECT_THAT(state(), ElementsAre(false, false)) << "just started";
  watch.Look(1);
  EXPECT_THAT(state(), ElementsAre(false, true));
  watch.Look(5);
  EXPECT_THAT(state(), ElementsAre(false, true)) << "the try has not played yet";
  watch.Look(1);
  EXPECT_THAT(state(), ElementsAre(true, false));
  watch.player = Always(kBufferingState);
  watch.Look(1);
  EXPECT_THAT(state(), ElementsAre(false, false)) << "not lost yet";
}

TEST(StreamKeeperTest, StopEndsTheTriesAndTheNextStartBeginsTheirCount) {
  Watch watch(Always(kReadyState));
  watch.Look(200);
  watch.keeper.Stop();
  watch.tries.clear();
  watch.Look(7'200);
  EXPECT_THAT(watch.tries, ElementsAre());
  EXPECT_FALSE(watch.keeper.IsKeeping());
  EXPECT_FALSE(watch.keeper.IsLost());
  EXPECT_FALSE(watch.keeper.KeepsAwake());
  Watch next(Always(kReadyState));
  next.Look(30);
  next.keeper.Start(L"other", next.now);
  next.tries.clear();
  next.Look(30);
  EXPECT_THAT(next.tries, ElementsAre(38, 53));
  EXPECT_EQ(next.keeper.Source(), L"other");
}

TEST(StreamKeeperTest, KeepsTheMachineAwakeWhileItPlaysAndForTenMinutesOfTrying) {
  Watch silent(Always(kReadyState));
  silent.Look(599);
  EXPECT_TRUE(silent.keeper.KeepsAwake());
  silent.Look(1);
  EXPECT_FALSE(silent.keeper.KeepsAwake());
  silent.player = PlaysFor(1'000'000);
  silent.Look(1);
  EXPECT_TRUE(silent.keeper.KeepsAwake()) << "it plays";
  silent.player = Always(kReadyState);
  silent.Look(1);
  EXPECT_FALSE(silent.keeper.KeepsAwake()) << "it has played for a moment only";
  silent.player = Always(kPlayingState);
  silent.Look(62);
  silent.player = Always(kReadyState);
  silent.Look(600);
  EXPECT_TRUE(silent.keeper.KeepsAwake()) << "it had played for a minute";
  silent.Look(1);
  EXPECT_FALSE(silent.keeper.KeepsAwake());
}

TEST(StreamKeeperTest, AJumpOfTheClockDoesNoHarm) {
  constexpr std::uint64_t kDay = 86'400'000;
  for (const bool isBack : {true, false}) {
    const auto jump = [&](Watch& watch) { watch.now += isBack ? 0 - watch.now : kDay; };
    Watch playing(Always(kPlayingState));
    playing.Look(10);
    jump(playing);
    playing.Look(100);
    EXPECT_THAT(playing.tries, ElementsAre()) << isBack;
    EXPECT_TRUE(playing.keeper.KeepsAwake());

    Watch opening(Always(kTransitioningState));
    opening.Look(10);
    jump(opening);
    opening.Look(40);
    // All of that day counts as waiting.
    EXPECT_EQ(opening.tries, isBack ? Tries({37}) : Tries({16, 47}));

    Watch lost(Always(kReadyState));
    lost.Look(60);
    jump(lost);
    lost.Look(60);
    // The next try comes once, not once for each that the day would have had.
    EXPECT_EQ(lost.tries, isBack ? Tries({8, 23, 53, 114}) : Tries({8, 23, 53, 61}));
  }
}

}  // namespace
}  // namespace tellurvane

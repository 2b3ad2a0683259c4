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
constexpr const wchar_t* kAddress = L"http://example.invalid/";

// The state of a player, by the number of tries so far and the seconds since the latest start.
using Player = std::function<int(size_t tries, int seconds)>;

using Tries = std::vector<int>;  // their seconds

// A keeper that looks at a player each second.
struct Watch {
  explicit Watch(Player behaviour) : player(std::move(behaviour)) { keeper.Start(kAddress, now); }

  void Look(int seconds) {
    for (int i = 0; i < seconds; ++i) {
      now += 1'000;
      ++second;
      const Sound sound = SoundOf(player(tries.size(), second - startedAt));
      if (!keeper.Look(sound, now, mayTry)) continue;
      tries.push_back(second);
      startedAt = second;
    }
  }

  Player player;
  StreamKeeper keeper;
  std::uint64_t now = 1'000'000;
  int second = 0;
  int startedAt = 0;
  bool mayTry = true;
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
      // The start, and each try, is lost after three seconds. Then the delay begins: 5, 15, 30, 60.
      {"ready", Always(kReadyState), 260, {8, 26, 59, 122, 185, 248}},
      {"stopped", Always(kStoppedState), 30, {8, 26}},
      {"ended", Always(kMediaEndedState), 30, {8, 26}},
      {"undefined", Always(kUndefinedState), 30, {8, 26}},
      // Lost after more than 30 seconds.
      {"never opens", Always(kTransitioningState), 330, {36, 82, 143, 234, 325}},
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
       {36}},
      {"comes back at the third try",
       [](size_t tries, int) { return tries < 3 ? kReadyState : kPlayingState; },
       600,
       {8, 26, 59}},
      {"plays for an hour", PlaysFor(3'600), 7'300, {3'606, 7'212}},
      {"plays for a minute", PlaysFor(61), 300, {67, 134, 201, 268}},
      {"plays for less than a minute", PlaysFor(60), 520, {66, 142, 233, 354, 475}},
      {"lost at once after a long time",
       [](size_t tries, int since) {
         return tries == 0 && since <= 100 ? kPlayingState : kReadyState;
       },
       230,
       {106, 124, 157, 220}},
      {"buffers now and then",
       [](size_t, int since) { return since % 40 < 30 ? kBufferingState : kPlayingState; },
       600,
       {}},
      {"waits and rests in turns",
       [](size_t, int since) { return since % 2 == 0 ? kTransitioningState : kReadyState; },
       30,
       {9, 28}},
      {"paused, then buffers",
       [](size_t, int since) { return since <= 100 ? kPausedState : kBufferingState; },
       140,
       {136}},
      {"lost, then paused, then lost",
       [](size_t, int since) { return since >= 5 && since <= 100 ? kPausedState : kReadyState; },
       115,
       {106}},
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
  EXPECT_TRUE(keeper.IsKeeping());
  EXPECT_EQ(keeper.Source(), kAddress);
  watch.Look(2);
  EXPECT_FALSE(keeper.IsLost()) << "just started";
  watch.Look(1);
  EXPECT_TRUE(keeper.IsLost());
  watch.Look(5);
  EXPECT_TRUE(keeper.IsLost()) << "the try has not played yet";
  watch.Look(1);
  EXPECT_FALSE(keeper.IsLost());
  watch.player = Always(kBufferingState);
  watch.Look(1);
  EXPECT_FALSE(keeper.IsLost()) << "not lost yet";
  watch.Look(31);
  EXPECT_TRUE(keeper.IsLost());
  watch.player = Always(kPausedState);
  watch.Look(1);
  EXPECT_FALSE(keeper.IsLost()) << "somebody has paused it";
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
  EXPECT_THAT(next.tries, ElementsAre(38, 56));
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

TEST(StreamKeeperTest, APausedStreamAsksForNoAwakeTime) {
  for (const int before : {int{kPlayingState}, int{kReadyState}}) {
    Watch watch(Always(before));
    watch.Look(10);
    EXPECT_TRUE(watch.keeper.KeepsAwake());
    watch.player = Always(kPausedState);
    watch.Look(1);
    EXPECT_FALSE(watch.keeper.KeepsAwake());
    watch.player = Always(kReadyState);
    watch.Look(1);
    EXPECT_TRUE(watch.keeper.KeepsAwake()) << "it is tried again";
  }
}

TEST(StreamKeeperTest, ATryThatIsDueWaitsUntilItMayBeMade) {
  Watch watch(Always(kReadyState));
  watch.mayTry = false;
  watch.Look(100);
  EXPECT_THAT(watch.tries, ElementsAre());
  EXPECT_TRUE(watch.keeper.IsLost());
  watch.mayTry = true;
  watch.Look(19);
  EXPECT_THAT(watch.tries, ElementsAre(101, 119));
}

TEST(StreamKeeperTest, ASleepOfTheComputerDoesNoHarm) {
  constexpr std::uint64_t kDay = 86'400'000;
  Watch playing(Always(kPlayingState));
  playing.Look(10);
  playing.now += kDay;
  playing.Look(100);
  EXPECT_THAT(playing.tries, ElementsAre());
  EXPECT_TRUE(playing.keeper.KeepsAwake());

  Watch opening(Always(kTransitioningState));
  opening.Look(10);
  opening.now += kDay;
  opening.Look(40);
  EXPECT_THAT(opening.tries, ElementsAre(16)) << "all of that day counts as waiting";

  Watch lost(Always(kReadyState));
  lost.Look(70);
  lost.now += kDay;
  lost.Look(60);
  // The next try comes once, not once for each that the day would have had.
  EXPECT_THAT(lost.tries, ElementsAre(8, 26, 59, 71));
}

}  // namespace
}  // namespace tellurvane

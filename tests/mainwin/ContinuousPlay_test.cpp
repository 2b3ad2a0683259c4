// The controller and the runner together: what goes on when a piece of music ends.
#include <gtest/gtest.h>

#include <optional>

#include "mainwin/PlaybackController.h"
#include "tests/mainwin/FakePlayer.h"
#include "tests/scheduler/RunnerFixture.h"

namespace tellurvane {
namespace {

// How the player comes to the end.
enum class End { kStaysAtTheEnd, kRewinds };

class ContinuousPlayTest : public testing::TestWithParam<End>, public PlaybackView {
 protected:
  void SetUp() override {
    player.duration = 205;
    rig.Add(kLocalMusic, L"song");
    rig.on["url"] = [this] {
      player.position = 0;
      player.hasEnded = false;
    };
    rig.on["stop"] = [this] { playback.StopPlayback(); };
    rig.on["radio on"] = [this] { playback.SetRadioFlag(true); };
    rig.on["radio off"] = [this] { playback.SetRadioFlag(false); };
    rig.on["show playing 0"] = [this] { playback.ShowPlaying(0); };
    rig.on["follow position"] = [this] { playback.FollowPosition(); };
  }

  void ShowPlaying(size_t) override { isShownPlaying = true; }
  void ShowStopped() override { isShownPlaying = false; }
  void EnablePosition(bool) override {}
  void PositionRange(double) override {}
  void PositionValue(double) override {}
  void EnableTimerVis(bool enable) override { follows = enable; }
  void EnableTimerOpening(bool) override {}

  // Runs the first task, a piece of music, and then lets it come to its end while a row is
  // selected. The calls from then on.
  Calls AfterTheEnd(std::optional<size_t> selectedAtTheEnd) {
    rig.runner.RunNow(0);
    EXPECT_TRUE(follows);
    selected = selectedAtTheEnd;
    rig.calls.clear();
    if (GetParam() == End::kStaysAtTheEnd) {
      player.position = player.duration;
    } else {
      player.position = 0;
      player.hasEnded = true;
    }
    playback.TimerVis_Tick();
    return rig.calls;
  }

  // The steps of a run that continuous play asks for, round those that start the task.
  static Calls RunOf(size_t row, const Calls& steps) {
    const Calls before = {"timer off", "area off", "stop"};
    const Calls after = {"save",     "refresh " + std::to_string(row),
                         "area on",  "interval 1000",
                         "timer on", "post tick"};
    return before + steps + after;
  }

  RunnerFixture rig;
  FakePlayer player;
  bool radioFlag = false;
  bool follows = false;
  bool isShownPlaying = false;
  std::optional<size_t> selected;
  PlaybackController playback{
      player,
      *this,
      radioFlag,
      {.songLoop = [] { return true; },
       .runSelectedTask = [this] { rig.runner.RunForContinuousPlay(selected); },
       .writeSavedVolume = [](std::int32_t) {},
       .milliseconds = [] { return 0; }}};
};

TEST_P(ContinuousPlayTest, PlaysTheSameAgainWhileItIsSelected) {
  EXPECT_EQ(AfterTheEnd(0), RunOf(0, {"radio off", "exists? song", "url song", "play",
                                      "show playing 0", "follow position"}));
  EXPECT_TRUE(follows);
}

TEST_P(ContinuousPlayTest, PlaysTheSelectedMusicAndNotTheEndedOne) {
  rig.Add(kLocalMusic, L"other");
  EXPECT_EQ(AfterTheEnd(1), RunOf(1, {"radio off", "exists? other", "url other", "play",
                                      "show playing 1", "follow position"}));
  EXPECT_TRUE(follows);
}

TEST_P(ContinuousPlayTest, StartsTheSelectedTaskOfWhateverKind) {
  const struct {
    MediaType type;
    Calls steps;
  } cases[] = {
      {kInternetRadio, {"radio on", "url other", "play", "show playing 1"}},
      {kApplication, {"command other"}},
      {kReminderNote, {"note other at 2011/2/14 ?? 12:00:10"}},
  };
  for (const auto& [type, steps] : cases) {
    rig.tasks.resize(1);
    rig.Add(type, L"other");
    EXPECT_EQ(AfterTheEnd(1), RunOf(1, steps));
    EXPECT_EQ(rig.tasks[1].LastRun, rig.now) << "it is a run like any other";
    EXPECT_FALSE(follows) << "the music has come to its end";
  }
}

// There is nothing that could be played, and the music is over: it stays so until somebody selects
// a task or stops.
TEST_P(ContinuousPlayTest, RunsNothingAndAsksOnWithoutASelection) {
  EXPECT_EQ(AfterTheEnd(std::nullopt), Calls());
  EXPECT_TRUE(follows) << "it goes on asking";
  EXPECT_TRUE(isShownPlaying);
  for (int tick = 0; tick < 10; ++tick) playback.TimerVis_Tick();
  EXPECT_EQ(rig.calls, Calls());

  playback.StopPlayback();
  EXPECT_FALSE(follows);
  EXPECT_FALSE(isShownPlaying);
}

TEST_P(ContinuousPlayTest, PlaysOnAsSoonAsATaskIsSelectedAfterTheEnd) {
  AfterTheEnd(std::nullopt);
  selected = 0;
  playback.TimerVis_Tick();
  EXPECT_EQ(rig.calls, RunOf(0, {"radio off", "exists? song", "url song", "play", "show playing 0",
                                 "follow position"}));
  playback.TimerVis_Tick();
  EXPECT_TRUE(follows) << "from the beginning";
}

INSTANTIATE_TEST_SUITE_P(, ContinuousPlayTest, testing::Values(End::kStaysAtTheEnd, End::kRewinds),
                         [](const auto& end) {
                           return end.param == End::kRewinds ? "Rewinding" : "StayingAtTheEnd";
                         });

}  // namespace
}  // namespace tellurvane

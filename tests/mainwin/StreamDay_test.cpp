// A day of an hourly stream that breaks off again and again, with other tasks in between.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "mainwin/PlaybackController.h"
#include "tests/mainwin/FakePlayer.h"
#include "tests/scheduler/RunnerFixture.h"

namespace tellurvane {
namespace {

constexpr std::int64_t kHour = 3'600;
constexpr int kRunsEach = 24;  // one an hour
const DateSerial kStart = At(2011, 2, 14, 6, 59, 30);
// Seconds: a try that never opens is lost after 31, and the next one comes 60 later.
constexpr std::int64_t kLongestSilence = 31 + 60 + 1;

class NoView : public PlaybackView {
  void ShowPlaying(size_t) override {}
  void ShowStopped() override {}
  void ShowSign(PlaybackSign) override {}
  void ShowOutcome(const RunOutcome&) override {}
  void EnablePosition(bool) override {}
  void PositionRange(double) override {}
  void PositionValue(double) override {}
  void EnableTimerVis(bool) override {}
  void EnableTimerOpening(bool) override {}
};

// The runner with the real playback, on a clock of its own.
class StreamDay : public RunnerFixture {
 public:
  StreamDay() {
    now = kStart;
    player_.whilePlaying = [this] { Connect(); };
    AddHourly(kReminderNote, L"note", 20);
    AddHourly(kInternetRadio, L"stream", 0);
    AddHourly(kApplication, L"program", 40);
    AddHourly(kLocalMusic, L"music", 50);
    AddHourly(kReminderNote, L"disabled", 10).Enabled = false;
  }

  void Live() {
    for (second_ = 1; second_ <= kRunsEach * kHour; ++second_) {
      now = SerialFromSeconds(SecondsFromSerial(kStart) + second_);
      runner.Tick();
      player_.state = StateNow();
      const size_t before = player_.calls.size();
      playback_.TimerSet_Tick(true);
      NoteTry(before);
      if (StateNow() == kPlayingState) playedAt_ = second_;
      const std::int64_t silence = second_ - std::max(startedAt_, playedAt_);
      if (isStreaming_) longestSilence_ = std::max(longestSilence_, silence);
    }
  }

  void StopPlayback() override {
    isStreaming_ = false;
    playback_.StopPlayback();
  }
  void SetRadioFlag(bool isRadio) override { playback_.SetRadioFlag(isRadio); }
  void SetUrl(const std::wstring& url) override {
    // The fixture's list of calls has it too.
    RunnerFixture::SetUrl(url);
    playback_.SetUrl(url);
  }
  void Play() override { playback_.Play(); }
  void ShowPlaying(size_t row) override {
    isStreaming_ = tasks[row].MediaType == kInternetRadio;
    playback_.ShowPlaying(row);
  }
  void FollowPosition() override {}

  size_t CallsOf(const std::string& beginning) const {
    const auto begins = [&](const std::string& call) { return call.starts_with(beginning); };
    return static_cast<size_t>(std::ranges::count_if(calls, begins));
  }
  size_t PlayerCallsOf(const std::wstring& call) const {
    return static_cast<size_t>(std::ranges::count(player_.calls, call));
  }
  size_t Tries() const { return tries_; }
  std::int64_t LongestSilence() const { return longestSilence_; }

 private:
  TaskRecord& AddHourly(MediaType type, const std::wstring& name, int minute) {
    TaskRecord& task = Add(type, name, At(2011, 2, 14, 7, minute));
    task.Name = name;
    task.IntervalUnit = kHours;
    task.Interval = 1;
    return task;
  }

  // The next start of the player: refused, never open, or open for some time.
  void Connect() {
    startedAt_ = second_;
    const std::uint32_t fate = random_() % 4;
    opensAfter_ = fate == 0 ? 100'000 : static_cast<int>(random_() % 40);
    playsFor_ = fate == 1 ? 0 : static_cast<int>(random_() % 300);
  }
  int StateNow() const {
    const std::int64_t since = second_ - startedAt_;
    if (playsFor_ == 0) return kReadyState;
    if (since < opensAfter_) return kTransitioningState;
    return since < opensAfter_ + playsFor_ ? kPlayingState : kStoppedState;
  }
  // A try sets the address and plays, and does nothing else.
  void NoteTry(size_t before) {
    if (player_.calls.size() == before) return;
    ASSERT_TRUE(isStreaming_);
    ASSERT_EQ(std::vector(player_.calls.begin() + static_cast<std::ptrdiff_t>(before),
                          player_.calls.end()),
              (std::vector<std::wstring>{L"url stream", L"play"}));
    ++tries_;
  }

  std::mt19937 random_{20'110'214};
  FakePlayer player_;
  NoView view_;
  bool radioFlag_ = false;
  std::int64_t second_ = 0;
  std::int64_t startedAt_ = 0;
  int opensAfter_ = 0;
  int playsFor_ = 0;
  bool isStreaming_ = false;
  std::int64_t playedAt_ = 0;
  std::int64_t longestSilence_ = 0;
  size_t tries_ = 0;
  PlaybackController playback_{
      player_,
      view_,
      radioFlag_,
      {.songLoop = [] { return false; },
       .runSelectedTask = [] {},
       .writeSavedVolume = [](std::int32_t) {},
       .milliseconds = [this] { return static_cast<std::uint64_t>(second_) * 1'000; },
       .keepAwake = [](bool) {}}};
};

TEST(StreamDayTest, EachTaskRunsOnceAnHourWhileALostStreamIsTriedAgain) {
  StreamDay day;
  day.Live();
  for (const char* const start : {"url stream", "url music", "command program", "note note"}) {
    EXPECT_EQ(day.CallsOf(start), size_t{kRunsEach}) << start;
  }
  EXPECT_EQ(day.CallsOf("note disabled"), 0U);
  constexpr size_t kRuns = 4 * kRunsEach;
  EXPECT_EQ(day.CallsOf("save"), kRuns);
  EXPECT_EQ(day.PlayerCallsOf(L"stop"), kRuns) << "one for each run, none for a try";
  for (const TaskRecord& task : day.tasks) {
    EXPECT_EQ(SecondsFromSerial(task.NextRun) / kHour,
              SecondsFromSerial(At(2011, 2, 15, 7)) / kHour)
        << testing::PrintToString(task.Name);
    // The last run is the one of the last hour, in the second in which it fell due.
    const std::int64_t due = SecondsFromSerial(task.NextRun) - kHour;
    EXPECT_EQ(task.Enabled ? SecondsFromSerial(task.LastRun) : 0, task.Enabled ? due : 0)
        << testing::PrintToString(task.Name);
  }
  // Both would be wrong if it gave up, or if it tried each second.
  EXPECT_GT(day.Tries(), size_t{kRunsEach});
  EXPECT_LT(day.Tries(), size_t{kRunsEach} * 40);
  EXPECT_LE(day.LongestSilence(), kLongestSilence);
}

}  // namespace
}  // namespace tellurvane

// A month of a large list: every due moment is run exactly once, whatever the clock does. Days of
// simulated time: TELLURVANE_SOAK_DAYS, or as many as a quick run has time for.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "scheduler/TaskRunner.h"
#include "tests/scheduler/TaskListFixture.h"
#include "tests/support/HostDates.h"

namespace tellurvane {
namespace {

constexpr size_t kTaskCount = 200;
constexpr long kQuickDays = 2;
constexpr std::int64_t kHour = 3'600;
// A timer of one second comes with every 65th beat of the system's 64 a second.
constexpr std::int64_t kTickMicroseconds = 65'000'000 / 64;
constexpr std::int64_t kSecond = 1'000'000;
constexpr std::uint32_t kSeed = 20'110'214;

std::int64_t SoakDays() {
  const char* const wanted = std::getenv("TELLURVANE_SOAK_DAYS");
  return wanted == nullptr ? kQuickDays : std::max(std::strtol(wanted, nullptr, 10), 1L);
}

std::int64_t SecondsOf(std::int32_t unit) {
  const std::int64_t seconds[] = {60, kHour, kSecondsPerDay};
  return seconds[unit];
}

// Runs a list on a clock of its own and writes down at which tick each task ran.
class Soak : public TaskRows, public TaskTimer, public TaskPlayer {
 public:
  Soak() : runs(kTaskCount) {
    std::mt19937 random(kSeed);
    const auto upTo = [&](std::uint32_t limit) {
      return static_cast<std::int32_t>(random() % limit);
    };
    for (size_t i = 0; i < kTaskCount; ++i) {
      TaskRecord& task = list.emplace_back();
      task.Enabled = i % 7 != 3;
      task.MediaType = upTo(4);
      task.Name = L"task " + std::to_wstring(i);
      task.Source = std::to_wstring(i);
      task.IntervalUnit = upTo(3);
      const std::uint32_t limits[] = {60, 24, 7};
      task.Interval = 1 + upTo(limits[task.IntervalUnit]);
      // Many fall due together, the others at any second.
      const std::int64_t offset = upTo(3) == 0 ? kHour : upTo(2 * kSecondsPerDay);
      task.NextRun = SerialFromSeconds(start_ + 1 + offset);
    }
    planned_ = list;
  }

  // Lives on for so long; every now and then the program is left and started again.
  void Live(std::int64_t seconds) {
    const std::int64_t end = elapsed_ + seconds * kSecond;
    while (elapsed_ < end) {
      elapsed_ += kTickMicroseconds;
      ticks_.push_back(Now());
      ranLast_ = -1;
      ASSERT_TRUE(isTimerOn_ && interval_ == kTaskTimerMilliseconds);
      runner_.Tick();
      if (ticks_.size() % kTicksToRestart == 0) Restart();
    }
  }

  void Jump(std::int64_t seconds) { start_ += seconds; }

  // The moments at which a task was to run, as ticks: for each due moment the first tick at which
  // it had come. Several moments that had come by one tick are one run.
  std::vector<size_t> Expected(size_t index) const {
    std::vector<size_t> expected;
    const TaskRecord& task = planned_[index];
    if (!task.Enabled) return expected;
    std::int64_t due = SecondsFromSerial(task.NextRun);
    for (size_t tick = 0; tick < ticks_.size(); ++tick) {
      if (ticks_[tick] < due) continue;
      expected.push_back(tick);
      while (due <= ticks_[tick]) due += SecondsOf(task.IntervalUnit) * task.Interval;
    }
    return expected;
  }

  void ExpectEachMomentRunOnce() const {
    size_t count = 0;
    for (size_t i = 0; i < kTaskCount; ++i) {
      EXPECT_EQ(runs[i], Expected(i)) << "task " << i;
      count += runs[i].size();
    }
    EXPECT_GT(count, kTaskCount);
    EXPECT_FALSE(isOutOfOrder);
  }

  // How many due moments a task has had, by division alone.
  std::int64_t DueMoments(size_t index) const {
    const TaskRecord& task = planned_[index];
    const std::int64_t first = SecondsFromSerial(task.NextRun);
    if (!task.Enabled || ticks_.back() < first) return 0;
    return (ticks_.back() - first) / (SecondsOf(task.IntervalUnit) * task.Interval) + 1;
  }

  TaskList list;
  std::vector<std::vector<size_t>> runs;  // of each task, the numbers of the ticks
  bool isOutOfOrder = false;
  size_t restarts = 0;

  size_t RowCount() override { return list.size(); }
  void SelectRow(size_t) override {}
  void RefreshRow(size_t) override {}
  void EnableArea(bool) override {}
  void SetRedraw(bool) override {}
  void SetInterval(unsigned milliseconds) override { interval_ = milliseconds; }
  void SetEnabled(bool enable) override { isTimerOn_ = enable; }
  void PostTick() override {}
  std::uint64_t Milliseconds() override { return static_cast<std::uint64_t>(elapsed_ / 1'000); }
  void StopPlayback() override {}
  void SetRadioFlag(bool) override {}
  void SetUrl(const std::wstring& url) override { Ran(url); }
  void Play() override {}
  void ShowPlaying(size_t) override {}
  void FollowPosition() override {}

 private:
  static constexpr size_t kTicksToRestart = 10'007;

  std::int64_t Now() const { return start_ + elapsed_ / kSecond; }

  // The source of each task is its number.
  void Ran(const std::wstring& source) {
    const int task = std::stoi(source);
    isOutOfOrder |= task <= ranLast_;
    ranLast_ = task;
    runs[static_cast<size_t>(task)].push_back(ticks_.size() - 1);
  }

  void Restart() {
    disk_.now = SerialFromSeconds(Now());
    ASSERT_TRUE(disk_.file.Save(list));
    ASSERT_TRUE(disk_.file.Load(list));
    ASSERT_EQ(list.size(), kTaskCount);
    ++restarts;
  }

  TaskActions Actions() {
    return {.pathExists = [](const std::wstring&) { return true; },
            .startCommand = [this](const std::wstring& line) { Ran(line); },
            .showNote = [this](const std::wstring& text, const std::wstring&) { Ran(text); },
            // The whole list at each of some hundred thousand runs would be most of the test.
            .saveList = [] {},
            .processPendingMessages = [] {}};
  }

  std::int64_t start_ = SecondsFromSerial(At(2011, 2, 14, 12));
  std::int64_t elapsed_ = 0;  // microseconds
  std::vector<std::int64_t> ticks_;
  int ranLast_ = -1;
  unsigned interval_ = kTaskTimerMilliseconds;
  bool isTimerOn_ = true;
  TaskList planned_;
  TaskListFixture disk_;
  TaskRunner runner_{list, *this, *this, *this, Actions(), HostDateWriter(ZhTw()), [this] {
                       return SerialFromSeconds(Now());
                     }};
};

TEST(SoakTest, EveryDueMomentRunsOnceOverManyDays) {
  Soak soak;
  soak.Live(SoakDays() * kSecondsPerDay);
  soak.ExpectEachMomentRunOnce();
  EXPECT_GT(soak.restarts, 0U);
  for (size_t i = 0; i < kTaskCount; ++i) {
    EXPECT_EQ(static_cast<std::int64_t>(soak.runs[i].size()), soak.DueMoments(i)) << "task " << i;
  }
}

// The clock is set for daylight saving, or the machine has slept.
TEST(SoakTest, AfterAJumpOfTheClockEachOverdueTaskRunsOnce) {
  for (const std::int64_t jump : {-kHour, kHour, kSecondsPerDay}) {
    SCOPED_TRACE(jump);
    Soak soak;
    soak.Live(6 * kHour + 1'234);
    const auto before = soak.runs;
    soak.Jump(jump);
    soak.Live(1);
    for (size_t i = 0; i < kTaskCount; ++i) {
      EXPECT_LE(soak.runs[i].size(), before[i].size() + 1) << "task " << i;
    }
    soak.Live(3 * kHour);
    soak.ExpectEachMomentRunOnce();
  }
}

}  // namespace
}  // namespace tellurvane

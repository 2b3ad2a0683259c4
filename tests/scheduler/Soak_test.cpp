// A month of a large list: every due moment is run exactly once, whatever the clock does. Days of
// simulated time: TELLURVANE_SOAK_DAYS, or as many as a quick run has time for.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>

#include "tests/scheduler/RunnerFixture.h"
#include "tests/scheduler/TaskListFixture.h"

namespace tellurvane {
namespace {

constexpr size_t kTaskCount = 200;
constexpr long kQuickDays = 2;
constexpr size_t kTicksToRestart = 10'007;
constexpr std::int64_t kHour = 3'600;
constexpr std::int64_t kSecond = 1'000'000;
// A timer of one second comes with every 65th beat of the system's 64 a second.
constexpr std::int64_t kTickMicroseconds = 65'000'000 / 64;

std::int64_t SoakDays() {
  const char* const wanted = std::getenv("TELLURVANE_SOAK_DAYS");
  return wanted == nullptr ? kQuickDays : std::max(std::strtol(wanted, nullptr, 10), 1L);
}

// Runs a list on a clock of its own and writes down at which tick each task ran.
class Soak : public RunnerFixture {
 public:
  Soak() {
    std::mt19937 random(20'110'214);
    const auto upTo = [&](std::uint32_t limit) {
      return static_cast<std::int32_t>(random() % limit);
    };
    for (size_t i = 0; i < kTaskCount; ++i) {
      // Many fall due together, the others at any second.
      const std::int64_t offset = upTo(3) == 0 ? kHour : upTo(2 * kSecondsPerDay);
      TaskRecord& task = Add(static_cast<MediaType>(upTo(4)), std::to_wstring(i),
                             SerialFromSeconds(start_ + 1 + offset));
      task.Enabled = i % 7 != 3;
      task.IntervalUnit = upTo(3);
      const std::uint32_t limits[] = {60, 24, 7};
      task.Interval = 1 + upTo(limits[task.IntervalUnit]);
    }
    planned_ = tasks;
    for (const char* const start : {"url", "command", "note"}) on[start] = [this] { Ran(); };
  }

  // Lives on for so long; every now and then the program is left and started again.
  void Live(std::int64_t seconds) {
    const std::int64_t end = elapsed_ + seconds * kSecond;
    while (elapsed_ < end) {
      elapsed_ += kTickMicroseconds;
      ticks_.push_back(start_ + elapsed_ / kSecond);
      now = SerialFromSeconds(ticks_.back());
      calls.clear();
      ranLast_ = -1;
      runner.Tick();
      ASSERT_TRUE(isTimerOn && interval == kTaskTimerMilliseconds);
      if (ticks_.size() % kTicksToRestart == 0) Restart();
    }
  }

  void Jump(std::int64_t seconds) { start_ += seconds; }

  void ExpectEachMomentRunOnce() const {
    size_t count = 0;
    for (size_t i = 0; i < kTaskCount; ++i) {
      EXPECT_EQ(runs_[i], Expected(planned_[i])) << "task " << i;
      count += runs_[i].size();
    }
    EXPECT_GT(count, kTaskCount);
  }

 private:
  // The moments at which a task was to run, as ticks: for each due moment the first tick at which
  // it had come. Several moments that had come by one tick are one run.
  std::vector<size_t> Expected(const TaskRecord& task) const {
    std::vector<size_t> expected;
    if (!task.Enabled) return expected;
    const std::int64_t units[] = {60, kHour, kSecondsPerDay};
    std::int64_t due = SecondsFromSerial(task.NextRun);
    for (size_t tick = 0; tick < ticks_.size(); ++tick) {
      if (ticks_[tick] < due) continue;
      expected.push_back(tick);
      while (due <= ticks_[tick]) due += units[task.IntervalUnit] * task.Interval;
    }
    return expected;
  }

  // The source of each task is its number. It follows the name of the last call.
  void Ran() {
    const int task = std::stoi(calls.back().substr(calls.back().find(' ')));
    EXPECT_GT(task, ranLast_) << "not in the order of the list";
    ranLast_ = task;
    runs_[static_cast<size_t>(task)].push_back(ticks_.size() - 1);
  }

  void Restart() {
    disk_.now = now;
    ASSERT_TRUE(disk_.file.Save(tasks));
    ASSERT_TRUE(disk_.file.Load(tasks));
    ASSERT_EQ(tasks.size(), kTaskCount);
  }

  std::int64_t start_ = SecondsFromSerial(At(2011, 2, 14, 12));
  std::int64_t elapsed_ = 0;  // microseconds
  std::vector<std::int64_t> ticks_;
  std::vector<std::vector<size_t>> runs_{kTaskCount};  // of each task, the numbers of the ticks
  int ranLast_ = -1;
  TaskList planned_;
  TaskListFixture disk_;
};

TEST(SoakTest, EveryDueMomentRunsOnceOverManyDaysAndAfterAJumpOfTheClock) {
  Soak soak;
  soak.Live(SoakDays() * kSecondsPerDay);
  // The clock is set for daylight saving, or the machine has slept.
  for (const std::int64_t jump : {-kHour, kHour, kSecondsPerDay}) {
    soak.Jump(jump);
    soak.Live(3 * kHour);
  }
  soak.ExpectEachMomentRunOnce();
}

}  // namespace
}  // namespace tellurvane

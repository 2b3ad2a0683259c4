// Ticks; what one run does is in TaskRunnerExecute_test.cpp.
#include "scheduler/TaskRunner.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/scheduler/RunnerFixture.h"

namespace tellurvane {
namespace {

const Calls kTickBegins = {"timer off"};
const Calls kTimerOn = {"interval 1000", "timer on"};
const Calls kIdleEnd = Calls{"interval 30000"} + kTimerOn;
const Calls kEndAfterRuns = Calls{"interval 30000", "redraw on", "area on", "messages"} + kTimerOn;

Calls CommandRun(const std::string& row, const std::string& command) {
  return {"area off",           "redraw off", "select " + row, "stop",
          "command " + command, "save",       "refresh " + row};
}

TEST(TaskRunnerTickTest, RunsWhatIsDueAndMovesWhatIsDisabled) {
  const DateSerial noon = At(2011, 2, 14, 12);
  const struct {
    const char* name;
    DateSerial nextRun;
    bool isEnabled, runs;
    DateSerial expected;
    std::int32_t interval = 30;
  } rows[] = {
      {"a second ago", At(2011, 2, 14, 12, 0, 9), true, true, At(2011, 2, 14, 12, 30, 9)},
      {"right now", At(2011, 2, 14, 12, 0, 10), true, true, At(2011, 2, 14, 12, 30, 10)},
      {"in a second", At(2011, 2, 14, 12, 0, 11), true, false, At(2011, 2, 14, 12, 0, 11)},
      {"in an hour", At(2011, 2, 14, 13), true, false, At(2011, 2, 14, 13)},
      {"yesterday", At(2011, 2, 13, 12), true, true, At(2011, 2, 14, 12, 30)},
      {"disabled", noon, false, false, At(2011, 2, 14, 12, 30)},
      {"disabled, right now", At(2011, 2, 14, 12, 0, 10), false, false,
       At(2011, 2, 14, 12, 30, 10)},
      {"without a schedule", noon, true, false, noon, 0},
  };
  for (const auto& row : rows) {
    RunnerFixture fixture;
    TaskRecord& task = fixture.Add(kApplication, L"tool", row.nextRun);
    task.Enabled = row.isEnabled;
    task.Interval = row.interval;
    task.LastRun = At(2011, 2, 1);
    fixture.runner.Tick();
    EXPECT_EQ(task.LastRun, row.runs ? fixture.now : At(2011, 2, 1)) << row.name;
    EXPECT_EQ(task.RunStarted, row.runs ? fixture.now : 0) << row.name;
    EXPECT_EQ(task.NextRun, row.expected) << row.name;
    EXPECT_EQ(fixture.interval, 1'000U) << row.name;
    EXPECT_TRUE(fixture.isTimerOn) << row.name;
    EXPECT_FALSE(fixture.runner.IsBusy()) << row.name;
  }
}

TEST(TaskRunnerTickTest, WithNothingDueOnlyTheTimerAndADisabledRowAreTouched) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"later", At(2011, 2, 14, 13));
  fixture.runner.Tick();
  EXPECT_EQ(fixture.calls, kTickBegins + kIdleEnd);
  fixture.calls.clear();
  fixture.Add(kApplication, L"disabled").Enabled = false;
  fixture.runner.Tick();
  EXPECT_EQ(fixture.calls, kTickBegins + Calls{"refresh 1"} + kIdleEnd);
}

TEST(TaskRunnerTickTest, AllThatIsDueRunsInListOrder) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"one");
  fixture.Add(kApplication, L"later", At(2011, 2, 14, 13));
  fixture.Add(kApplication, L"two", At(2011, 2, 14, 11));
  fixture.surplusRows = 3;  // rows without a task are left alone
  fixture.on["messages"] = [&] {
    EXPECT_FALSE(fixture.runner.IsBusy());
    EXPECT_FALSE(fixture.isTimerOn);
  };
  // Due only once the others have run.
  fixture.Add(kApplication, L"three", At(2011, 2, 14, 12, 0, 16));
  // Each at the moment of its own run.
  fixture.on["command"] = [&] { fixture.now += 3.0 / 86'400; };
  const DateSerial start = fixture.now;
  fixture.runner.Tick();
  EXPECT_EQ(fixture.calls, kTickBegins + CommandRun("0", "one") + CommandRun("2", "two") +
                               CommandRun("3", "three") + kEndAfterRuns);
  EXPECT_EQ(fixture.tasks[0].RunStarted, start);
  EXPECT_EQ(fixture.tasks[0].LastRun, start + 3.0 / 86'400);
  EXPECT_EQ(fixture.tasks[2].RunStarted, start + 3.0 / 86'400);
  EXPECT_EQ(fixture.tasks[2].LastRun, start + 3.0 / 86'400 + 3.0 / 86'400);
  EXPECT_EQ(fixture.tasks[1].LastRun, 0);
}

TEST(TaskRunnerTickTest, ChoosesTheShortIntervalWhenATaskIsAboutToFallDue) {
  const DateSerial far = At(2011, 2, 15);
  const struct {
    std::vector<DateSerial> nextRuns;
    bool enabled;
    const char* expected;
  } rows[] = {
      {{}, true, "interval 30000"},
      {{far}, true, "interval 30000"},
      {{At(2011, 2, 14, 12, 2)}, true, "interval 30000"},     // two boundaries away
      {{At(2011, 2, 14, 12, 1, 59)}, true, "interval 2000"},  // one
      {{At(2011, 2, 14, 12, 0, 11)}, true, "interval 2000"},  // none
      {{far, At(2011, 2, 14, 12, 1), far}, true, "interval 2000"},
      {{At(2011, 2, 14, 12, 1)}, false, "interval 2000"},  // disabled ones count
      {{At(2011, 2, 14, 11)}, true, "interval 30000"},     // moved on by its run first
      {{At(2011, 3, 14), At(2011, 4, 14)}, true, "interval 30000"},
  };
  for (const auto& row : rows) {
    RunnerFixture fixture;
    for (const DateSerial nextRun : row.nextRuns) {
      fixture.Add(kApplication, L"tool", nextRun).Enabled = row.enabled;
    }
    fixture.runner.Tick();
    EXPECT_EQ(std::count(fixture.calls.begin(), fixture.calls.end(), row.expected), 1)
        << row.expected << " and " << &row - rows;
  }
}

TEST(TaskRunnerTickTest, ReckonsTheMinutesFromTheMomentAfterARun) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"first", At(2011, 2, 14, 12, 4));
  fixture.Add(kApplication, L"slow");
  fixture.Add(kApplication, L"last", At(2011, 2, 14, 12, 5));
  fixture.on["command"] = [&] { fixture.now = At(2011, 2, 14, 12, 4, 10); };
  fixture.runner.Tick();
  // Four minutes from the moment of the first row; one from that of the last.
  const Calls end = Calls{"interval 2000", "redraw on", "area on", "messages"} + kTimerOn;
  EXPECT_EQ(fixture.calls, kTickBegins + CommandRun("1", "slow") + end);
}

TEST(TaskRunnerTickTest, ATickWithinATickDoesNothing) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"one");
  fixture.Add(kApplication, L"two");
  int nested = 0;
  for (const char* const call : {"timer off", "area off", "stop", "command", "save", "redraw on"}) {
    fixture.on[call] = [&] {
      EXPECT_TRUE(fixture.runner.IsBusy());
      const size_t before = fixture.calls.size();
      fixture.runner.Tick();
      EXPECT_EQ(fixture.calls.size(), before);
      ++nested;
    };
  }
  fixture.runner.Tick();
  EXPECT_EQ(nested, 1 + 2 * 4 + 1);
}

TEST(TaskRunnerTickTest, ARunThatShortensTheListEndsTheTick) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"one");
  fixture.Add(kApplication, L"two");
  fixture.on["save"] = [&] { fixture.tasks.clear(); };
  fixture.runner.Tick();
  EXPECT_EQ(fixture.calls, kTickBegins + CommandRun("0", "one") + kEndAfterRuns);
}

}  // namespace
}  // namespace tellurvane

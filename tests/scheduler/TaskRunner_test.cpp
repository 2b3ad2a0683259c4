// Ticks; what one run does is in TaskRunnerExecute_test.cpp.
#include "scheduler/TaskRunner.h"

#include <gtest/gtest.h>

#include "tests/scheduler/RunnerFixture.h"
#include "tests/scheduler/TaskListFixture.h"

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

TEST(TaskRunnerTickTest, WithNothingDueOnlyTheTimerIsTouched) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"later", At(2011, 2, 14, 13));
  fixture.runner.Tick();
  EXPECT_EQ(fixture.calls, kTickBegins + kIdleEnd);
  EXPECT_EQ(fixture.tasks[0].NextRun, At(2011, 2, 14, 13));
  EXPECT_EQ(fixture.tasks[0].RunStarted, 0);
}

TEST(TaskRunnerTickTest, ADueTaskRunsInThisOrder) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"tool");
  fixture.runner.Tick();
  EXPECT_EQ(fixture.calls, kTickBegins + CommandRun("0", "tool") + kEndAfterRuns);
  EXPECT_EQ(fixture.tasks[0].RunStarted, fixture.now);
  EXPECT_EQ(fixture.tasks[0].LastRun, fixture.now);
  EXPECT_EQ(fixture.tasks[0].NextRun, At(2011, 2, 14, 12, 30));
}

TEST(TaskRunnerTickTest, DueBeginsWithTheMomentItself) {
  const struct {
    DateSerial nextRun;
    bool runs;
  } rows[] = {
      {At(2011, 2, 14, 12, 0, 9), true},
      {At(2011, 2, 14, 12, 0, 10), true},
      {At(2011, 2, 14, 12, 0, 11), false},
      {At(2011, 2, 13), true},
  };
  for (const auto& row : rows) {
    RunnerFixture fixture;
    fixture.Add(kApplication, L"tool", row.nextRun);
    fixture.runner.Tick();
    EXPECT_EQ(fixture.tasks[0].LastRun == fixture.now, row.runs) << row.nextRun;
    EXPECT_TRUE(IsEarlier(fixture.now, fixture.tasks[0].NextRun)) << row.nextRun;
  }
}

TEST(TaskRunnerTickTest, AllThatIsDueRunsInListOrder) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"one");
  fixture.Add(kApplication, L"later", At(2011, 2, 14, 13));
  fixture.Add(kApplication, L"two", At(2011, 2, 14, 11));
  // Each at the moment of its own run.
  fixture.on["command"] = [&] { fixture.now += 3.0 / 86'400; };
  const DateSerial start = fixture.now;
  fixture.runner.Tick();
  EXPECT_EQ(fixture.calls,
            kTickBegins + CommandRun("0", "one") + CommandRun("2", "two") + kEndAfterRuns);
  EXPECT_EQ(fixture.tasks[0].RunStarted, start);
  EXPECT_EQ(fixture.tasks[0].LastRun, start + 3.0 / 86'400);
  EXPECT_EQ(fixture.tasks[2].RunStarted, start + 3.0 / 86'400);
  EXPECT_EQ(fixture.tasks[2].LastRun, fixture.now);
  EXPECT_EQ(fixture.tasks[1].LastRun, 0);
}

TEST(TaskRunnerTickTest, OfSeveralThatPlayTheLastOneIsHeardAndEachIsRecorded) {
  RunnerFixture fixture;
  fixture.Add(kLocalMusic, L"first");
  fixture.Add(kInternetRadio, L"second");
  fixture.Add(kLocalMusic, L"last");
  fixture.runner.Tick();
  std::vector<std::string> sources;
  for (const std::string& call : fixture.calls) {
    if (call.starts_with("url")) sources.push_back(call);
  }
  EXPECT_EQ(sources, (Calls{"url first", "url second", "url last"}));
  for (const TaskRecord& task : fixture.tasks) EXPECT_EQ(task.LastRun, fixture.now);
}

TEST(TaskRunnerTickTest, ATaskThatFallsDueWhileAnotherRunsIsRunToo) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"slow");
  fixture.Add(kApplication, L"next", At(2011, 2, 14, 12, 0, 20));
  fixture.on["command"] = [&] { fixture.now = At(2011, 2, 14, 12, 0, 20); };
  fixture.runner.Tick();
  EXPECT_EQ(fixture.tasks[1].LastRun, At(2011, 2, 14, 12, 0, 20));
}

// While the editor is open the timer is off; whatever it did, the list is loaded anew when it
// closes.
TEST(TaskRunnerTickTest, ATaskThatFallsDueWhileTheTimerIsOffIsMovedByTheReloadAndNotRun) {
  for (const bool isReloaded : {true, false}) {
    RunnerFixture fixture;
    fixture.Add(kApplication, L"tool", At(2011, 2, 14, 12, 0, 20));
    TaskListFixture list;
    ASSERT_TRUE(list.file.Save(fixture.tasks));

    fixture.runner.SetTaskTimer(false);
    fixture.now = list.now = At(2011, 2, 14, 12, 5);
    if (isReloaded) {
      ASSERT_TRUE(list.file.Load(fixture.tasks));
    }
    fixture.runner.SetTaskTimer(true);
    fixture.calls.clear();
    fixture.runner.Tick();

    const Calls noRun = kTickBegins + kIdleEnd;
    const Calls run = kTickBegins + CommandRun("0", "tool") + kEndAfterRuns;
    EXPECT_EQ(fixture.calls, isReloaded ? noRun : run);
    EXPECT_EQ(fixture.tasks[0].LastRun, isReloaded ? 0 : fixture.now);
    EXPECT_EQ(fixture.tasks[0].NextRun, At(2011, 2, 14, 12, 30, 20));
  }
}

TEST(TaskRunnerTickTest, ADisabledDueTaskIsMovedAndNotRun) {
  RunnerFixture fixture;
  TaskRecord& task = fixture.Add(kApplication, L"tool", At(2011, 2, 14, 11, 45));
  task.Enabled = false;
  task.LastRun = At(2011, 2, 13);
  fixture.runner.Tick();
  EXPECT_EQ(fixture.calls, kTickBegins + Calls{"refresh 0"} + kIdleEnd);
  EXPECT_EQ(task.NextRun, At(2011, 2, 14, 12, 15));
  EXPECT_EQ(task.LastRun, At(2011, 2, 13));
  EXPECT_EQ(task.RunStarted, 0);
}

TEST(TaskRunnerTickTest, ADisabledTaskDueRightNowIsMovedIntoTheFuture) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"tool", fixture.now).Enabled = false;
  fixture.runner.Tick();
  EXPECT_EQ(fixture.tasks[0].NextRun, At(2011, 2, 14, 12, 30, 10));
}

TEST(TaskRunnerTickTest, ATaskWithoutAScheduleNeverFires) {
  const struct {
    std::int32_t unit, interval;
  } rows[] = {{-1, 1}, {3, 1}, {0, 0}, {0, -1}, {2147483647, 1}, {0, -2147483647 - 1}};
  for (const auto& row : rows) {
    for (const bool enabled : {true, false}) {
      RunnerFixture fixture;
      TaskRecord& task = fixture.Add(kApplication, L"tool", At(2011, 2, 14, 12));
      task.IntervalUnit = row.unit;
      task.Interval = row.interval;
      task.Enabled = enabled;
      fixture.runner.Tick();
      EXPECT_EQ(fixture.calls, kTickBegins + Calls{"interval 2000"} + kTimerOn) << row.unit;
      EXPECT_EQ(task.NextRun, At(2011, 2, 14, 12)) << row.unit << ' ' << row.interval;
    }
  }
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
    const std::string* chosen = nullptr;
    fixture.runner.Tick();
    for (const std::string& call : fixture.calls) {
      if (chosen == nullptr && call.starts_with("interval")) chosen = &call;
    }
    ASSERT_NE(chosen, nullptr);
    EXPECT_EQ(*chosen, row.expected) << (row.nextRuns.empty() ? 0 : row.nextRuns.front());
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

TEST(TaskRunnerTickTest, LeavesTheTimerOnAtOneSecondWhateverItChose) {
  for (const DateSerial nextRun :
       {At(2011, 2, 14, 11), At(2011, 2, 14, 12, 1), At(2011, 2, 15), At(9999, 12, 31)}) {
    for (const bool enabled : {true, false}) {
      RunnerFixture fixture;
      fixture.Add(kApplication, L"tool", nextRun).Enabled = enabled;
      fixture.runner.Tick();
      EXPECT_EQ(fixture.interval, 1'000U);
      EXPECT_TRUE(fixture.isTimerOn);
      EXPECT_FALSE(fixture.runner.IsBusy());
    }
  }
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
  EXPECT_EQ(fixture.calls,
            kTickBegins + CommandRun("0", "one") + CommandRun("1", "two") + kEndAfterRuns);
}

TEST(TaskRunnerTickTest, MessagesArePumpedOnceAndWithoutTheBusyFlag) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"one");
  fixture.Add(kApplication, L"two");
  int pumped = 0;
  fixture.on["messages"] = [&] {
    ++pumped;
    EXPECT_FALSE(fixture.runner.IsBusy());
    EXPECT_FALSE(fixture.isTimerOn);
  };
  fixture.runner.Tick();
  EXPECT_EQ(pumped, 1);
}

TEST(TaskRunnerTickTest, RowsWithoutATaskAreLeftAlone) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"tool");
  fixture.surplusRows = 3;
  fixture.runner.Tick();
  EXPECT_EQ(fixture.calls, kTickBegins + CommandRun("0", "tool") + kEndAfterRuns);
}

TEST(TaskRunnerTickTest, ARunThatShortensTheListEndsTheTick) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"one");
  fixture.Add(kApplication, L"two");
  fixture.on["save"] = [&] { fixture.tasks.clear(); };
  fixture.runner.Tick();
  EXPECT_EQ(fixture.calls, kTickBegins + CommandRun("0", "one") + kEndAfterRuns);
}

TEST(TaskTimerTest, IsSetToOneSecondBeforeItIsSwitchedOn) {
  RunnerFixture fixture;
  fixture.runner.SetTaskTimer(true);
  EXPECT_EQ(fixture.calls, kTimerOn);
  fixture.calls.clear();
  fixture.runner.SetTaskTimer(false);
  EXPECT_EQ(fixture.calls, Calls{"timer off"});
}

}  // namespace
}  // namespace tellurvane

// Ticks; what one run does is in TaskRunnerExecute_test.cpp.
#include "scheduler/TaskRunner.h"

#include <gtest/gtest.h>

#include "tests/scheduler/RunnerRig.h"
#include "tests/scheduler/TaskListRig.h"

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
  RunnerRig rig;
  rig.Add(kApplication, L"later", At(2011, 2, 14, 13));
  rig.runner.Tick();
  EXPECT_EQ(rig.calls, kTickBegins + kIdleEnd);
  EXPECT_EQ(rig.tasks[0].NextRun, At(2011, 2, 14, 13));
  EXPECT_EQ(rig.tasks[0].RunStarted, 0);
}

TEST(TaskRunnerTickTest, ADueTaskRunsInThisOrder) {
  RunnerRig rig;
  rig.Add(kApplication, L"tool");
  rig.runner.Tick();
  EXPECT_EQ(rig.calls, kTickBegins + CommandRun("0", "tool") + kEndAfterRuns);
  EXPECT_EQ(rig.tasks[0].RunStarted, rig.now);
  EXPECT_EQ(rig.tasks[0].LastRun, rig.now);
  EXPECT_EQ(rig.tasks[0].NextRun, At(2011, 2, 14, 12, 30));
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
    RunnerRig rig;
    rig.Add(kApplication, L"tool", row.nextRun);
    rig.runner.Tick();
    EXPECT_EQ(rig.tasks[0].LastRun == rig.now, row.runs) << row.nextRun;
    EXPECT_TRUE(IsEarlier(rig.now, rig.tasks[0].NextRun)) << row.nextRun;
  }
}

TEST(TaskRunnerTickTest, AllThatIsDueRunsInListOrder) {
  RunnerRig rig;
  rig.Add(kApplication, L"one");
  rig.Add(kApplication, L"later", At(2011, 2, 14, 13));
  rig.Add(kApplication, L"two", At(2011, 2, 14, 11));
  // Each at the moment of its own run.
  rig.on["command"] = [&] { rig.now += 3.0 / 86'400; };
  const DateSerial start = rig.now;
  rig.runner.Tick();
  EXPECT_EQ(rig.calls,
            kTickBegins + CommandRun("0", "one") + CommandRun("2", "two") + kEndAfterRuns);
  EXPECT_EQ(rig.tasks[0].RunStarted, start);
  EXPECT_EQ(rig.tasks[0].LastRun, start + 3.0 / 86'400);
  EXPECT_EQ(rig.tasks[2].RunStarted, start + 3.0 / 86'400);
  EXPECT_EQ(rig.tasks[2].LastRun, rig.now);
  EXPECT_EQ(rig.tasks[1].LastRun, 0);
}

TEST(TaskRunnerTickTest, OfSeveralThatPlayTheLastOneIsHeardAndEachIsRecorded) {
  RunnerRig rig;
  rig.Add(kLocalMusic, L"first");
  rig.Add(kInternetRadio, L"second");
  rig.Add(kLocalMusic, L"last");
  rig.runner.Tick();
  std::vector<std::string> sources;
  for (const std::string& call : rig.calls) {
    if (call.starts_with("url")) sources.push_back(call);
  }
  EXPECT_EQ(sources, (Calls{"url first", "url second", "url last"}));
  for (const TaskRecord& task : rig.tasks) EXPECT_EQ(task.LastRun, rig.now);
}

TEST(TaskRunnerTickTest, ATaskThatFallsDueWhileAnotherRunsIsRunToo) {
  RunnerRig rig;
  rig.Add(kApplication, L"slow");
  rig.Add(kApplication, L"next", At(2011, 2, 14, 12, 0, 20));
  rig.on["command"] = [&] { rig.now = At(2011, 2, 14, 12, 0, 20); };
  rig.runner.Tick();
  EXPECT_EQ(rig.tasks[1].LastRun, At(2011, 2, 14, 12, 0, 20));
}

// While the editor is open the timer is off; whatever it did, the list is loaded anew when it
// closes.
TEST(TaskRunnerTickTest, ATaskThatFallsDueWhileTheTimerIsOffIsMovedByTheReloadAndNotRun) {
  for (const bool isReloaded : {true, false}) {
    RunnerRig rig;
    rig.Add(kApplication, L"tool", At(2011, 2, 14, 12, 0, 20));
    TaskListRig list;
    ASSERT_TRUE(list.file.Save(rig.tasks));

    rig.runner.SetTaskTimer(false);
    rig.now = list.now = At(2011, 2, 14, 12, 5);
    if (isReloaded) {
      ASSERT_TRUE(list.file.Load(rig.tasks));
    }
    rig.runner.SetTaskTimer(true);
    rig.calls.clear();
    rig.runner.Tick();

    const Calls noRun = kTickBegins + kIdleEnd;
    const Calls run = kTickBegins + CommandRun("0", "tool") + kEndAfterRuns;
    EXPECT_EQ(rig.calls, isReloaded ? noRun : run);
    EXPECT_EQ(rig.tasks[0].LastRun, isReloaded ? 0 : rig.now);
    EXPECT_EQ(rig.tasks[0].NextRun, At(2011, 2, 14, 12, 30, 20));
  }
}

TEST(TaskRunnerTickTest, ADisabledDueTaskIsMovedAndNotRun) {
  RunnerRig rig;
  TaskRecord& task = rig.Add(kApplication, L"tool", At(2011, 2, 14, 11, 45));
  task.Enabled = false;
  task.LastRun = At(2011, 2, 13);
  rig.runner.Tick();
  EXPECT_EQ(rig.calls, kTickBegins + Calls{"refresh 0"} + kIdleEnd);
  EXPECT_EQ(task.NextRun, At(2011, 2, 14, 12, 15));
  EXPECT_EQ(task.LastRun, At(2011, 2, 13));
  EXPECT_EQ(task.RunStarted, 0);
}

TEST(TaskRunnerTickTest, ADisabledTaskDueRightNowIsMovedIntoTheFuture) {
  RunnerRig rig;
  rig.Add(kApplication, L"tool", rig.now).Enabled = false;
  rig.runner.Tick();
  EXPECT_EQ(rig.tasks[0].NextRun, At(2011, 2, 14, 12, 30, 10));
}

TEST(TaskRunnerTickTest, ATaskWithoutAScheduleNeverFires) {
  const struct {
    std::int32_t unit, interval;
  } rows[] = {{-1, 1}, {3, 1}, {0, 0}, {0, -1}, {2147483647, 1}, {0, -2147483647 - 1}};
  for (const auto& row : rows) {
    for (const bool enabled : {true, false}) {
      RunnerRig rig;
      TaskRecord& task = rig.Add(kApplication, L"tool", At(2011, 2, 14, 12));
      task.IntervalUnit = row.unit;
      task.Interval = row.interval;
      task.Enabled = enabled;
      rig.runner.Tick();
      EXPECT_EQ(rig.calls, kTickBegins + Calls{"interval 2000"} + kTimerOn) << row.unit;
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
    RunnerRig rig;
    for (const DateSerial nextRun : row.nextRuns) {
      rig.Add(kApplication, L"tool", nextRun).Enabled = row.enabled;
    }
    const std::string* chosen = nullptr;
    rig.runner.Tick();
    for (const std::string& call : rig.calls) {
      if (chosen == nullptr && call.starts_with("interval")) chosen = &call;
    }
    ASSERT_NE(chosen, nullptr);
    EXPECT_EQ(*chosen, row.expected) << (row.nextRuns.empty() ? 0 : row.nextRuns.front());
  }
}

TEST(TaskRunnerTickTest, ReckonsTheMinutesFromTheMomentAfterARun) {
  RunnerRig rig;
  rig.Add(kApplication, L"first", At(2011, 2, 14, 12, 4));
  rig.Add(kApplication, L"slow");
  rig.Add(kApplication, L"last", At(2011, 2, 14, 12, 5));
  rig.on["command"] = [&] { rig.now = At(2011, 2, 14, 12, 4, 10); };
  rig.runner.Tick();
  // Four minutes from the moment of the first row; one from that of the last.
  const Calls end = Calls{"interval 2000", "redraw on", "area on", "messages"} + kTimerOn;
  EXPECT_EQ(rig.calls, kTickBegins + CommandRun("1", "slow") + end);
}

TEST(TaskRunnerTickTest, LeavesTheTimerOnAtOneSecondWhateverItChose) {
  for (const DateSerial nextRun :
       {At(2011, 2, 14, 11), At(2011, 2, 14, 12, 1), At(2011, 2, 15), At(9999, 12, 31)}) {
    for (const bool enabled : {true, false}) {
      RunnerRig rig;
      rig.Add(kApplication, L"tool", nextRun).Enabled = enabled;
      rig.runner.Tick();
      EXPECT_EQ(rig.interval, 1'000U);
      EXPECT_TRUE(rig.isTimerOn);
      EXPECT_FALSE(rig.runner.IsBusy());
    }
  }
}

TEST(TaskRunnerTickTest, ATickWithinATickDoesNothing) {
  RunnerRig rig;
  rig.Add(kApplication, L"one");
  rig.Add(kApplication, L"two");
  int nested = 0;
  for (const char* const call : {"timer off", "area off", "stop", "command", "save", "redraw on"}) {
    rig.on[call] = [&] {
      EXPECT_TRUE(rig.runner.IsBusy());
      const size_t before = rig.calls.size();
      rig.runner.Tick();
      EXPECT_EQ(rig.calls.size(), before);
      ++nested;
    };
  }
  rig.runner.Tick();
  EXPECT_EQ(nested, 1 + 2 * 4 + 1);
  EXPECT_EQ(rig.calls,
            kTickBegins + CommandRun("0", "one") + CommandRun("1", "two") + kEndAfterRuns);
}

TEST(TaskRunnerTickTest, MessagesArePumpedOnceAndWithoutTheBusyFlag) {
  RunnerRig rig;
  rig.Add(kApplication, L"one");
  rig.Add(kApplication, L"two");
  int pumped = 0;
  rig.on["messages"] = [&] {
    ++pumped;
    EXPECT_FALSE(rig.runner.IsBusy());
    EXPECT_FALSE(rig.isTimerOn);
  };
  rig.runner.Tick();
  EXPECT_EQ(pumped, 1);
}

TEST(TaskRunnerTickTest, RowsWithoutATaskAreLeftAlone) {
  RunnerRig rig;
  rig.Add(kApplication, L"tool");
  rig.surplusRows = 3;
  rig.runner.Tick();
  EXPECT_EQ(rig.calls, kTickBegins + CommandRun("0", "tool") + kEndAfterRuns);
}

TEST(TaskRunnerTickTest, ARunThatShortensTheListEndsTheTick) {
  RunnerRig rig;
  rig.Add(kApplication, L"one");
  rig.Add(kApplication, L"two");
  rig.on["save"] = [&] { rig.tasks.clear(); };
  rig.runner.Tick();
  EXPECT_EQ(rig.calls, kTickBegins + CommandRun("0", "one") + kEndAfterRuns);
}

TEST(TaskTimerTest, IsSetToOneSecondBeforeItIsSwitchedOn) {
  RunnerRig rig;
  rig.runner.SetTaskTimer(true);
  EXPECT_EQ(rig.calls, kTimerOn);
  rig.calls.clear();
  rig.runner.SetTaskTimer(false);
  EXPECT_EQ(rig.calls, Calls{"timer off"});
}

}  // namespace
}  // namespace tellurvane

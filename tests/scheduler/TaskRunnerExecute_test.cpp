#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "base/FatalError.h"
#include "scheduler/TaskRunner.h"
#include "tests/scheduler/RunnerRig.h"

namespace tellurvane {
namespace {

// 12:00:10 in zh-TW; the rig writes each letter beyond ASCII as a question mark.
const std::string kNoteTime = "2011/2/14 ?? 12:00:10";

struct Kind {
  MediaType type;
  bool pathExists;
  Calls calls;
};

// Every kind of task with the calls of its run.
const std::vector<Kind>& Kinds() {
  static const std::vector<Kind> kinds = {
      {kInternetRadio, true, {"stop", "radio on", "url source", "play", "show playing 0", "save"}},
      {kLocalMusic,
       true,
       {"stop", "radio off", "exists? source", "url source", "play", "show playing 0",
        "follow position", "save"}},
      {kLocalMusic, false, {"stop", "radio off", "exists? source", "follow position", "save"}},
      {kApplication, true, {"stop", "command source", "save"}},
      {kReminderNote, true, {"stop", "note source at " + kNoteTime, "save"}},
      {static_cast<MediaType>(4), true, {"stop", "save"}},
      {static_cast<MediaType>(-1), true, {"stop", "save"}},
  };
  return kinds;
}

void ExpectRecorded(const RunnerRig& rig, const std::string& what) {
  EXPECT_EQ(rig.tasks[0].RunStarted, rig.now) << what;
  EXPECT_EQ(rig.tasks[0].LastRun, rig.now) << what;
  EXPECT_EQ(rig.tasks[0].NextRun, At(2011, 2, 14, 12, 30)) << what;
}

TEST(TaskRunnerExecuteTest, TakesTheStepsOfEachKind) {
  for (const Kind& kind : Kinds()) {
    RunnerRig rig;
    rig.pathExists = kind.pathExists;
    rig.Run(rig.Add(kind.type, L"source"));
    EXPECT_EQ(rig.calls, kind.calls);
    ExpectRecorded(rig, kind.calls[1]);
  }
}

// The step a name stands for: the word before its text.
std::string NameOf(const std::string& call) {
  for (const char* const name : {"url", "exists?", "command", "note"}) {
    if (call.starts_with(name)) return name;
  }
  return call;
}

template <typename Error>
void ExpectEachFailingStepIsSkippedAlone(const Error& error) {
  for (const Kind& kind : Kinds()) {
    for (const std::string& call : kind.calls) {
      const std::string step = NameOf(call);
      RunnerRig rig;
      rig.pathExists = kind.pathExists;
      rig.on[step] = [&] { throw error; };
      Calls expected = kind.calls;
      // A source of which nobody can say whether it exists is taken for missing.
      if (step == "exists?") {
        expected = {"stop", "radio off", "exists? source", "follow position", "save"};
      }
      EXPECT_NO_THROW(rig.Run(rig.Add(kind.type, L"source"))) << step;
      EXPECT_EQ(rig.calls, expected) << step;
      ExpectRecorded(rig, step);
    }
  }
}

TEST(TaskRunnerExecuteTest, SkipsAFailingStepAlone) {
  ExpectEachFailingStepIsSkippedAlone(std::runtime_error("refused"));
  // What would end the program elsewhere is a failed step here.
  ExpectEachFailingStepIsSkippedAlone(FatalError(L"refused"));
}

TEST(TaskRunnerExecuteTest, SkipsAllStepsWhenAllFail) {
  for (const Kind& kind : Kinds()) {
    RunnerRig rig;
    for (const std::string& call : kind.calls) {
      rig.on[NameOf(call)] = [] { throw std::runtime_error("refused"); };
    }
    rig.Run(rig.Add(kind.type, L"source"));
    EXPECT_EQ(rig.calls.back(), "save");
    ExpectRecorded(rig, kind.calls[1]);
  }
}

TEST(TaskRunnerExecuteTest, RecordsTheRunBeforeItSaves) {
  for (const Kind& kind : Kinds()) {
    RunnerRig rig;
    int saves = 0;
    rig.on["save"] = [&] {
      ++saves;
      ExpectRecorded(rig, "at the save");
    };
    rig.Run(rig.Add(kind.type, L"source"));
    EXPECT_EQ(saves, 1);
  }
}

TEST(TaskRunnerExecuteTest, TellsTheBeginningFromTheEndOfARun) {
  RunnerRig rig;
  rig.on["stop"] = [&] { rig.now = At(2011, 2, 14, 12, 0, 20); };
  rig.on["command"] = [&] { rig.now = At(2011, 2, 14, 12, 40); };
  rig.Run(rig.Add(kApplication, L"slow"));
  EXPECT_EQ(rig.tasks[0].RunStarted, At(2011, 2, 14, 12, 0, 20));
  EXPECT_EQ(rig.tasks[0].LastRun, At(2011, 2, 14, 12, 40));
  EXPECT_EQ(rig.tasks[0].NextRun, At(2011, 2, 14, 13));
}

TEST(TaskRunnerExecuteTest, KeepsTheNextRunThatIsNotYetDue) {
  RunnerRig rig;
  rig.Run(rig.Add(kApplication, L"tool", At(2011, 2, 14, 18)));
  EXPECT_EQ(rig.tasks[0].LastRun, rig.now);
  EXPECT_EQ(rig.tasks[0].NextRun, At(2011, 2, 14, 18));
}

TEST(TaskRunnerExecuteTest, RunsATaskWithoutAScheduleAndLeavesItsNextRun) {
  RunnerRig rig;
  TaskRecord& task = rig.Add(kApplication, L"tool");
  task.Interval = 0;
  rig.Run(task);
  EXPECT_EQ(rig.calls, (Calls{"stop", "command tool", "save"}));
  EXPECT_EQ(task.LastRun, rig.now);
  EXPECT_EQ(task.NextRun, At(2011, 2, 14, 12));
}

TEST(TaskRunnerExecuteTest, RunsADisabledTaskThatIsAskedFor) {
  RunnerRig rig;
  TaskRecord& task = rig.Add(kReminderNote, L"text");
  task.Enabled = false;
  rig.Run(task);
  EXPECT_EQ(rig.calls, (Calls{"stop", "note text at " + kNoteTime, "save"}));
  EXPECT_FALSE(task.Enabled);
}

TEST(TaskRunnerExecuteTest, ShowsTheRowThatWasStartedWhateverTheClockSays) {
  const struct {
    const char* what;
    DateSerial later;
  } cases[] = {{"an hour back", At(2011, 2, 14, 11, 0, 10)}, {"the same second", RunnerRig().now}};
  for (const auto& [what, later] : cases) {
    RunnerRig rig;
    for (const wchar_t* const source : {L"a", L"b", L"c"}) rig.Add(kInternetRadio, source);
    rig.runner.RunNow(2);
    rig.now = later;
    rig.calls.clear();
    rig.runner.RunNow(1);
    EXPECT_EQ(std::count(rig.calls.begin(), rig.calls.end(), "show playing 1"), 1) << what;
  }
}

TEST(TaskRunnerRunNowTest, RunsTheRowWithTheTimerOffAndTheAreaDisabled) {
  RunnerRig rig;
  rig.Add(kApplication, L"tool");
  rig.runner.RunNow(0);
  EXPECT_EQ(rig.calls, (Calls{"timer off", "area off", "stop", "command tool", "save", "refresh 0",
                              "area on", "interval 1000", "timer on"}));
  EXPECT_EQ(rig.tasks[0].LastRun, rig.now);
  EXPECT_TRUE(IsEarlier(rig.now, rig.tasks[0].NextRun));
}

TEST(TaskRunnerRunNowTest, DoesNothingWithoutARowThatHasATask) {
  RunnerRig rig;
  rig.runner.RunNow(std::nullopt);
  rig.runner.RunNow(0);
  rig.Add(kApplication, L"tool").Deleted = true;
  rig.runner.RunNow(0);
  rig.runner.SwitchEnabled(0);
  EXPECT_TRUE(rig.calls.empty());
}

TEST(TaskRunnerRunNowTest, StartsNothingTwiceWhileItIsBusy) {
  RunnerRig rig;
  rig.Add(kApplication, L"tool");
  rig.on["command"] = [&] { rig.runner.RunNow(0); };
  rig.runner.RunNow(0);
  EXPECT_EQ(std::count(rig.calls.begin(), rig.calls.end(), "command tool"), 1);
  EXPECT_EQ(std::count(rig.calls.begin(), rig.calls.end(), "messages"), 1);
}

TEST(TaskRunnerRunNowTest, RecordsNothingWhenTheListWasReplacedMeanwhile) {
  RunnerRig rig;
  rig.Add(kApplication, L"tool").Name = L"old";
  rig.on["command"] = [&] { rig.tasks.clear(); };
  rig.runner.RunNow(0);
  EXPECT_TRUE(rig.tasks.empty());
}

size_t PostedTicks(const RunnerRig& rig) {
  return static_cast<size_t>(std::count(rig.calls.begin(), rig.calls.end(), "post tick"));
}

TEST(TaskRunnerContinuousPlayTest, PostsOneTickBehindTheRunWhenTheLastIsASecondOld) {
  RunnerRig rig;
  rig.Add(kApplication, L"tool", At(2011, 2, 14, 13));
  rig.runner.Tick();
  rig.calls.clear();
  rig.elapsed += 999;
  const Calls run = {"timer off", "area off", "stop",          "command tool", "save",
                     "refresh 0", "area on",  "interval 1000", "timer on"};
  rig.runner.RunForContinuousPlay(0);
  EXPECT_EQ(rig.calls, run);
  rig.calls.clear();
  rig.elapsed += 1;
  rig.runner.RunForContinuousPlay(0);
  EXPECT_EQ(rig.calls, run + Calls{"post tick"});
  rig.runner.Tick();
  rig.calls.clear();
  rig.runner.RunForContinuousPlay(0);
  EXPECT_EQ(rig.calls, run) << "the tick has come";
}

TEST(TaskRunnerContinuousPlayTest, PostsNothingWithoutARunOrForARunByHand) {
  RunnerRig rig;
  rig.runner.RunForContinuousPlay(std::nullopt);
  rig.runner.RunForContinuousPlay(0);
  rig.Add(kApplication, L"tool");
  rig.runner.RunNow(0);
  rig.on["command"] = [&] { rig.runner.RunForContinuousPlay(0); };
  rig.runner.RunNow(0);
  EXPECT_EQ(PostedTicks(rig), 0U);
}

// The timer ticks a second after it was switched on, unless it is switched on again before.
TEST(TaskRunnerContinuousPlayTest, ASoundOfOneSecondKeepsNoTaskFromRunning) {
  RunnerRig rig;
  rig.Add(kLocalMusic, L"sound", At(2011, 2, 15));
  TaskRecord& task = rig.Add(kReminderNote, L"drink", At(2011, 2, 14, 12, 1));
  task.Interval = 1;
  std::uint64_t switchedOn = rig.elapsed;
  bool isPosted = false;
  int notes = 0;
  rig.on["timer on"] = [&] { switchedOn = rig.elapsed; };
  rig.on["post tick"] = [&] { isPosted = true; };
  rig.on["note"] = [&] { ++notes; };
  constexpr int kSeconds = 600;
  for (int step = 0; step < kSeconds * 10; ++step) {
    rig.elapsed += 100;
    rig.now = At(2011, 2, 14, 12, 0, 10) + step / 10 / 86'400.0;
    // The end is seen by a tick of its own, at the latest when the timer is about to tick.
    if (step % 10 == 0) rig.runner.RunForContinuousPlay(0);
    if (std::exchange(isPosted, false) || rig.elapsed - switchedOn >= 1'000) {
      rig.runner.Tick();
    }
  }
  EXPECT_EQ(notes, kSeconds / 60);
}

TEST(TaskRunnerExecuteTest, RecordsTheRunOnTheSameTaskOfAListThatWasLoadedMeanwhile) {
  for (const bool isSame : {true, false}) {
    RunnerRig rig;
    rig.Add(kApplication, L"tool").Name = L"old";
    rig.on["command"] = [&] {
      rig.tasks = TaskList(1, rig.tasks[0]);
      if (!isSame) rig.tasks[0].Name = L"another";
    };
    rig.runner.Execute(0);
    EXPECT_EQ(rig.tasks[0].LastRun, isSame ? rig.now : 0);
    EXPECT_EQ(rig.tasks[0].NextRun, At(2011, 2, 14, 12, isSame ? 30 : 0));
    EXPECT_EQ(rig.calls, (Calls{"stop", "command tool", "save"}));
  }
}

TEST(TaskRunnerSwitchEnabledTest, SwitchesTheTaskRefreshesItsRowAndSaves) {
  RunnerRig rig;
  rig.Add(kApplication, L"tool").Enabled = true;
  rig.runner.SwitchEnabled(0);
  EXPECT_FALSE(rig.tasks[0].Enabled);
  EXPECT_EQ(rig.calls, (Calls{"refresh 0", "save"}));
  rig.runner.SwitchEnabled(0);
  EXPECT_TRUE(rig.tasks[0].Enabled);
  rig.runner.SwitchEnabled(7);
  EXPECT_EQ(rig.calls.size(), 4U);
}

}  // namespace
}  // namespace tellurvane

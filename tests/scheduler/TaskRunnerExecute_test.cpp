#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "base/FatalError.h"
#include "scheduler/TaskRunner.h"
#include "tests/scheduler/RunnerFixture.h"

namespace tellurvane {
namespace {

// 12:00:10 in zh-TW; the fixture writes each letter beyond ASCII as a question mark.
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

void ExpectRecorded(const RunnerFixture& fixture, const std::string& what) {
  EXPECT_EQ(fixture.tasks[0].RunStarted, fixture.now) << what;
  EXPECT_EQ(fixture.tasks[0].LastRun, fixture.now) << what;
  EXPECT_EQ(fixture.tasks[0].NextRun, At(2011, 2, 14, 12, 30)) << what;
}

TEST(TaskRunnerExecuteTest, TakesTheStepsOfEachKindAndRecordsTheRunBeforeItSaves) {
  for (const Kind& kind : Kinds()) {
    RunnerFixture fixture;
    fixture.pathExists = kind.pathExists;
    fixture.on["save"] = [&] { ExpectRecorded(fixture, kind.calls[1]); };
    fixture.Run(fixture.Add(kind.type, L"source"));
    EXPECT_EQ(fixture.calls, kind.calls);
    EXPECT_EQ(IsMediaType(kind.type), kind.calls.size() > 2) << "an unknown kind starts nothing";
  }
}

// The name of a call without its text.
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
      RunnerFixture fixture;
      fixture.pathExists = kind.pathExists;
      fixture.on[step] = [&] { throw error; };
      Calls expected = kind.calls;
      // A source of which nobody can say whether it exists is taken for missing.
      if (step == "exists?") {
        expected = {"stop", "radio off", "exists? source", "follow position", "save"};
      }
      EXPECT_NO_THROW(fixture.Run(fixture.Add(kind.type, L"source"))) << step;
      EXPECT_EQ(fixture.calls, expected) << step;
      ExpectRecorded(fixture, step);
    }
  }
}

TEST(TaskRunnerExecuteTest, SkipsAFailingStepAlone) {
  ExpectEachFailingStepIsSkippedAlone(std::runtime_error("failed"));
  // What would end the program elsewhere is a failed step here.
  ExpectEachFailingStepIsSkippedAlone(FatalError(L"failed"));
}

TEST(TaskRunnerExecuteTest, ReportsTheOutcomeThatIsKnownAtOnce) {
  const RunOutcome denied = ProgramNotStarted(L"denied");
  const struct {
    const char* name;
    MediaType type;
    bool pathExists;
    RunOutcome commandOutcome;
    std::optional<RunOutcome> reported;
  } cases[] = {
      // The player reports these.
      {"radio", kInternetRadio, true, {}, std::nullopt},
      {"music", kLocalMusic, true, {}, std::nullopt},
      {"missing music", kLocalMusic, false, {}, FileIsMissing()},
      {"program", kApplication, true, {}, RunOutcome()},
      {"program that fails", kApplication, true, denied, denied},
      {"note", kReminderNote, true, {}, RunOutcome()},
      {"unknown kind", static_cast<MediaType>(4), true, {}, std::nullopt},
  };
  for (const auto& [name, type, pathExists, commandOutcome, reported] : cases) {
    RunnerFixture fixture;
    fixture.pathExists = pathExists;
    fixture.commandOutcome = commandOutcome;
    fixture.Add(kReminderNote, L"another");
    fixture.Run(fixture.Add(type, L"source"));
    const std::vector<std::pair<size_t, RunOutcome>> none;
    EXPECT_EQ(fixture.outcomes, reported ? std::vector{std::pair(size_t{1}, *reported)} : none)
        << name;
  }
}

TEST(TaskRunnerExecuteTest, AProgramWhoseStartThrowsHasFailed) {
  RunnerFixture fixture;
  fixture.on["command"] = [] { throw std::runtime_error("failed"); };
  fixture.Run(fixture.Add(kApplication, L"tool"));
  EXPECT_EQ(fixture.outcomes, (std::vector{std::pair(size_t{0}, ProgramNotStarted(L""))}));
}

TEST(TaskRunnerExecuteTest, SavesTheRunThoughItsOutcomeCannotBeShown) {
  RunnerFixture fixture;
  fixture.on["outcome"] = [] { throw std::runtime_error("failed"); };
  EXPECT_NO_THROW(fixture.Run(fixture.Add(kApplication, L"tool")));
  EXPECT_EQ(fixture.outcomes.size(), 1U);
  EXPECT_EQ(fixture.calls.back(), "save");
}

TEST(TaskRunnerExecuteTest, RecordsTheBeginningAndTheEndOfARun) {
  RunnerFixture fixture;
  fixture.on["stop"] = [&] { fixture.now = At(2011, 2, 14, 12, 0, 20); };
  fixture.on["command"] = [&] { fixture.now = At(2011, 2, 14, 12, 40); };
  fixture.Run(fixture.Add(kApplication, L"slow"));
  EXPECT_EQ(fixture.tasks[0].RunStarted, At(2011, 2, 14, 12, 0, 20));
  EXPECT_EQ(fixture.tasks[0].LastRun, At(2011, 2, 14, 12, 40));
  EXPECT_EQ(fixture.tasks[0].NextRun, At(2011, 2, 14, 13));
}

TEST(TaskRunnerExecuteTest, RunsWhatIsAskedForAndLeavesANextRunThatIsNotDue) {
  const struct {
    const char* name;
    std::int32_t interval;
    bool isEnabled;
    DateSerial nextRun;
  } rows[] = {{"without a schedule", 0, true, At(2011, 2, 14, 12)},
              {"not yet due", 30, true, At(2011, 2, 14, 18)},
              {"disabled", 30, false, At(2011, 2, 14, 18)}};
  for (const auto& row : rows) {
    RunnerFixture fixture;
    TaskRecord& task = fixture.Add(kApplication, L"tool", row.nextRun);
    task.Interval = row.interval;
    task.Enabled = row.isEnabled;
    fixture.Run(task);
    EXPECT_EQ(fixture.calls, (Calls{"stop", "command tool", "save"})) << row.name;
    EXPECT_EQ(task.LastRun, fixture.now) << row.name;
    EXPECT_EQ(task.NextRun, row.nextRun) << row.name;
    EXPECT_EQ(task.Enabled, row.isEnabled) << row.name;
  }
}

TEST(TaskRunnerExecuteTest, ShowsTheRowThatWasStartedThoughTheClockGoesBack) {
  RunnerFixture fixture;
  for (const wchar_t* const source : {L"a", L"b", L"c"}) fixture.Add(kInternetRadio, source);
  fixture.runner.RunNow(2);
  fixture.now = At(2011, 2, 14, 11, 0, 10);
  fixture.calls.clear();
  fixture.runner.RunNow(1);
  EXPECT_EQ(std::count(fixture.calls.begin(), fixture.calls.end(), "show playing 1"), 1);
}

TEST(TaskRunnerRunNowTest, RunsTheRowWithTheTimerOffAndTheAreaDisabled) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"tool");
  fixture.runner.RunNow(0);
  EXPECT_EQ(fixture.calls, (Calls{"timer off", "area off", "stop", "command tool", "save",
                                  "refresh 0", "area on", "interval 1000", "timer on"}));
  EXPECT_EQ(fixture.tasks[0].LastRun, fixture.now);
  EXPECT_TRUE(IsEarlier(fixture.now, fixture.tasks[0].NextRun));
}

TEST(TaskRunnerRunNowTest, DoesNothingWithoutARowThatHasATask) {
  RunnerFixture fixture;
  fixture.runner.RunNow(std::nullopt);
  fixture.runner.RunNow(0);
  fixture.Add(kApplication, L"tool").Deleted = true;
  fixture.runner.RunNow(0);
  fixture.runner.SwitchEnabled(0);
  EXPECT_TRUE(fixture.calls.empty());
}

TEST(TaskRunnerRunNowTest, StartsNothingTwiceWhileItIsBusy) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"tool");
  fixture.on["command"] = [&] { fixture.runner.RunNow(0); };
  fixture.runner.RunNow(0);
  EXPECT_EQ(std::count(fixture.calls.begin(), fixture.calls.end(), "command tool"), 1);
  EXPECT_EQ(std::count(fixture.calls.begin(), fixture.calls.end(), "messages"), 1);
}

TEST(TaskRunnerContinuousPlayTest, PostsOneTickAfterTheRunWhenTheLastIsASecondOld) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"tool", At(2011, 2, 14, 13));
  const struct {
    const char* name;
    bool isTicked;
    std::uint64_t elapsed;
    bool posts;
  } rows[] = {{"just before", true, 999, false},
              {"a second", false, 1, true},
              {"the tick has come", true, 0, false}};
  for (const auto& row : rows) {
    if (row.isTicked) fixture.runner.Tick();
    fixture.elapsed += row.elapsed;
    fixture.calls.clear();
    fixture.runner.RunForContinuousPlay(0);
    EXPECT_EQ(fixture.calls.back(), row.posts ? "post tick" : "timer on") << row.name;
  }
}

TEST(TaskRunnerContinuousPlayTest, PostsNothingWithoutARunOrForARunByHand) {
  RunnerFixture fixture;
  fixture.runner.RunForContinuousPlay(std::nullopt);
  fixture.runner.RunForContinuousPlay(0);
  fixture.Add(kApplication, L"tool");
  fixture.runner.RunNow(0);
  fixture.on["command"] = [&] { fixture.runner.RunForContinuousPlay(0); };
  fixture.runner.RunNow(0);
  EXPECT_EQ(std::count(fixture.calls.begin(), fixture.calls.end(), "post tick"), 0);
}

TEST(TaskRunnerExecuteTest, RecordsTheRunOnlyOnTheSameTaskOfAListThatWasLoadedMeanwhile) {
  for (const bool isSame : {true, false}) {
    RunnerFixture fixture;
    fixture.Add(kApplication, L"tool").Name = L"old";
    fixture.on["command"] = [&] {
      fixture.tasks = TaskList(1, fixture.tasks[0]);
      if (!isSame) fixture.tasks[0].Name = L"another";
    };
    fixture.runner.Execute(0);
    EXPECT_EQ(fixture.tasks[0].LastRun, isSame ? fixture.now : 0);
    EXPECT_EQ(fixture.tasks[0].NextRun, At(2011, 2, 14, 12, isSame ? 30 : 0));
    EXPECT_EQ(fixture.outcomes.size(), isSame ? 1U : 0U);
    fixture.on["command"] = [&] { fixture.tasks.clear(); };
    fixture.runner.RunNow(0);
    EXPECT_TRUE(fixture.tasks.empty());
  }
}

TEST(TaskRunnerSwitchEnabledTest, SwitchesTheTaskRefreshesItsRowAndSaves) {
  RunnerFixture fixture;
  fixture.Add(kApplication, L"tool").Enabled = true;
  fixture.runner.SwitchEnabled(0);
  EXPECT_FALSE(fixture.tasks[0].Enabled);
  EXPECT_EQ(fixture.calls, (Calls{"refresh 0", "save"}));
  fixture.runner.SwitchEnabled(0);
  EXPECT_TRUE(fixture.tasks[0].Enabled);
  fixture.runner.SwitchEnabled(7);
  EXPECT_EQ(fixture.calls.size(), 4U);
}

}  // namespace
}  // namespace tellurvane

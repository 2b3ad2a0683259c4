// Each file operation made to fail in turn: a list is never lost.
#include <gtest/gtest.h>

#include "scheduler/TaskListFile.h"
#include "tests/scheduler/TaskListFixture.h"
#include "tests/support/Utf16.h"

namespace tellurvane {
namespace {

std::wstring LongLine(const std::wstring& name) {
  return L"0|30|1|3\t" + name + L"\t" + std::wstring(300, L'x') + L"\t2011/2/13\t2011/2/15\r\n";
}

const std::string& Sound() {
  static const std::string bytes = Utf16Bytes(LongLine(L"old") + LongLine(L"old too"));
  return bytes;
}
const std::string& Lossy() {
  static const std::string bytes = Utf16Bytes(LongLine(L"old") + L"malformed\r\n");
  return bytes;
}

// A load or a save of an existing file.
struct Scenario {
  const char* name;
  std::string before;
  // The file afterwards when nothing fails.
  std::string after;
  bool (*act)(TaskListFile& file, TaskList& tasks);
};

bool Load(TaskListFile& file, TaskList& tasks) {
  file.Load(tasks);
  return true;
}
bool Save(TaskListFile& file, TaskList& tasks) {
  tasks = {Reminder(L"new", L"source")};
  return file.Save(tasks);
}

std::vector<Scenario> Scenarios() {
  return {{"load", Sound(), Sound(), Load},
          {"lossy load", Lossy(), Utf16Bytes(LongLine(L"old")), Load},
          {"save", Sound(), Utf16Bytes(Line(L"new")), Save}};
}

std::string Steps(const Scenario& scenario, const Faults& faults, const TaskListFixture& list) {
  std::string steps = std::string(scenario.name) + ":";
  for (const std::string& operation : list.files.Operations()) steps += " " + operation;
  return steps + (faults.returnsHalf ? ", half reported" : "");
}

bool Failed(const TaskListFixture& list, const std::string& operation) {
  for (const std::string& each : list.files.Operations()) {
    if (each == operation + "!") return true;
  }
  return false;
}

// How many operations the scenario takes when none fails, and two for those that a failure adds.
int OperationCount(const Scenario& scenario) {
  TaskListFixture list(scenario.before);
  TaskList tasks;
  list.files.SetFaults({});
  EXPECT_TRUE(scenario.act(list.file, tasks)) << scenario.name;
  EXPECT_EQ(list.Bytes(), scenario.after) << scenario.name;
  return list.files.OperationCount() + 2;
}

// A load that could not read the file has an empty list; the scenario's own outcome otherwise.
std::string Expected(const Scenario& scenario, const TaskList& tasks) {
  return tasks.empty() ? kMarkAlone : scenario.after;
}

void ExpectNothingLost(const Scenario& scenario, const Faults& faults) {
  TaskListFixture list(scenario.before);
  TaskList tasks;
  // When another file takes the place of one that holds more, that one has to be kept by then.
  list.files.beforeMoveOver = [&](const std::wstring& from, const std::wstring& to) {
    EXPECT_TRUE(list.files.files.at(from).isOnDisk) << Steps(scenario, faults, list);
    if (scenario.before == Sound() && !tasks.empty()) return;
    EXPECT_TRUE(list.Backups() == std::vector{list.files.files.at(to).bytes})
        << Steps(scenario, faults, list);
  };
  list.files.SetFaults(faults);
  const bool answer = scenario.act(list.file, tasks);

  const std::string steps = Steps(scenario, faults, list);
  const std::string after = Expected(scenario, tasks);
  EXPECT_TRUE(list.Bytes() == scenario.before || list.Bytes() == after) << steps;
  EXPECT_TRUE(scenario.act != Save || answer == (list.Bytes() == after)) << steps;
  EXPECT_TRUE(Failed(list, "remove") || !list.files.files.contains(kTemporaryPath)) << steps;
  for (const std::string& backup : list.Backups()) EXPECT_EQ(backup, scenario.before) << steps;
  // A copy of a file that is still there would only pile up.
  const bool isReplaced = list.Bytes() != scenario.before;
  EXPECT_TRUE(isReplaced || Failed(list, "remove") || list.Backups().empty()) << steps;

  // Once everything works again, a save goes through, and what was dropped is kept. What could not
  // be read is still there, and is read then.
  list.files.beforeMoveOver = nullptr;
  list.files.SetFaults({});
  if (list.file.IsUnread()) {
    EXPECT_EQ(list.Bytes(), scenario.before) << steps;
    EXPECT_TRUE(list.file.Load(tasks)) << steps;
    EXPECT_EQ(list.Bytes(), scenario.after) << steps;
    return;
  }
  EXPECT_TRUE(list.file.Save(tasks)) << steps;
  EXPECT_TRUE(list.Bytes() == after) << steps;
  EXPECT_TRUE(after == scenario.before || scenario.act == Save || !list.Backups().empty()) << steps;
  EXPECT_FALSE(list.files.files.contains(kTemporaryPath)) << steps;
}

TEST(TaskListFileFaultsTest, NoFailingOperationLosesAList) {
  for (const Scenario& scenario : Scenarios()) {
    const int operations = OperationCount(scenario);
    for (int i = 0; i < operations * 4; ++i) {
      ExpectNothingLost(scenario,
                        {.first = i / 4, .fromThenOn = i % 2 == 1, .returnsHalf = i % 4 > 1});
    }
  }
}

TEST(TaskListFileFaultsTest, ReadsAFileThatComesInTwoPieces) {
  TaskListFixture list(Sound());
  list.files.SetFaults({.first = 2, .returnsHalf = true});
  TaskList tasks;
  EXPECT_TRUE(list.file.Load(tasks));
  EXPECT_EQ(tasks.size(), 2U);
  EXPECT_TRUE(list.Backups().empty());
}

}  // namespace
}  // namespace tellurvane

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

// What a save and a load may do, each on a file that stands.
struct Deed {
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

std::vector<Deed> Deeds() {
  return {{"load", Sound(), Sound(), Load},
          {"lossy load", Lossy(), Utf16Bytes(LongLine(L"old")), Load},
          {"save", Sound(), Utf16Bytes(Line(L"new")), Save}};
}

std::vector<Faults> AllFaults(int operations) {
  std::vector<Faults> all;
  for (int first = 0; first < operations; ++first) {
    for (const bool fromThenOn : {false, true}) {
      for (const bool tellsHalf : {false, true}) {
        all.push_back({.first = first, .fromThenOn = fromThenOn, .tellsHalf = tellsHalf});
      }
    }
  }
  return all;
}

std::string Told(const Deed& deed, const TaskListFixture& list) {
  std::string told = std::string(deed.name) + ":";
  for (const std::string& operation : list.files.Operations()) told += " " + operation;
  return told;
}

bool Failed(const TaskListFixture& list, const std::string& operation) {
  for (const std::string& each : list.files.Operations()) {
    if (each == operation + "!") return true;
  }
  return false;
}

// How many operations the deed takes when none fails, and two for those that a failure adds.
int OperationCount(const Deed& deed) {
  TaskListFixture list(deed.before);
  TaskList tasks;
  list.files.SetFaults({});
  EXPECT_TRUE(deed.act(list.file, tasks)) << deed.name;
  EXPECT_EQ(list.Bytes(), deed.after) << deed.name;
  return list.files.OperationCount() + 2;
}

// A load that could not read the file has an empty list; the deed's own outcome otherwise.
std::string Expected(const Deed& deed, const TaskList& tasks) {
  return tasks.empty() ? kMarkAlone : deed.after;
}

void ExpectNothingLost(const Deed& deed, const Faults& faults) {
  TaskListFixture list(deed.before);
  TaskList tasks;
  // When another file takes the place of one that holds more, that one has to be kept by then.
  list.files.beforeMoveOver = [&](const std::wstring& from, const std::wstring& to) {
    EXPECT_TRUE(list.files.files.at(from).isOnDisk) << Told(deed, list);
    if (deed.before == Sound() && !tasks.empty()) return;
    EXPECT_TRUE(list.Backups() == std::vector{list.files.files.at(to).bytes}) << Told(deed, list);
  };
  list.files.SetFaults(faults);
  const bool answer = deed.act(list.file, tasks);

  const std::string told = Told(deed, list);
  const std::string after = Expected(deed, tasks);
  EXPECT_TRUE(list.Bytes() == deed.before || list.Bytes() == after) << told;
  EXPECT_TRUE(deed.act != Save || answer == (list.Bytes() == after)) << told;
  EXPECT_TRUE(Failed(list, "remove") || !list.files.files.contains(kTemporaryPath)) << told;
  for (const std::string& backup : list.Backups()) EXPECT_EQ(backup, deed.before) << told;

  // Once everything works again, a save goes through, and what was dropped is kept. What could not
  // be read is still there, and is read then.
  list.files.beforeMoveOver = nullptr;
  list.files.SetFaults({});
  if (list.file.IsUnread()) {
    EXPECT_EQ(list.Bytes(), deed.before) << told;
    EXPECT_TRUE(list.file.Load(tasks)) << told;
    EXPECT_EQ(list.Bytes(), deed.after) << told;
    return;
  }
  EXPECT_TRUE(list.file.Save(tasks)) << told;
  EXPECT_TRUE(list.Bytes() == after) << told;
  EXPECT_TRUE(after == deed.before || deed.act == Save || !list.Backups().empty()) << told;
  EXPECT_FALSE(list.files.files.contains(kTemporaryPath)) << told;
}

TEST(TaskListFileFaultsTest, NoFailingOperationLosesAList) {
  for (const Deed& deed : Deeds()) {
    for (const Faults& faults : AllFaults(OperationCount(deed))) {
      SCOPED_TRACE(std::string(deed.name) + ", operation " + std::to_string(faults.first) +
                   (faults.fromThenOn ? " and on" : " once") +
                   (faults.tellsHalf ? ", half told" : ""));
      ExpectNothingLost(deed, faults);
    }
  }
}

TEST(TaskListFileFaultsTest, AFailingSaveSaysSo) {
  for (const char* const operation : {"create", "write", "flush", "close", "move"}) {
    int seen = 0;
    for (int first = 0; first < 5; ++first) {
      TaskListFixture list(Sound());
      list.files.SetFaults({.first = first});
      const bool answer = list.file.Save(TaskList{Reminder(L"new", L"source")});
      if (!Failed(list, operation)) continue;
      ++seen;
      EXPECT_FALSE(answer) << operation;
      EXPECT_EQ(list.Bytes(), Sound()) << operation;
    }
    EXPECT_EQ(seen, 1) << operation;
  }
}

TEST(TaskListFileFaultsTest, AReadThatComesInPiecesIsPutTogether) {
  TaskListFixture list(Sound());
  // The one read that tells half is asked again for the rest.
  list.files.SetFaults({.first = 2, .tellsHalf = true});
  TaskList tasks;
  EXPECT_TRUE(list.file.Load(tasks));
  EXPECT_EQ(tasks.size(), 2U);
  EXPECT_EQ(list.Bytes(), Sound());
  EXPECT_TRUE(list.Backups().empty());
}

TEST(TaskListFileFaultsTest, AFileThatCannotBeReadIsKeptBeforeItIsReplaced) {
  for (const int operation : {0, 1, 2}) {
    TaskListFixture list(Sound());
    list.files.SetFaults({.first = operation});
    TaskList tasks;
    EXPECT_FALSE(list.file.Load(tasks)) << operation;
    EXPECT_EQ(list.Backups(), std::vector{Sound()}) << operation;
    EXPECT_EQ(list.Bytes(), kMarkAlone) << operation;
  }
}

TEST(TaskListFileFaultsTest, SavesThatFailDoNotPileUpBackups) {
  for (const char* const operation : {"create", "write", "flush", "close", "move"}) {
    int seen = 0;
    for (int first = 4; first < 9; ++first) {
      TaskListFixture list(Lossy());
      list.files.SetFaults({.first = first});
      TaskList tasks;
      EXPECT_TRUE(list.file.Load(tasks));
      if (!Failed(list, operation)) continue;
      ++seen;
      EXPECT_EQ(list.Bytes(), Lossy()) << operation;
      EXPECT_TRUE(list.Backups().empty()) << operation << ": the file itself still stands";
      EXPECT_TRUE(list.file.Save(tasks));
      EXPECT_EQ(list.Backups(), std::vector{Lossy()}) << operation;
    }
    EXPECT_EQ(seen, 1) << operation;
  }
}

TEST(TaskListFileFaultsTest, ABackupThatFailedIsMadeUpForByTheNextSave) {
  TaskListFixture list(Lossy());
  list.files.SetFaults({.first = 3});
  TaskList tasks;
  EXPECT_TRUE(list.file.Load(tasks));
  ASSERT_TRUE(Failed(list, "copy"));
  EXPECT_EQ(list.Bytes(), Lossy());
  list.files.SetFaults({});
  EXPECT_TRUE(list.file.Save(tasks));
  EXPECT_EQ(list.Backups(), std::vector{Lossy()});
  EXPECT_TRUE(list.file.Save(tasks));
  EXPECT_EQ(list.Backups().size(), 1U);
}

}  // namespace
}  // namespace tellurvane

// On files in memory; what operations that fail do to the list is in TaskListFileFaults_test.cpp.
#include "scheduler/TaskListFile.h"

#include <gtest/gtest.h>

#include "tests/scheduler/TaskListFixture.h"
#include "tests/support/Utf16.h"

namespace tellurvane {
namespace {

TEST(TaskListFileTest, AMissingFileBecomesTheMarkAlone) {
  TaskListFixture list;
  TaskList tasks = {TaskRecord(), TaskRecord()};
  EXPECT_FALSE(list.file.Load(tasks));
  EXPECT_FALSE(list.file.IsUnread());
  EXPECT_TRUE(tasks.empty()) << "what was there before is gone";
  EXPECT_EQ(list.Bytes(), kMarkAlone);
  EXPECT_EQ(list.files.files.size(), 1U);
  // A file that is gone by the time of a save needs no backup.
  list.files.files[kListPath].bytes = Utf16Bytes(Line(L"a"));
  list.files.locked.insert(kListPath);
  EXPECT_FALSE(list.file.Load(tasks));
  list.files.locked.clear();
  list.files.files.clear();
  EXPECT_TRUE(list.file.Save(TaskList{Reminder(L"b", L"source")}));
  EXPECT_EQ(list.files.files.size(), 1U);
}

// In ANSI, so that the size can be odd.
std::string ListOfSize(size_t size) {
  const std::string head = "0|30|1|3\ta\t";
  const std::string tail = "\t2011/2/14\t2011/2/15\r\n";
  return head + std::string(size - head.size() - tail.size(), 'x') + tail;
}

TEST(TaskListFileTest, ReadsAFileBelowFourMebibytesOnly) {
  const std::string least = ListOfSize(4'194'304);
  TaskListFixture tooLarge(least);
  TaskList tasks;
  EXPECT_FALSE(tooLarge.file.Load(tasks));
  EXPECT_EQ(tooLarge.Bytes(), kMarkAlone);
  EXPECT_EQ(tooLarge.Backups(), std::vector{least});

  TaskListFixture accepted(ListOfSize(4'194'303));
  EXPECT_TRUE(accepted.file.Load(tasks));
  ASSERT_EQ(tasks.size(), 1U);
  EXPECT_EQ(tasks[0].Source.size(), 4'194'303U - 33U);
  EXPECT_TRUE(accepted.Backups().empty());
}

TEST(TaskListFileTest, NeverWritesWhatTheNextLoadWouldRefuse) {
  // As UTF-16 it would be twice as large.
  const std::string large = ListOfSize(3'000'000);
  TaskListFixture list(large);
  TaskList tasks;
  EXPECT_TRUE(list.file.Load(tasks));
  EXPECT_FALSE(list.file.Save(tasks));
  EXPECT_EQ(list.Bytes(), large);
  EXPECT_TRUE(list.file.Load(tasks)) << "the next start finds it again";
}

TEST(TaskListFileTest, RewritesAnAnsiFileAndKeepsItWhereTheTextIsInDoubt) {
  const std::string bytes = "0|30|1|3\t\xE9t\xE9\tsource\t2011/2/13\t2011/2/15";
  for (const bool isLossy : {false, true}) {
    TaskListFixture list(bytes);
    list.isAnsiLossy = isLossy;
    TaskList tasks;
    EXPECT_TRUE(list.file.Load(tasks));
    EXPECT_EQ(list.Bytes(),
              Utf16Bytes(L"0|30|1|3\t\u00E9t\u00E9\tsource\t2011/2/13\t2011/2/15\r\n"));
    EXPECT_EQ(list.Backups(), isLossy ? std::vector{bytes} : std::vector<std::string>{});
  }
}

TEST(TaskListFileTest, WritesBackWhatItHasReadInItsOwnWay) {
  TaskListFixture list(
      Utf16Bytes(L"+0|2.5|True|3\t  a \t b \t40588.5\t2011/2/14 上午 11:59:59\r\n\r\n"));
  TaskList tasks;
  EXPECT_TRUE(list.file.Load(tasks));
  EXPECT_EQ(tasks[0].Name, L"  a ");
  // Moved forward, not run.
  EXPECT_EQ(list.Bytes(),
            Utf16Bytes(L"0|2|1|3\ta\tb\t2011/2/14 下午 12:00:00\t2011/2/14 下午 12:01:59\r\n"));
  EXPECT_TRUE(list.Backups().empty());
}

TEST(TaskListFileTest, KeepsABackupOfWhateverTheListDoesNotHold) {
  const std::string one = Utf16Bytes(Line(L"a"));
  const struct {
    std::string bytes;
    size_t tasks;
    bool isKept;
  } rows[] = {
      {"", 0, false},
      {kMarkAlone, 0, false},
      {"\xFF", 0, true},
      {"\xFF\xFE\x41", 0, true},
      {one + "x", 0, true},
      {one.substr(0, one.size() - 1), 0, true},
      {Utf16Bytes(L"not a task"), 0, true},
      {Utf16Bytes(L"\r\n" + Line(L"a")), 0, true},
      {one, 1, false},
      {Utf16Bytes(Line(L"a") + L"\r\n\r\n"), 1, false},
      {Utf16Bytes(Line(L"a") + L"\r\n" + Line(L"lost")), 1, true},
      {Utf16Bytes(Line(L"a") + L"malformed\r\n"), 1, true},
      {Utf16Bytes(L"0|30|1|3\ta\tb\tyesterday\t2011/2/15\r\n"), 1, true},
      {Utf16Bytes(L"0|30|1|3\ta\tb\t2011/2/13\t2011/2/15\tmore\r\n"), 1, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    TaskListFixture list(row.bytes);
    TaskList tasks = {TaskRecord()};
    EXPECT_EQ(list.file.Load(tasks), row.tasks > 0);
    EXPECT_EQ(tasks.size(), row.tasks);
    EXPECT_EQ(list.Bytes() == kMarkAlone, row.tasks == 0);
    const auto backups = row.isKept ? std::vector{row.bytes} : std::vector<std::string>{};
    EXPECT_EQ(list.Backups(), backups);
    // Once is enough.
    EXPECT_EQ(list.file.Load(tasks), row.tasks > 0);
    EXPECT_TRUE(list.file.Save(tasks));
    EXPECT_EQ(list.Backups(), backups);
  }
}

TEST(TaskListFileTest, NamesABackupByTheMomentAndNeverWritesOverOne) {
  const std::string lossy = Utf16Bytes(Line(L"a") + L"malformed\r\n");
  TaskListFixture list(lossy);
  list.now = At(2011, 2, 14, 23, 59, 59);
  list.files.files[L"JobList.dbs.20110214-235959.bak"].bytes = "first";
  list.files.files[L"JobList.dbs.20110215-000000.bak"].bytes = "second";
  TaskList tasks;
  EXPECT_TRUE(list.file.Load(tasks));
  EXPECT_EQ(list.Backups(), (std::vector<std::string>{"first", "second", lossy}));
  EXPECT_EQ(list.files.files.at(L"JobList.dbs.20110215-000001.bak").bytes, lossy);
}

TEST(TaskListFileTest, WritesNothingOverTheFileWhenNoNameForABackupIsFree) {
  const std::string lossy = Utf16Bytes(Line(L"a") + L"malformed\r\n");
  TaskListFixture list(lossy);
  for (int second = 0; second < 60; ++second) {
    const std::wstring stamp = std::to_wstring(1200'00 + second);
    list.files.files[L"JobList.dbs.20110214-" + stamp + L".bak"].bytes = "earlier";
  }
  TaskList tasks;
  EXPECT_TRUE(list.file.Load(tasks)) << "the list is there all the same";
  EXPECT_FALSE(list.file.Save(tasks));
  EXPECT_EQ(list.Bytes(), lossy);
  list.now = At(2011, 2, 14, 13);
  EXPECT_TRUE(list.file.Save(tasks));
  EXPECT_EQ(list.Bytes(), Utf16Bytes(Line(L"a")));
  EXPECT_EQ(list.files.files.at(L"JobList.dbs.20110214-130000.bak").bytes, lossy);
}

TEST(TaskListFileTest, LeavesAFileAloneThatCanNeitherBeOpenedNorCopied) {
  const std::string bytes = Utf16Bytes(Line(L"a"));
  TaskListFixture list(bytes);
  list.files.locked.insert(kListPath);
  TaskList tasks = {Reminder(L"b", L"source")};
  for (int attempt = 0; attempt < 3; ++attempt) {
    EXPECT_FALSE(list.file.Load(tasks));
    EXPECT_TRUE(list.file.IsUnread());
    EXPECT_EQ(list.Bytes(), bytes);
  }
  // Neither now nor when it could be done: an empty list is not worth it.
  EXPECT_FALSE(list.file.Save({}));
  list.files.locked.clear();
  EXPECT_FALSE(list.file.Save({}));
  EXPECT_EQ(list.files.files.size(), 1U);
  EXPECT_EQ(list.Bytes(), bytes);
  EXPECT_TRUE(list.file.Load(tasks));
  EXPECT_FALSE(list.file.IsUnread());
  EXPECT_EQ(tasks.at(0).Name, L"a");
  EXPECT_TRUE(list.Backups().empty());
  EXPECT_TRUE(list.file.Save({})) << "now it is an empty list of the user's";
}

TEST(TaskListFileTest, ReplacesAnUnreadFileByTheUsersTasksOnceItIsKept) {
  const std::string bytes = Utf16Bytes(Line(L"a"));
  TaskListFixture list(bytes);
  list.files.locked.insert(kListPath);
  TaskList tasks;
  EXPECT_FALSE(list.file.Load(tasks));
  tasks = {Reminder(L"b", L"source")};
  EXPECT_FALSE(list.file.Save(tasks)) << "it cannot be kept yet";
  EXPECT_FALSE(list.file.IsUnread()) << "what the user has made counts";
  EXPECT_EQ(list.Bytes(), bytes);
  list.files.locked.clear();
  EXPECT_TRUE(list.file.Save(tasks));
  EXPECT_EQ(list.Backups(), std::vector{bytes});
  EXPECT_EQ(list.Bytes(), Utf16Bytes(Line(L"b")));
}

TEST(TaskListFileTest, IsUnreadOnlyIfReadingTheFileFailed) {
  const std::string bytes = Utf16Bytes(Line(L"a"));
  const struct {
    const char* name;
    std::string bytes;
    int failing;  // operation of the load
    bool isUnread;
  } rows[] = {
      {"open", bytes, 0, true},
      {"size", bytes, 1, true},
      {"read", bytes, 2, true},
      {"too large", ListOfSize(4'194'304), -1, false},
      {"half a unit", bytes + "x", -1, false},
      {"malformed", Utf16Bytes(L"malformed\r\n"), -1, false},
  };
  for (const auto& row : rows) {
    TaskListFixture list(row.bytes);
    list.files.isCopyRefused = true;
    list.files.SetFaults({.first = row.failing});
    TaskList tasks;
    EXPECT_FALSE(list.file.Load(tasks)) << row.name;
    EXPECT_EQ(list.file.IsUnread(), row.isUnread) << row.name;
    EXPECT_EQ(list.Bytes(), row.bytes) << row.name;
  }
}

TEST(TaskListFileTest, AsksForTheUsersFormatAtEachLoad) {
  TaskListFixture list(Utf16Bytes(L"9|1|1|3\ta\tb\t2011/2/13\t10/2/11\r\n"));
  TaskList tasks;
  ASSERT_TRUE(list.file.Load(tasks));
  EXPECT_EQ(tasks[0].NextRun, At(2010, 2, 11));
  list.locale = &EnUs();
  list.files.files[kListPath].bytes = Utf16Bytes(L"9|1|1|3\ta\tb\t2011/2/13\t10/2/11\r\n");
  ASSERT_TRUE(list.file.Load(tasks));
  EXPECT_EQ(tasks[0].NextRun, At(2011, 10, 2));
}

}  // namespace
}  // namespace tellurvane

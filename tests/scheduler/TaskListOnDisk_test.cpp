// The task list file on the real file system, in the user's locale.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "base/LocaleDates.h"
#include "scheduler/DecodeAnsi.h"
#include "scheduler/TaskListFile.h"
#include "scheduler/Win32FileOperations.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Utf16.h"
#include "tests/support/Wine.h"

namespace tellurvane {
namespace {

constexpr DateSerial kNow = 40588.5;  // 14 February 2011, 12:00:00

class TaskListOnDiskTest : public testing::Test {
 protected:
  static TaskRecord Reminder(const std::wstring& name) {
    TaskRecord task;
    task.Enabled = true;
    task.MediaType = kReminderNote;
    task.Name = name;
    task.Source = L"喝水\\r\\n休息";
    task.Interval = 30;
    task.LastRun = kNow - 1;
    task.NextRun = kNow + 0.25;
    return task;
  }

  TemporaryFolder folder_;
  // With the doubled separator that the program itself uses.
  const std::wstring path_ = folder_.Path() + L"\\\\JobList.dbs";
  Win32FileOperations files_;
  TaskListFile file_{files_, path_,
                     TaskListDialect{UserDateReader, AppendLocaleDateText, DecodeAnsi},
                     [] { return kNow; }};
  TaskList tasks_;
};

TEST_F(TaskListOnDiskTest, WritesTheUsersLocale) {
  SKIP_UNLESS_WINE("on Windows each user chooses the date format");
  ASSERT_TRUE(file_.Save(TaskList{Reminder(L"  喝水 ")}));
  const std::wstring dates = GetACP() == 950 ? L"2011/2/13 下午12:00:00\t2011/2/14 下午6:00:00"
                                             : L"2/13/2011 12:00:00 PM\t2/14/2011 6:00:00 PM";
  EXPECT_EQ(ReadBytes(path_), Utf16Bytes(L"0|30|1|3\t喝水\t喝水\\r\\n休息\t" + dates + L"\r\n"));
}

TEST_F(TaskListOnDiskTest, ReadsBackWhatItWroteInTheUsersLocale) {
  ASSERT_TRUE(file_.Save(TaskList{Reminder(L"  喝水 ")}));
  ASSERT_TRUE(file_.Load(tasks_));
  EXPECT_EQ(tasks_.at(0).Source, L"喝水\\r\\n休息");
  EXPECT_EQ(tasks_[0].LastRun, kNow - 1);
  EXPECT_EQ(tasks_[0].NextRun, kNow + 0.25);
  EXPECT_EQ(folder_.Count(), 1U);
}

// Windows refuses to move over a write-protected file, Wine moves: the answer has to fit the file.
TEST_F(TaskListOnDiskTest, AWriteProtectedListIsTheOldOneOrTheNewOne) {
  const std::string bytes = TaskListBytes(TaskList{Reminder(L"a")}, AppendLocaleDateText);
  WriteBytes(path_, bytes);
  SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_READONLY);
  const TaskList next = {Reminder(L"b")};
  const bool isSaved = file_.Save(next);
  EXPECT_EQ(ReadBytes(path_), isSaved ? TaskListBytes(next, AppendLocaleDateText) : bytes);
  EXPECT_EQ(folder_.Count(), 1U);
  SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_NORMAL);
}

}  // namespace
}  // namespace tellurvane

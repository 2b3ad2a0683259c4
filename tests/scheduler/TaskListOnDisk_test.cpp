// The task list file on the real file system, in the user's locale.
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/LocaleDates.h"
#include "scheduler/DecodeAnsi.h"
#include "scheduler/TaskListFile.h"
#include "scheduler/Win32FileOperations.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Utf16.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr DateSerial kNow = 40588.5;  // 14 February 2011, 12:00:00
constexpr std::string_view kEmptyList("\xFF\xFE", 2);

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

  static std::wstring Line(const std::wstring& name) {
    return L"0|30|1|3\t" + name + L"\ttext\t40587.5\t40588.75\r\n";
  }

  void Put(std::string_view bytes) const { WriteBytes(path_, bytes); }
  std::string Bytes() const { return ReadBytes(path_); }

  // The bytes of the one backup; empty when there is none.
  std::string Backup() const {
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
      if (entry.path().extension() == L".bak") return ReadBytes(entry.path().wstring());
    }
    return "";
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

TEST_F(TaskListOnDiskTest, WritesTheUsersLocaleAndReadsItBack) {
  ASSERT_TRUE(file_.Save(TaskList{Reminder(L"  喝水 ")}));
  const std::wstring dates = GetACP() == 950 ? L"2011/2/13 下午12:00:00\t2011/2/14 下午6:00:00"
                                             : L"2/13/2011 12:00:00 PM\t2/14/2011 6:00:00 PM";
  EXPECT_EQ(Bytes(), Utf16Bytes(L"0|30|1|3\t喝水\t喝水\\r\\n休息\t" + dates + L"\r\n"));
  ASSERT_TRUE(file_.Load(tasks_));
  EXPECT_EQ(tasks_.at(0).Source, L"喝水\\r\\n休息");
  EXPECT_EQ(tasks_[0].LastRun, kNow - 1);
  EXPECT_EQ(tasks_[0].NextRun, kNow + 0.25);
  EXPECT_EQ(folder_.Count(), 1U);
}

TEST_F(TaskListOnDiskTest, AnAnsiFileIsReadAndRewrittenAsUtf16) {
  // 音樂 in Big5; the same four bytes under the western code page.
  Put("0|30|1|3\t\xAD\xB5\xBC\xD6\ttext\t40587.5\t40588.75\r\n");
  ASSERT_TRUE(file_.Load(tasks_));
  const std::wstring name = GetACP() == 950 ? L"音樂" : L"\x00AD\x00B5\x00BC\x00D6";
  EXPECT_EQ(tasks_[0].Name, name);
  EXPECT_EQ(Bytes().substr(0, 2), kEmptyList);
  EXPECT_NE(Bytes().find(Utf16Bytes(L"\t" + name + L"\t").substr(2)), std::string::npos);
  EXPECT_EQ(Backup(), "") << "nothing was lost";
}

TEST_F(TaskListOnDiskTest, ATargetThatStaysHeldKeepsTheOldListAndLeavesNothingBeside) {
  const std::string bytes = Utf16Bytes(Line(L"a"));
  Put(bytes);
  const UniqueKernelHandle held(CreateFileW(path_.c_str(), GENERIC_READ,
                                            FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                            OPEN_EXISTING, 0, nullptr));
  EXPECT_FALSE(file_.Save(TaskList{Reminder(L"b")}));
  EXPECT_EQ(Bytes(), bytes);
  EXPECT_EQ(folder_.Count(), 1U);
}

// Windows refuses to move over a write-protected file, Wine moves: the answer has to fit the file.
TEST_F(TaskListOnDiskTest, AWriteProtectedListIsTheOldOneOrTheNewOne) {
  const std::string bytes = Utf16Bytes(Line(L"a"));
  Put(bytes);
  SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_READONLY);
  const TaskList next = {Reminder(L"b")};
  const bool isSaved = file_.Save(next);
  EXPECT_EQ(Bytes(), isSaved ? TaskListBytes(next, AppendLocaleDateText) : bytes);
  EXPECT_EQ(folder_.Count(), 1U);
  SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(TaskListOnDiskTest, AListThatCannotBeReadIsNotWrittenOver) {
  const std::string bytes = Utf16Bytes(Line(L"a"));
  Put(bytes);
  {
    const UniqueKernelHandle owner(
        CreateFileW(path_.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_FALSE(file_.Load(tasks_));
  }
  EXPECT_EQ(Bytes(), bytes);
  // Once it can be read it is kept beside before the first save goes over it.
  EXPECT_TRUE(file_.Save(TaskList{Reminder(L"b")}));
  EXPECT_EQ(Backup(), bytes);
}

}  // namespace
}  // namespace tellurvane

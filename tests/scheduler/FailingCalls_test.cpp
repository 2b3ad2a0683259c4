// The schedule editor and the list file where calls of the platform fail.
#include <windows.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "base/CodePage.h"
#include "base/PlatformText.h"
#include "scheduler/FrmSet.h"
#include "scheduler/TaskListFile.h"
#include "scheduler/Win32FileOperations.h"
#include "tests/scheduler/ListOnDisk.h"
#include "tests/support/ActingForm.h"
#include "tests/support/EachCallFails.h"
#include "tests/support/FailingImport.h"
#include "tests/support/Moments.h"
#include "tests/support/TemporaryFolder.h"

namespace tellurvane {
namespace {

DateSerial Noon() { return At(2011, 2, 14, 12); }

TaskRecord Reminder(const std::wstring& name) {
  TaskRecord task;
  task.Name = name;
  task.Source = L"喝水";
  task.MediaType = kReminderNote;
  task.Enabled = true;
  task.Interval = 5;
  task.LastRun = At(2011, 2, 13, 9, 30);
  task.NextRun = At(2011, 2, 15, 13, 0, 7);
  return task;
}

std::wstring Same(const std::wstring& text) { return text; }

void SaveInEditor() {
  ActingForm owner;
  TaskList tasks = {Reminder(L"甲"), Reminder(L"乙")};
  int saves = 0;
  FrmSet editor(tasks,
                {.clock = Noon,
                 .pathExists = [](const std::wstring&) { return true; },
                 .isSameName = EqualsIgnoringCase},
                [&] { ++saves; },
                {.browseForSource = [](bool) { return std::nullopt; },
                 .chooseStation = {},
                 .editNote = {},
                 .ask = [](HWND, const std::wstring&, UINT) { return IDOK; },
                 .noteForScreen = Same,
                 .noteForList = Same});
  owner.ActLater([&] {
    SetWindowTextW(InsideOf(editor.hwnd(), L"Edit").at(1), L"7");
    PressButton(editor.hwnd(), L"儲存專案");
    PressButton(editor.hwnd(), L"關閉");
    EndDialogWindow(editor.hwnd());
  });
  editor.Open(owner.hwnd(), 1);
  EXPECT_TRUE(IsWindowEnabled(owner.hwnd()));
  EXPECT_EQ(tasks[1].Name, L"乙");
  EXPECT_EQ(tasks[1].NextRun, Reminder(L"乙").NextRun);
  EXPECT_EQ(saves, tasks[1].Interval == 7 ? 1 : 0);
}

TEST(FailingCallsTest, TheEditorKeepsTheTasks) {
  FailEachCall({"editor", SaveInEditor, {"CreateWindowExW"}});
}

TaskList OldTasks() { return {Reminder(L"甲"), Reminder(L"乙")}; }
TaskList NewTasks() { return {Reminder(L"甲"), Reminder(L"乙"), Reminder(L"丙")}; }

// A list that is loaded, changed and saved.
class ListScenario {
 public:
  explicit ListScenario(std::string before) : before_(std::move(before)) {}

  void Prepare() {
    folder_ = std::make_unique<TemporaryFolder>();
    WriteBytes(folder_->File(L"JobList.dbs"), before_);
  }
  void LoadAndSave() const {
    Win32FileOperations files([](unsigned) {});
    TaskListFile file(files, folder_->File(L"JobList.dbs"),
                      {UserDateReader, AppendLocaleDateText, DecodeAnsi}, Noon);
    TaskList tasks;
    file.Load(tasks);
    tasks.push_back(Reminder(L"丙"));
    (void)file.Save(tasks);
  }
  std::string Fault() const {
    if (ReadBytes(folder_->File(L"JobList.dbs")) == before_) return "";
    return ListFault(*folder_, before_, {OldTasks(), NewTasks()}, Noon());
  }

 private:
  std::string before_;
  std::unique_ptr<TemporaryFolder> folder_;
};

void FailEachCallOf(const char* name, ListScenario list, std::set<std::string> calls) {
  FailEachCall({name, [&] { list.LoadAndSave(); }, std::move(calls), [&] { list.Prepare(); },
                [&] { return list.Fault(); }});
}

TEST(FailingCallsTest, TheListFileIsTheOldOneOrTheNewOneOrKeptBesideItself) {
  FailEachCallOf(
      "list file", ListScenario(TaskListBytes(OldTasks(), AppendLocaleDateText)),
      {"CreateFileW", "FlushFileBuffers", "GetFileSizeEx", "MoveFileExW", "ReadFile", "WriteFile"});
}

// UTF-8, with dates that only the system understands and a line that nobody does.
TEST(FailingCallsTest, ADamagedListFileIsKeptBesideItselfOrLeftAlone) {
  std::string bytes;
  for (const TaskRecord& task : OldTasks()) {
    bytes += "0|5|True|3\t" + Utf8(task.Name) + "\t" + Utf8(task.Source) +
             "\t13 February 2011\t15 February 2011 13:00:07\r\n";
  }
  FailEachCallOf("damaged list file", ListScenario(bytes + "?\r\n"),
                 {"CopyFileW", "GetFileAttributesW"});
}

// Whatever it is that fails: a disk that is not ready, a share that is gone, a file that is denied.
TEST(FailingCallsTest, OnlyFileNotFoundCountsAsMissing) {
  const TemporaryFolder folder;
  const std::wstring list = folder.File(L"JobList.dbs");
  WriteBytes(list, "bytes");
  Win32FileOperations files([](unsigned) {});
  for (const DWORD error :
       {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION,
        ERROR_NOT_READY, ERROR_BAD_NETPATH, ERROR_IO_DEVICE, ERROR_CRC}) {
    const bool isMissing = error == ERROR_FILE_NOT_FOUND;
    FailingImport open({"CreateFileW", static_cast<std::uint64_t>(-1), error});
    open.Fail(1, INT_MAX);
    EXPECT_EQ(files.OpenForReading(list), isMissing ? OpenOutcome::kMissing : OpenOutcome::kFailed)
        << error;
    FailingImport copy({"CopyFileW", 0, ERROR_PATH_NOT_FOUND});
    FailingImport look({"GetFileAttributesW", INVALID_FILE_ATTRIBUTES, error});
    copy.Fail(1, INT_MAX);
    look.Fail(1, INT_MAX);
    EXPECT_EQ(files.CopyToNew(list, folder.File(L"to")),
              isMissing ? CopyOutcome::kSourceMissing : CopyOutcome::kFailed)
        << error;
  }
}

}  // namespace
}  // namespace tellurvane

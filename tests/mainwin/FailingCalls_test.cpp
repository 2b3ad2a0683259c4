// The main window and the player when a call fails.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "mainwin/FrmMain.h"
#include "mainwin/WindowsMediaPlayer.h"
#include "tests/mainwin/FakePlayer.h"
#include "tests/scheduler/ListOnDisk.h"
#include "tests/support/EachCallFails.h"
#include "tests/support/FormProbe.h"
#include "tests/support/GdiPlusSession.h"
#include "tests/support/Moments.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WholeSettings.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/Com.h"

namespace tellurvane {
namespace {

constexpr WPARAM kLeaveButton = 5;

// The main window from its creation to the end of the program.
class WindowScenario {
 public:
  void Prepare() {
    folder_ = std::make_unique<TemporaryFolder>();
    WriteBytes(folder_->File(L"Setting.ini"), WholeSettings().Bytes());
    before_ = TaskListBytes(Tasks(), AppendLocaleDateText);
    WriteBytes(folder_->File(L"JobList.dbs"), before_);
  }

  void OpenHideAndLeave() const {
    const GdiPlusSession gdiPlus;
    FakePlayer player;
    ModGeneral general(folder_->Path());
    general.LoadIcons();
    FrmMain window(general, player);
    window.Create();
    window.Open();
    Pump();
    const HWND list = InsideOf(window.hwnd(), WC_LISTVIEWW).at(0);
    SendMessageW(list, LVM_SETITEMSTATE, 0, Selected());
    SendMessageW(list, WM_MOUSEMOVE, 0, MAKELPARAM(60, 20));
    window.RunSelectedTask();
    Pump();
    window.FormMin();
    window.FormMin();
    const HWND toolbar = InsideOf(window.hwnd(), TOOLBARCLASSNAMEW).at(0);
    SendMessageW(GetParent(toolbar), WM_COMMAND, kLeaveButton, reinterpret_cast<LPARAM>(toolbar));
    Pump();
    EXPECT_FALSE(window.IsLoaded());
  }

  std::string Fault() const {
    // A FilesPath that could not be read is written as empty.
    const std::string settings = ReadBytes(folder_->File(L"Setting.ini"));
    const bool isUnchanged = settings == WholeSettings().Bytes();
    if (!isUnchanged && settings != WholeSettings{.filesPath = L""}.Bytes())
      return "wrong settings";
    return ListFault(*folder_, before_, {Tasks()}, At(2011, 2, 14, 12));
  }

 private:
  static LPARAM Selected() {
    static LVITEMW item = {};
    item.stateMask = item.state = LVIS_SELECTED | LVIS_FOCUSED;
    return reinterpret_cast<LPARAM>(&item);
  }
  static TaskList Tasks() {
    TaskList tasks(2);
    for (TaskRecord& task : tasks) {
      task.Name = &task == &tasks[0] ? L"電台" : L"喝水";
      task.MediaType = &task == &tasks[0] ? kInternetRadio : kReminderNote;
      task.Source = L"http://example.invalid/";
      task.Enabled = true;
      task.IntervalUnit = kDays;
      task.Interval = 1;
      task.LastRun = At(2011, 2, 13, 9, 30);
      task.NextRun = At(3011, 2, 15, 13, 0, 7);
    }
    return tasks;
  }

  std::unique_ptr<TemporaryFolder> folder_;
  std::string before_;
};

TEST(FailingCallsTest, TheMainWindowKeepsItsFiles) {
  WindowScenario scenario;
  FailEachCall(
      {"main window",
       [&] { scenario.OpenHideAndLeave(); },
       {"CreateFileW", "CreateWindowExW", "FlushFileBuffers", "GetPrivateProfileStringW",
        "MoveFileExW", "ReadFile", "Shell_NotifyIconW", "WriteFile", "WritePrivateProfileStringW"},
       [&] { scenario.Prepare(); },
       [&] { return scenario.Fault(); }});
}

void UsePlayer() {
  const ComApartment apartment;
  WindowsMediaPlayer player;
  player.Volume(30);
  player.Url(L"C:\\none.mp3");
  player.Play();
  player.IsOpening();
  player.Status();
  player.PositionText();
  player.Stop();
}

TEST(FailingCallsTest, WorksWithoutThePlayer) {
  FailEachCall({"player", UsePlayer, {"CoCreateInstance"}});
}

}  // namespace
}  // namespace tellurvane

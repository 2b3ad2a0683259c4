// The main window with a folder and a player of its own.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/LocaleDates.h"
#include "mainwin/FrmMain.h"
#include "scheduler/TaskListText.h"
#include "tests/mainwin/FakePlayer.h"
#include "tests/support/ActingForm.h"
#include "tests/support/FormProbe.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WholeSettings.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {

// Of the toolbar.
enum Button { kNew = 1, kPlay, kStop, kOptions, kLeave };

// The pixels of a box.
inline std::vector<Color> Shown(HWND box) {
  const DrawnWindow& drawn = ObjectOf(box);
  return PixelsIn(drawn.Dc(), {0, 0, drawn.ScaleWidth(), drawn.ScaleHeight()});
}

class FrmMainTest : public testing::Test {
 protected:
  void SetUp() override { WriteBytes(folder.File(L"Setting.ini"), WholeSettings().Bytes()); }

  // Writes the list file. The tasks run in an hour.
  void Tasks(std::initializer_list<std::pair<MediaType, std::wstring>> tasks) const {
    TaskList tasksOfFile;
    for (const auto& [type, source] : tasks) {
      TaskRecord task;
      task.Name = L"task " + std::to_wstring(tasksOfFile.size());
      task.Source = source;
      task.MediaType = type;
      task.Enabled = true;
      task.IntervalUnit = kHours;
      task.Interval = 1;
      task.NextRun = SerialFromSeconds(SecondsFromSerial(Now()) + 3'600);
      tasksOfFile.push_back(task);
    }
    WriteBytes(folder.File(L"JobList.dbs"), TaskListBytes(tasksOfFile, AppendLocaleDateText));
  }

  void Open() {
    CloseWindow();
    general = std::make_unique<ModGeneral>(folder.Path());
    window = std::make_unique<FrmMain>(*general, player, [this] { return milliseconds(); });
    window->Create();
    window->Open();
    Pump();
    toolbar = InsideOf(window->hwnd(), TOOLBARCLASSNAMEW).at(0);
    list = InsideOf(window->hwnd(), WC_LISTVIEWW).at(0);
  }

  void TearDown() override { CloseWindow(); }
  void CloseWindow() {
    window.reset();
    MSG message = {};
    while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) continue;
  }

  // The sliders by their place: the volume slider is the left one.
  std::vector<HWND> Sliders() const {
    std::vector<HWND> sliders;
    for (HWND child = GetWindow(window->hwnd(), GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
      const RECT place = OnScreen(child);
      if (place.bottom - place.top == 19) sliders.push_back(child);
    }
    std::ranges::sort(sliders, {}, [](HWND slider) { return OnScreen(slider).left; });
    EXPECT_EQ(sliders.size(), 2U);
    return sliders;
  }
  HWND VolumeSlider() const { return Sliders().at(0); }
  HWND PositionSlider() const { return Sliders().at(1); }
  // Opens the editor, changes the list, saves it and closes the editor.
  void Edit(const std::function<void(TaskList& tasks)>& change) {
    ActingForm user;
    user.ActLater([&] {
      change(general->tasks);
      (void)general->taskListFile.Save(general->tasks);
      EndDialogWindow(GetLastActivePopup(window->hwnd()));
    });
    Press(kNew);
  }
  // Holds the list and the status strip.
  HWND Area() const { return GetParent(GetParent(GetParent(list))); }
  void Press(Button button) const {
    SendMessageW(GetParent(toolbar), WM_COMMAND, static_cast<WPARAM>(button),
                 reinterpret_cast<LPARAM>(toolbar));
  }
  bool IsOn(Button button) const {
    return SendMessageW(toolbar, TB_ISBUTTONENABLED, static_cast<WPARAM>(button), 0) != 0;
  }
  // -1 selects none.
  void Select(int row) const {
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = row < 0 ? 0 : item.stateMask;
    SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  }
  std::vector<std::wstring> Taken() { return std::exchange(player.calls, {}); }
  // True if the settings file has the line.
  bool HasSetting(const std::wstring& line) const {
    const std::string bytes = Utf16Bytes(line + L"\r\n").substr(2);
    return ReadBytes(folder.File(L"Setting.ini")).find(bytes) != std::string::npos;
  }

  TemporaryFolder folder;
  FakePlayer player;
  FrmMain::TickCount milliseconds = GetTickCount64;
  std::unique_ptr<ModGeneral> general;
  std::unique_ptr<FrmMain> window;
  HWND toolbar = nullptr;
  HWND list = nullptr;
};

}  // namespace tellurvane

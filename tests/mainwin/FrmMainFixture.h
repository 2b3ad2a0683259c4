// What the tests of the main window share: the window on a folder and a player of their own.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/LocaleDates.h"
#include "mainwin/FrmMain.h"
#include "scheduler/TaskListText.h"
#include "tests/mainwin/FakePlayer.h"
#include "tests/support/FormProbe.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WholeSettings.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {

// Of the toolbar.
enum Button { kNew = 1, kPlay, kStop, kOptions, kLeave };

// What a box of the window shows.
inline std::vector<Color> Shown(HWND box) {
  const DrawnWindow& drawn = ObjectOf(box);
  std::vector<Color> pixels;
  for (int y = 0; y < drawn.ScaleHeight(); ++y) {
    for (int x = 0; x < drawn.ScaleWidth(); ++x) pixels.push_back(PixelOf(drawn.Dc(), x, y));
  }
  return pixels;
}

class FrmMainTest : public testing::Test {
 protected:
  void SetUp() override { WriteBytes(folder.File(L"Setting.ini"), WholeSettings().Bytes()); }

  // Puts tasks into the file; they run in an hour.
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
    general = std::make_unique<ModGeneral>(folder.Path());
    window = std::make_unique<FrmMain>(*general, player, [this] { return milliseconds(); });
    window->Create();
    window->Open();
    Pump();
    toolbar = InsideOf(window->hwnd(), TOOLBARCLASSNAMEW).at(0);
    list = InsideOf(window->hwnd(), WC_LISTVIEWW).at(0);
  }

  void TearDown() override {
    window.reset();
    MSG message = {};
    while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) continue;
  }

  // The box that holds the list and the status strip.
  HWND Area() const { return GetParent(GetParent(GetParent(list))); }
  void Press(Button button) const {
    SendMessageW(GetParent(toolbar), WM_COMMAND, static_cast<WPARAM>(button),
                 reinterpret_cast<LPARAM>(toolbar));
  }
  bool IsOn(Button button) const {
    return SendMessageW(toolbar, TB_ISBUTTONENABLED, static_cast<WPARAM>(button), 0) != 0;
  }
  void Select(int row) const {
    LVITEMW item = {};
    item.stateMask = item.state = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  }
  std::vector<std::wstring> Taken() { return std::exchange(player.calls, {}); }
  std::wstring SettingsText() const {
    const std::string bytes = ReadBytes(folder.File(L"Setting.ini"));
    std::wstring text;
    for (size_t at = 2; at + 1 < bytes.size(); at += 2) {
      text += static_cast<wchar_t>(static_cast<unsigned char>(bytes[at]) |
                                   static_cast<unsigned char>(bytes[at + 1]) << 8);
    }
    return text;
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

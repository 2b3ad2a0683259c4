// The main window: toolbar, sliders, task list, status strip and tray icon.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/ModGeneral.h"
#include "base/PictureFormat.h"
#include "clock/FrmTime.h"
#include "mainwin/Keys.h"
#include "mainwin/MediaPlayer.h"
#include "mainwin/PlaybackController.h"
#include "mainwin/TaskRowsView.h"
#include "notes/NoteStack.h"
#include "scheduler/FrmSet.h"
#include "scheduler/TaskRunner.h"
#include "ui/Form.h"
#include "ui/PictureBox.h"
#include "ui/Strip.h"
#include "ui/Timer.h"
#include "ui/clsNotifyIcon.h"
#include "ui/clsProgress.h"
#include "ui/clsToolbar.h"

namespace tellurvane {

// Owns the main window and is never shown: an owned window has a taskbar button only while it asks
// for one. It ignores close messages, which some programs post to every window: Windows would
// destroy the main window with it, and nothing would be saved.
class TaskbarOwner final : public Form {
  bool Form_Unload() override { return false; }
};

class FrmMain final : public Form, private PlaybackView, private TaskTimer {
 public:
  // Milliseconds since some moment; never goes back.
  using TickCount = std::function<std::uint64_t()>;

  // `general` and `player` outlive the window. The lambda calls through the import table each time;
  // the function's address, read once, would miss a stand-in that replaces the entry later.
  FrmMain(
      ModGeneral& general, MediaPlayer& player,
      TickCount milliseconds = [] { return GetTickCount64(); });

  // Called at the end of shutdown, after the window released its resources.
  void SetReleaseProcess(std::function<void()> release) { releaseProcess_ = std::move(release); }

  // Creates the window and everything in it, loads the task list and starts the timers.
  void Create();

  // Shows the window, or brings it up to date.
  void Open();
  // Hides the window to the tray, or shows it again.
  void FormMin();
  void RunSelectedTask();
  // Reads the list file. The task timer runs while there is at least one task.
  void ReloadTaskList();
  // Reads the list file again if it could not be opened before.
  void RetryUnreadList();

 private:
  // Messages that the window posts to itself.
  static constexpr UINT kPostedTick = WM_APP;
  static constexpr UINT kPostedLeave = WM_APP + 1;
  enum ToolbarButton { kNewButton = 1, kPlayButton, kStopButton, kOptionsButton, kLeaveButton };

  // Form
  void Form_Load() override;
  void Form_Resize() override;
  bool Form_Unload() override;
  bool Form_KeyDown(const KeyEvent& event) override;
  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void ColorsChanged() override;

  // PlaybackView
  void ShowPlaying(size_t row) override;
  void ShowStopped() override;
  void ShowSign(PlaybackSign sign) override { rows_.ShowSign(sign); }
  void ShowOutcome(const RunOutcome& outcome) override { rows_.SetOutcomeOfPlaying(outcome); }
  void EnablePosition(bool enable) override;
  void PositionRange(double seconds) override;
  void PositionValue(double seconds) override;
  void EnableTimerVis(bool enable) override { TimerVis_.Enabled(enable); }
  void EnableTimerOpening(bool enable) override { TimerOpening_.Enabled(enable); }
  // TaskTimer
  void SetInterval(unsigned milliseconds) override { tmrJob_.Interval(milliseconds); }
  void SetEnabled(bool enable) override;
  void PostTick() override;
  std::uint64_t Milliseconds() override { return milliseconds_(); }

  void CreateTrayIcon();
  void CreateList();
  void CreateToolbar();
  static Strip ToolbarImages();
  void ShowToolbarImages(const Strip& images);
  void CreateSliders();
  void CreateStatusBar();
  void StartTimers();
  PictureBox& AddBox(PictureBox& box, HWND parent, bool isTabStop = false);

  void clsIcon_LButtonDown();
  void clsIcon_RButtonDown() { IconMenuClick(FrontWindow()); }
  void ToolBar_ButtonClick(int id);
  void ListView_Click(std::optional<POINT> place);
  void ListView_DblClick() { RunSelectedTask(); }
  void SliderH_PostRender();
  void SliderVolH_PostRender();
  void TimerSet_Tick();
  // Tells screen readers if the player's state has changed.
  void ReportStatusWords();
  void picStatusBar_Paint(HDC context);

  // The menus open at the mouse, unless a place of the screen is named.
  void OptionsMenuClick(std::optional<POINT> place);
  // Opens the tray menu. `owner` is in the foreground while it is open.
  void IconMenuClick(HWND owner, std::optional<POINT> place = {});
  void SwitchSongLoop();
  void SwitchStartPlay();
  void SwitchClock();
  void Leave();
  // Opens the schedule editor on a task, or on a new one. Returns when it is closed.
  void OpenEditor(std::optional<size_t> row);
  void SaveAll();
  void ReleaseChildren();
  void ShowInTaskbar(bool show);
  // Neither hidden nor minimised.
  bool IsOnScreen() const { return Visible() && !IsIconic(hwnd()); }
  void HideToTray();
  // Names the failed tasks while the window is hidden.
  void UpdateTrayTip();
  void ShowTrayTip(const std::wstring& tip);
  // Not soon after the taskbar was slow.
  void AskTaskbar(const std::function<void()>& ask);
  // Called each second, for a taskbar that did not take the icon.
  void RetryTrayIcon();
  void CancelPendingHide();
  HWND FrontWindow() const;
  // Shows the window and gives the foreground to it or to its open dialog.
  void ComeToFront();
  void HandlePower(WPARAM event);
  void PauseTaskTimer();
  void WakeUp_Tick();
  void EnablePlayButtons(bool isPlaying);

  void OrderTabStops();
  // A key of the keyboard or of a headset. False if nothing is to be stopped.
  bool StopByMediaKey(LPARAM command);
  // Below its button.
  POINT OptionsPlace() const;
  void Obey(KeyCommand command);
  // The open notes in their order, and the clock.
  std::vector<HWND> PassedWindows() const;
  void GoToNextWindow();
  bool IsPassed(HWND window) const;
  // The window that has the keyboard gets it back after the notes and the clock.
  void RememberKeyboard();
  void GiveKeyboardBack();
  NoteKeyboard MakeNoteKeyboard();

  TaskCallbacks MakeTaskCallbacks();
  PlaybackCallbacks MakePlaybackCallbacks();
  ClockCallbacks MakeClockCallbacks();
  EditorCallbacks MakeEditorCallbacks();
  bool TakeOverEditedList(bool isSaved);
  void ShowTaskList();

  ModGeneral& general_;
  MediaPlayer& player_;
  TickCount milliseconds_;
  std::function<void()> releaseProcess_;
  bool quitFlag_ = false;
  bool hasOutlinedImages_ = false;  // on the toolbar
  bool isHidePending_ = false;      // until the taskbar takes the icon
  std::uint64_t nextIconTry_ = 0;
  std::uint64_t pausedSince_ = 0;
  FrmSet* editor_ = nullptr;  // while it is open
  HWND keyboardBefore_ = nullptr;
  std::wstring statusText_;
  std::wstring trayTip_;
  std::wstring statusWords_;
  DayHalves dayHalves_;

  TaskbarOwner taskbarOwner_;
  PictureBox picToolbar_;
  PictureBox picSliderVolH_;
  PictureBox picSliderH_;
  PictureBox PicListView_;  // the list and, below it, the status strip
  PictureBox listHost_;
  PictureBox picStatusBar_;
  Timer tmrJob_;
  Timer TimerVis_;
  Timer TimerOpening_;
  Timer TimerSet_;
  Timer WakeUp_;  // runs while the computer falls asleep, and for nine seconds after it wakes up
  clsNotifyIcon clsIcon_;
  TaskRowsView rows_;
  clsToolbar ToolBar_;
  clsProgress SliderH_;
  clsProgress SliderVolH_;

  FrmTime clock_;
  NoteStack notes_;

  PlaybackController playback_;
  TaskRunner runner_;
};

}  // namespace tellurvane

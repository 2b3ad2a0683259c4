// The main window. For now the plainest that can run tasks: its list, its timer, its way out.
#pragma once

#include <windows.h>

#include <functional>

#include "app/ModGeneral.h"
#include "scheduler/TaskRunner.h"

namespace tellurvane {

class FrmMain : private TaskRows, private TaskTimer, private TaskPlayer {
 public:
  explicit FrmMain(ModGeneral& general);
  FrmMain(const FrmMain&) = delete;
  FrmMain& operator=(const FrmMain&) = delete;
  ~FrmMain() override;

  // What is given back last, once the window has let go of everything of its own.
  void SetReleaseProcess(std::function<void()> release) { releaseProcess_ = std::move(release); }

  // Creates the window, loads the task list and switches the task timer on.
  void Load();
  void Show();

 private:
  // TaskRows
  size_t RowCount() override;
  void SelectRow(size_t row) override;
  void RefreshRow(size_t row) override;
  void EnableArea(bool enable) override;
  void SetRedraw(bool redraw) override;
  // TaskTimer
  void SetInterval(unsigned milliseconds) override;
  void SetEnabled(bool enable) override;
  // TaskPlayer: nothing plays yet; the runs are recorded all the same.
  void StopPlayback() override {}
  void SetRadioFlag(bool) override {}
  void SetUrl(const std::wstring&) override {}
  void Play() override {}
  void ShowPlaying() override {}
  void FollowPosition() override {}

  static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
  void CreateControls();
  void Form_Resize();
  // False when the window stays.
  bool Form_Unload();
  void cmdExit_Click();
  // Reads the list from the file again. The task timer runs while there is at least one task.
  void ReloadTaskList();
  void FillRows();
  std::wstring RowText(size_t row) const;
  TaskActions Actions();

  ModGeneral& general_;
  HWND window_ = nullptr;
  HWND list_ = nullptr;
  HWND exit_ = nullptr;
  unsigned timerMilliseconds_ = 2'000;
  bool quitFlag_ = false;
  std::function<void()> releaseProcess_;
  TaskRunner runner_;
};

}  // namespace tellurvane

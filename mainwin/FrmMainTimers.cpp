// The main window's timers, and the task timer's pause while the computer sleeps.
#include <utility>

#include "base/LocaleDates.h"
#include "mainwin/FrmMain.h"
#include "mainwin/StatusLine.h"

namespace tellurvane {
namespace {

constexpr unsigned kVisMilliseconds = 100;
constexpr unsigned kSetMilliseconds = 1'000;
// Ten seconds together with one tick of the task timer: by then network and sound are back.
constexpr unsigned kWakeUpMilliseconds = 9'000;
constexpr std::uint64_t kSleptMilliseconds = 18'000;

}  // namespace

void FrmMain::StartTimers() {
  tmrJob_.Tick = [this] { runner_.Tick(); };
  TimerVis_.Interval(kVisMilliseconds);
  TimerVis_.Tick = [this] { playback_.TimerVis_Tick(); };
  TimerOpening_.Interval(kVisMilliseconds);
  TimerOpening_.Tick = [this] { playback_.TimerOpening_Tick(); };
  TimerSet_.Interval(kSetMilliseconds);
  TimerSet_.Tick = [this] { TimerSet_Tick(); };
  TimerSet_.Enabled(true);
  WakeUp_.Interval(kWakeUpMilliseconds);
  WakeUp_.Tick = [this] { WakeUp_Tick(); };
}

// Off after the window is destroyed: a tick that ended the program still enables the timer. Off
// while the editor is open: music that ends may run a task and enable it. Off while the computer
// falls asleep or wakes up.
void FrmMain::SetEnabled(bool enable) {
  tmrJob_.Enabled(enable && IsLoaded() && editor_ == nullptr && !WakeUp_.Enabled());
}

// The pause begins with the suspension: a tick can come before the system reports that it has
// resumed. If the computer does not fall asleep after all, WakeUp ends the pause.
void FrmMain::HandlePower(WPARAM event) {
  if (event != PBT_APMSUSPEND && event != PBT_APMRESUMEAUTOMATIC) return;
  if (event == PBT_APMSUSPEND) playback_.FallAsleep();
  PauseTaskTimer();
}

void FrmMain::PauseTaskTimer() {
  pausedSince_ = milliseconds_();
  WakeUp_.Enabled(true);
  SetEnabled(false);
}

// Tasks that fell due during the pause run once, at the next tick.
void FrmMain::WakeUp_Tick() {
  // Far too late: the computer has slept, and the system has not reported it yet.
  if (milliseconds_() - pausedSince_ > kSleptMilliseconds) {
    PauseTaskTimer();
    return;
  }
  WakeUp_.Enabled(false);
  runner_.SetTaskTimer(rows_.RowCount() > 0);
}

// If this fails, the next run of continuous play posts one.
void FrmMain::PostTick() { (void)PostMessageW(hwnd(), kPostedTick, 0, 0); }

void FrmMain::ReportStatusWords() {
  std::wstring words = StatusLineWords(player_);
  if (std::exchange(statusWords_, std::move(words)) == statusWords_) return;
  NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, picStatusBar_.hwnd(), OBJID_CLIENT, CHILDID_SELF);
}

void FrmMain::TimerSet_Tick() {
  // After a wake-up the network needs some seconds.
  playback_.TimerSet_Tick(!WakeUp_.Enabled());
  // The player may handle messages, and one of them may end the program.
  if (!IsLoaded()) return;
  RetryUnreadList();
  RetryTrayIcon();
  UpdateTrayTip();
  // A hidden window is not drawn.
  if (!IsOnScreen()) return;
  statusText_ = StatusLineText(player_, general_.radioFlag, Now(), dayHalves_);
  picStatusBar_.Redraw();
  ReportStatusWords();
  rows_.RefreshMarks();
}

}  // namespace tellurvane

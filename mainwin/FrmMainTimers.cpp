// The main window's timers, and what lets the task timer rest.
#include "base/LocaleDates.h"
#include "mainwin/FrmMain.h"
#include "mainwin/StatusLine.h"

namespace tellurvane {
namespace {

constexpr unsigned kVisMilliseconds = 100;
constexpr unsigned kSetMilliseconds = 1'000;
// Ten seconds with the task timer's own one: by then network and sound are back.
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

// A window that is gone has no timer: a tick that ends the program still tries to go on. While the
// editor is open no task falls due, though music that ends may run one again. Nor does one while
// the computer falls asleep or wakes up.
void FrmMain::SetEnabled(bool enable) {
  tmrJob_.Enabled(enable && IsLoaded() && editor_ == nullptr && !WakeUp_.Enabled());
}

// The task timer rests from the suspension on: a tick can come before the system says that it has
// resumed. Should the computer not fall asleep after all, it goes on by itself.
void FrmMain::HandlePower(WPARAM event) {
  if (event != PBT_APMSUSPEND && event != PBT_APMRESUMEAUTOMATIC) return;
  if (event == PBT_APMSUSPEND) playback_.StopPlayback();
  PauseTaskTimer();
}

void FrmMain::PauseTaskTimer() {
  pausedSince_ = milliseconds_();
  WakeUp_.Enabled(true);
  SetEnabled(false);
}

// What fell due meanwhile runs once, at the next tick.
void FrmMain::WakeUp_Tick() {
  // Far too late: the computer has slept meanwhile, and the system has not reported it yet.
  if (milliseconds_() - pausedSince_ > kSleptMilliseconds) {
    PauseTaskTimer();
    return;
  }
  WakeUp_.Enabled(false);
  runner_.SetTaskTimer(rows_.RowCount() > 0);
}

// A tick that cannot be posted is made up for by the next run of continuous play.
void FrmMain::PostTick() { (void)PostMessageW(hwnd(), kPostedTick, 0, 0); }

void FrmMain::TimerSet_Tick() {
  RetryUnreadList();
  RetryTrayIcon();
  // Nobody sees a hidden window: drawing it costs nothing.
  if (!IsOnScreen()) return;
  statusText_ = StatusLineText(player_, general_.radioFlag, Now(), dayHalves_);
  picStatusBar_.Redraw();
  rows_.RefreshMarks();
}

}  // namespace tellurvane

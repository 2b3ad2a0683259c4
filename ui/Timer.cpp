#include "ui/Timer.h"

#include <map>
#include <utility>

#include "base/FatalError.h"
#include "ui/Boundary.h"
#include "ui/Event.h"

namespace tellurvane {
namespace {

// A tick that was already under way when its timer was disabled finds nothing here.
std::map<UINT_PTR, Timer*>& RunningTimers() {
  static std::map<UINT_PTR, Timer*> timers;
  return timers;
}

}  // namespace

void Timer::Interval(unsigned milliseconds) {
  milliseconds_ = milliseconds;
  if (Enabled()) Enabled(true);
}

void Timer::Enabled(bool enabled) {
  if (id_ != 0) {
    RunningTimers().erase(id_);
    KillTimer(nullptr, id_);
    id_ = 0;
  }
  if (!enabled) return;
  // Its place is made first: a timer that finds none would run without a tick.
  constexpr UINT_PTR kNotYet = 0;
  auto place = RunningTimers().extract(RunningTimers().emplace(kNotYet, this).first);
  id_ = SetTimer(nullptr, 0, milliseconds_, Procedure);
  // Not passed over: a schedule that stands still without a word would be the end of it anyway.
  if (id_ == 0) throw FatalError(L"無法設定計時器，程式無法繼續執行。");
  place.key() = id_;
  RunningTimers().insert(std::move(place));
}

void CALLBACK Timer::Procedure(HWND /*window*/, UINT /*message*/, UINT_PTR id, DWORD /*time*/) {
  GuardBoundary([id] {
    const auto timer = RunningTimers().find(id);
    if (timer != RunningTimers().end()) Raise(timer->second->Tick);
  });
}

}  // namespace tellurvane

#include "ui/Timer.h"

#include <map>
#include <utility>

#include "base/FatalError.h"
#include "ui/Boundary.h"
#include "ui/Event.h"

namespace tellurvane {
namespace {

// A late tick of a disabled timer finds no entry.
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
  // Allocates first: a timer without an entry would run without a tick.
  constexpr UINT_PTR kNotYet = 0;
  auto place = RunningTimers().extract(RunningTimers().emplace(kNotYet, this).first);
  id_ = SetTimer(nullptr, 0, milliseconds_, Procedure);
  // Fatal: a schedule without its timer would stop silently.
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

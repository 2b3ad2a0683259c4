#include "tests/fakeplayer/Timeline.h"

#include <wmp.h>

#include <limits>
#include <utility>

#include "tests/fakeplayer/ProgramCalls.h"

namespace fakeplayer {
namespace {

constexpr double kSleepsBefore = 1;
constexpr double kSleepsAfter = 0.1;

}  // namespace

Timeline::Timeline(Script& script, Raise raise) : script_(script), raise_(std::move(raise)) {}

void Timeline::SetUrl(const std::string& url) {
  isStream_ = url.starts_with("http");
  isOpen_ = false;
  restsAt_ = 0;
  RaiseOpenState(wmposPlaylistChanging);
  Become(wmppsTransitioning);
  RaiseOpenState(wmposPlaylistOpenNoMedia);
  Become(wmppsReady);
}

void Timeline::Play() {
  isRefused_ = ++starts_ <= script_.Number("refuses");
  opensAt_ = ProgramSeconds() + script_.Number("opening");
  Become(wmppsTransitioning);
  RaiseOpenState(wmposOpeningUnknownURL);
}

void Timeline::Stop() {
  if (state_ == wmppsPlaying || state_ == wmppsTransitioning) Become(wmppsStopped);
  restsAt_ = 0;
}

void Timeline::Close() {
  Stop();
  isOpen_ = false;
  RaiseOpenState(wmposPlaylistOpenNoMedia);
  Become(wmppsUndefined);
}

void Timeline::Seek(double seconds) {
  if (state_ == wmppsPlaying) Begin(seconds);
}

double Timeline::Position() const {
  return state_ == wmppsPlaying ? ProgramSeconds() - begunAt_ : restsAt_;
}

void Timeline::Beat() {
  if (state_ == wmppsTransitioning && isRefused_) Become(wmppsReady);
  if (state_ == wmppsTransitioning && ProgramSeconds() >= opensAt_) {
    isOpen_ = true;
    scripted_ = script_.Number("currentPosition");
    Begin(isStream_ ? 0 : scripted_);
    RaiseOpenState(wmposMediaOpen);
    Become(wmppsPlaying);
  }
  if (state_ != wmppsPlaying) return;
  if (script_.Number("currentPosition") != scripted_) {
    scripted_ = script_.Number("currentPosition");
    Begin(scripted_);
  }
  if (script_.Number("lateTick") != 0 && Position() >= End() - kSleepsBefore) {
    Sleep(static_cast<DWORD>((End() - Position() + kSleepsAfter) * 1'000));
  }
  if (Position() >= End()) ReachTheEnd();
}

void Timeline::Become(int state) {
  if (state == state_) return;
  state_ = state;
  raise_(kPlayStateChange, state);
}

void Timeline::RaiseOpenState(int state) { raise_(kOpenStateChange, state); }

void Timeline::Begin(double position) { begunAt_ = ProgramSeconds() - position; }

double Timeline::End() const {
  if (isStream_) {
    const double plays = script_.Number("plays");
    return plays > 0 ? plays : std::numeric_limits<double>::infinity();
  }
  const double end = script_.Number("ends");
  return end > 0 ? end : script_.Number("duration");
}

void Timeline::ReachTheEnd() {
  restsAt_ = rewinds_ ? 0 : End();
  for (const int state : {wmppsMediaEnded, wmppsStopped, wmppsReady}) Become(state);
}

}  // namespace fakeplayer

#include "mainwin/PlaybackController.h"

#include <utility>

#include "base/Number.h"

namespace tellurvane {
namespace {

// Opening is given up after this time.
constexpr std::uint64_t kOpeningMilliseconds = 30'000;

}  // namespace

PlaybackController::PlaybackController(MediaPlayer& player, PlaybackView& view, bool& radioFlag,
                                       PlaybackCallbacks callbacks)
    : player_(player), view_(view), radioFlag_(radioFlag), callbacks_(std::move(callbacks)) {}

void PlaybackController::StopPlayback() {
  player_.Close();
  player_.Stop();
  view_.ShowStopped();
  view_.EnablePosition(false);
  view_.PositionValue(0);
  view_.EnableTimerVis(false);
  view_.EnableTimerOpening(false);
}

// Position and length are both 0 until the media is open: the first tick of TimerVis would take it
// for ended.
void PlaybackController::FollowPosition() {
  if (!player_.IsOpening()) {
    FollowNow();
    return;
  }
  openingSince_ = callbacks_.milliseconds();
  view_.EnableTimerOpening(true);
}

void PlaybackController::TimerOpening_Tick() {
  if (player_.IsOpening() && callbacks_.milliseconds() - openingSince_ < kOpeningMilliseconds)
    return;
  view_.EnableTimerOpening(false);
  FollowNow();
}

void PlaybackController::FollowNow() {
  view_.PositionRange(player_.Duration());
  view_.EnablePosition(true);
  view_.EnableTimerVis(true);
}

void PlaybackController::TimerVis_Tick() {
  if (radioFlag_) return;
  const double position = player_.Position();
  const double duration = player_.Duration();
  const bool hasEnded = player_.HasEnded();
  // Deliberately in whole seconds, and 0 of 0 counts too: a fraction that is left does not keep the
  // end away, and what could not be opened has ended. The player's report counts as well: the
  // moment in which both are equal can pass between two ticks, or not come at all.
  if (!hasEnded && RoundHalfToEven(position) != RoundHalfToEven(duration)) {
    view_.PositionRange(duration);
    view_.PositionValue(position);
    return;
  }
  // What never opened is not played again: it would end at once, again and again. A sound of less
  // than half a second has no length in whole seconds either, but the player reports its end.
  const bool hasPlayed = hasEnded || RoundHalfToEven(duration) > 0;
  if (callbacks_.songLoop() && hasPlayed) {
    callbacks_.runSelectedTask();
  } else {
    StopPlayback();
  }
}

void PlaybackController::SliderVolH_PositionSet(double value) {
  const auto volume = static_cast<std::int32_t>(RoundHalfToEven(value));
  player_.Volume(volume);
  // The setting in memory keeps the value of the start; nobody reads it later.
  callbacks_.writeSavedVolume(volume);
}

}  // namespace tellurvane

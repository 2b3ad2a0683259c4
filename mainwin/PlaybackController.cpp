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

// Until the media is open, position and length are both 0: TimerVis_Tick would take that for the
// end.
void PlaybackController::FollowPosition() {
  if (!player_.IsOpening()) {
    FollowNow();
    return;
  }
  openingSince_ = callbacks_.milliseconds();
  view_.EnableTimerOpening(true);
}

void PlaybackController::TimerOpening_Tick() {
  const bool isInTime = callbacks_.milliseconds() - openingSince_ < kOpeningMilliseconds;
  if (player_.IsOpening() && isInTime) return;
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
  // Deliberately compares whole seconds: a remaining fraction counts as the end. So does 0 of 0,
  // media that could not be opened. The player's report counts too: no tick may see both values
  // equal.
  if (!hasEnded && RoundHalfToEven(position) != RoundHalfToEven(duration)) {
    view_.PositionRange(duration);
    view_.PositionValue(position);
    return;
  }
  // Media that never opened would end again at once. A sound of less than half a second also rounds
  // to a length of 0, but the player reports its end.
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
  // The setting in memory stays: it is read only at start-up.
  callbacks_.writeSavedVolume(volume);
}

}  // namespace tellurvane

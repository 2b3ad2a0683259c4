#include "mainwin/PlaybackController.h"

#include <utility>

#include "base/Number.h"

namespace tellurvane {

PlaybackController::PlaybackController(MediaPlayer& player, PlaybackView& view, bool& radioFlag,
                                       PlaybackActions actions)
    : player_(player), view_(view), radioFlag_(radioFlag), actions_(std::move(actions)) {}

void PlaybackController::StopPlayback() {
  player_.Close();
  player_.Stop();
  view_.ShowStopped();
  view_.EnablePosition(false);
  view_.PositionValue(0);
  view_.EnableTimerVis(false);
}

void PlaybackController::FollowPosition() {
  // The end of the media is told by equal position and length, and both are 0 until the file is
  // open: without the wait the first tick would take it for ended.
  player_.AwaitDuration();
  view_.PositionRange(player_.Duration());
  view_.EnablePosition(true);
  view_.EnableTimerVis(true);
}

void PlaybackController::TimerVis_Tick() {
  if (radioFlag_) return;
  const double position = player_.Position();
  const double duration = player_.Duration();
  // Deliberately in whole seconds, and 0 of 0 counts too: a fraction that is left does not keep the
  // end away, and what could not be opened has ended.
  if (RoundHalfToEven(position) != RoundHalfToEven(duration)) {
    view_.PositionRange(duration);
    view_.PositionValue(position);
    return;
  }
  // What never opened is not played again: it would end at once, again and again, and each start
  // sets the task timer back before it can tick.
  if (actions_.songLoop() && RoundHalfToEven(duration) > 0) {
    actions_.runSelectedTask();
  } else {
    StopPlayback();
  }
}

void PlaybackController::SliderVolH_PositionSet(double value) {
  const auto volume = static_cast<std::int32_t>(RoundHalfToEven(value));
  player_.Volume(volume);
  // The setting in memory keeps the value of the start; nobody reads it later.
  actions_.writeSavedVolume(volume);
}

}  // namespace tellurvane

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
  // It is not tried again.
  if (keeper_.IsLost()) view_.ShowOutcome(CannotPlay());
  keeper_.Stop();
  isStarted_ = false;
  player_.Close();
  player_.Stop();
  view_.ShowStopped();
  view_.EnablePosition(false);
  view_.PositionValue(0);
  view_.EnableTimerVis(false);
  view_.EnableTimerOpening(false);
  KeepAwake(false);
}

void PlaybackController::SetUrl(const std::wstring& url) {
  url_ = url;
  player_.Url(url);
}

void PlaybackController::Play() {
  // First: a stream is kept even if this call fails.
  if (radioFlag_) keeper_.Start(url_, callbacks_.milliseconds());
  player_.Play();
}

void PlaybackController::ShowPlaying(size_t row) {
  isStarted_ = true;
  startedAt_ = callbacks_.milliseconds();
  const bool isPlaying = SoundOf(player_.PlayState()) == Sound::kPlaying;
  view_.ShowSign(isPlaying ? PlaybackSign::kPlaying : PlaybackSign::kTrying);
  view_.ShowPlaying(row);
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

void PlaybackController::TimerSet_Tick() {
  if (!isStarted_) return;
  const int state = player_.PlayState();
  if (keeper_.IsKeeping()) {
    KeepStream(state);
  } else {
    WatchMusic(state);
  }
}

void PlaybackController::KeepStream(int playState) {
  const bool isTryDue = keeper_.Look(playState, callbacks_.milliseconds());
  view_.ShowSign(keeper_.IsPlaying() ? PlaybackSign::kPlaying : PlaybackSign::kTrying);
  if (keeper_.IsPlaying()) view_.ShowOutcome({});
  if (keeper_.IsLost()) view_.ShowOutcome(StreamIsLost());
  KeepAwake(keeper_.KeepsAwake());
  if (!isTryDue) return;
  // A copy: the player may handle messages meanwhile, and one of them may stop the stream.
  const std::wstring source = keeper_.Source();
  player_.Url(source);
  if (keeper_.IsKeeping()) player_.Play();
}

// The end of the music is left to TimerVis_Tick. Music whose length is known but which never sounds
// has no end.
void PlaybackController::WatchMusic(int playState) {
  const Sound sound = SoundOf(playState);
  const bool isPlaying = sound == Sound::kPlaying;
  const bool isOpening = sound == Sound::kWaiting || (!isPlaying && player_.IsOpening());
  view_.ShowSign(isPlaying   ? PlaybackSign::kPlaying
                 : isOpening ? PlaybackSign::kTrying
                             : PlaybackSign::kNone);
  KeepAwake(isPlaying);
  if (isPlaying) view_.ShowOutcome({});
  const bool isSilent = sound == Sound::kSilent && !isOpening && !player_.HasEnded();
  const bool isNew = callbacks_.milliseconds() - startedAt_ < kStartMilliseconds;
  if (isSilent && !isNew) view_.ShowOutcome(CannotPlay());
}

void PlaybackController::KeepAwake(bool isAwake) {
  if (std::exchange(isAwake_, isAwake) != isAwake) callbacks_.keepAwake(isAwake);
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
  view_.ShowOutcome(hasPlayed ? RunOutcome() : CannotPlay());
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

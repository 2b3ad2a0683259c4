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
  if (keeper_.IsLost()) view_.ShowOutcome(hasPlayed_ ? RunOutcome() : CannotPlay());
  keeper_.Stop();
  ++starts_;
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
  // First: a stream is kept even if the calls of the player fail.
  if (radioFlag_) keeper_.Start(url, callbacks_.milliseconds());
  player_.Url(url);
}

void PlaybackController::ShowPlaying(size_t row) {
  isStarted_ = true;
  hasPlayed_ = false;
  startedAt_ = callbacks_.milliseconds();
  const bool isPlaying = SoundNow() == Sound::kPlaying;
  view_.ShowSign(isPlaying ? PlaybackSign::kPlaying : PlaybackSign::kTrying);
  view_.ShowPlaying(row);
  // How this run goes is not known yet.
  view_.ShowOutcome({});
}

// Music of the evening must not go on by itself in the morning. A lost stream is still wanted.
void PlaybackController::FallAsleep() {
  if (!keeper_.IsLost()) StopPlayback();
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

void PlaybackController::TimerSet_Tick(bool mayTry) {
  if (!isStarted_) return;
  const Sound sound = SoundNow();
  if (sound == Sound::kPlaying) {
    hasPlayed_ = true;
    view_.ShowOutcome({});
  }
  if (keeper_.IsKeeping()) {
    KeepStream(sound, mayTry);
  } else {
    WatchMusic(sound);
  }
}

// A control that still opens the media may report a state of rest.
Sound PlaybackController::SoundNow() {
  const Sound sound = SoundOf(player_.PlayState());
  return sound == Sound::kSilent && player_.IsOpening() ? Sound::kWaiting : sound;
}

void PlaybackController::KeepStream(Sound sound, bool mayTry) {
  const bool isTryDue = keeper_.Look(sound, callbacks_.milliseconds(), mayTry);
  const bool isPaused = sound == Sound::kPaused;
  view_.ShowSign(sound == Sound::kPlaying ? PlaybackSign::kPlaying
                 : isPaused               ? PlaybackSign::kNone
                                          : PlaybackSign::kTrying);
  if (keeper_.IsLost()) view_.ShowOutcome(StreamIsLost());
  KeepAwake(keeper_.KeepsAwake());
  if (!isTryDue) return;
  // The player may handle messages meanwhile. One of them may stop the stream or start another one,
  // so the source is copied, and the play belongs to this start only.
  const std::wstring source = keeper_.Source();
  const unsigned start = ++starts_;
  player_.Url(source);
  if (start == starts_) player_.Play();
}

// The end of the music is left to TimerVis_Tick. Music whose length is known but which never sounds
// has no end.
void PlaybackController::WatchMusic(Sound sound) {
  const bool isNew = callbacks_.milliseconds() - startedAt_ < kStartMilliseconds;
  const bool hasNotPlayed = sound == Sound::kSilent && !hasPlayed_ && !player_.HasEnded();
  const bool isTrying = sound == Sound::kWaiting || (hasNotPlayed && isNew);
  view_.ShowSign(sound == Sound::kPlaying ? PlaybackSign::kPlaying
                 : isTrying               ? PlaybackSign::kTrying
                                          : PlaybackSign::kNone);
  KeepAwake(sound == Sound::kPlaying);
  if (hasNotPlayed && !isNew) view_.ShowOutcome(CannotPlay());
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
  const bool hasOpened = hasEnded || RoundHalfToEven(duration) > 0;
  view_.ShowOutcome(hasOpened || hasPlayed_ ? RunOutcome() : CannotPlay());
  if (callbacks_.songLoop() && hasOpened) {
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

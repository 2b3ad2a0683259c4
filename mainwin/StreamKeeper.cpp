#include "mainwin/StreamKeeper.h"

#include <algorithm>
#include <iterator>

#include "mainwin/MediaPlayer.h"

namespace tellurvane {
namespace {

// Milliseconds.
constexpr std::uint64_t kLongestWait = 30'000;
constexpr std::uint64_t kDelays[] = {5'000, 15'000, 30'000, 60'000};
constexpr std::uint64_t kSteady = 60'000;
constexpr std::uint64_t kLongestAwake = 600'000;

std::uint64_t DelayAfter(std::size_t tries) {
  return kDelays[std::min(tries, std::size(kDelays) - 1)];
}

}  // namespace

Sound SoundOf(int playState) {
  switch (playState) {
    case kPlayingState:
      return Sound::kPlaying;
    case kPausedState:
      return Sound::kPaused;
    case kUndefinedState:
    case kStoppedState:
    case kMediaEndedState:
    case kReadyState:
      return Sound::kSilent;
    default:
      // Opening, buffering, reconnecting and the like.
      return Sound::kWaiting;
  }
}

void StreamKeeper::Start(const std::wstring& source, std::uint64_t now) {
  Stop();
  Advance(now);
  source_ = source;
  startedAt_ = waitingSince_ = elapsed_;
  tryingSince_ = elapsed_;
}

void StreamKeeper::Stop() {
  source_.reset();
  playingSince_.reset();
  tryingSince_.reset();
  nextTry_.reset();
  tries_ = 0;
  isLost_ = false;
}

bool StreamKeeper::Look(int playState, std::uint64_t now) {
  Advance(now);
  if (!IsKeeping()) return false;
  const Sound sound = SoundOf(playState);
  if (sound == Sound::kPlaying) {
    Playing();
    return false;
  }
  playingSince_.reset();
  if (!tryingSince_) tryingSince_ = elapsed_;
  if (sound == Sound::kPaused) waitingSince_ = elapsed_;
  if (!IsSilentForGood(sound)) return false;
  isLost_ = true;
  if (!nextTry_) nextTry_ = elapsed_ + DelayAfter(tries_);
  if (elapsed_ < *nextTry_) return false;
  ++tries_;
  startedAt_ = waitingSince_ = elapsed_;
  // From try to try: one that waits for long does not put off the next one.
  nextTry_ = elapsed_ + DelayAfter(tries_);
  return true;
}

void StreamKeeper::Playing() {
  isLost_ = false;
  nextTry_.reset();
  waitingSince_ = elapsed_;
  if (!playingSince_) playingSince_ = elapsed_;
  if (elapsed_ - *playingSince_ < kSteady) return;
  tries_ = 0;
  tryingSince_.reset();
}

// A start comes to life only after some time, and passes through states of rest: the player sets
// the address, is ready, and then opens the stream. Somebody has paused a paused stream on purpose.
bool StreamKeeper::IsSilentForGood(Sound sound) const {
  if (sound == Sound::kPaused) return false;
  if (sound == Sound::kWaiting) return elapsed_ - waitingSince_ > kLongestWait;
  return elapsed_ - startedAt_ >= kStartMilliseconds;
}

bool StreamKeeper::KeepsAwake() const {
  return IsKeeping() && (IsPlaying() || elapsed_ - *tryingSince_ < kLongestAwake);
}

void StreamKeeper::Advance(std::uint64_t now) {
  if (now > latest_) elapsed_ += now - latest_;
  latest_ = now;
}

}  // namespace tellurvane

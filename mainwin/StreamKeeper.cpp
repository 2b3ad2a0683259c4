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
  source_ = source;
  startedAt_ = waitingSince_ = now_ = now;
  tryingSince_ = now;
}

void StreamKeeper::Stop() {
  source_.reset();
  playingSince_.reset();
  tryingSince_.reset();
  nextTry_.reset();
  tries_ = 0;
  isLost_ = false;
}

bool StreamKeeper::Look(Sound sound, std::uint64_t now, bool mayTry) {
  if (!IsKeeping()) return false;
  now_ = now;
  if (sound == Sound::kPlaying) {
    Playing();
    return false;
  }
  playingSince_.reset();
  if (sound == Sound::kPaused) {
    Paused();
    return false;
  }
  if (!tryingSince_) tryingSince_ = now;
  if (!IsSilentForGood(sound)) return false;
  isLost_ = true;
  if (!nextTry_) nextTry_ = now + DelayAfter(tries_);
  if (!mayTry || now < *nextTry_) return false;
  ++tries_;
  nextTry_.reset();
  startedAt_ = waitingSince_ = now;
  return true;
}

void StreamKeeper::Playing() {
  isLost_ = false;
  nextTry_.reset();
  waitingSince_ = now_;
  if (!playingSince_) playingSince_ = now_;
  if (now_ - *playingSince_ < kSteady) return;
  tries_ = 0;
  tryingSince_.reset();
}

// Somebody has paused it on purpose.
void StreamKeeper::Paused() {
  isLost_ = false;
  nextTry_.reset();
  tryingSince_.reset();
  waitingSince_ = now_;
}

// A start comes to life only after some time, and passes through states of rest: the player sets
// the address, is ready, and then opens the stream.
bool StreamKeeper::IsSilentForGood(Sound sound) const {
  if (sound == Sound::kWaiting) return now_ - waitingSince_ > kLongestWait;
  return now_ - startedAt_ >= kStartMilliseconds;
}

bool StreamKeeper::KeepsAwake() const {
  const bool isTrying = tryingSince_ && now_ - *tryingSince_ < kLongestAwake;
  return playingSince_.has_value() || isTrying;
}

}  // namespace tellurvane

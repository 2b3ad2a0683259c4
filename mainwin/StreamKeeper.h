// Decides when a stream that has fallen silent is started again.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tellurvane {

// What a play state of the player means for the listener.
enum class Sound { kPlaying, kWaiting, kPaused, kSilent };
Sound SoundOf(int playState);

// After a start the player may report its state before the start for this long. Milliseconds.
inline constexpr std::uint64_t kStartMilliseconds = 3'000;

// Moments are milliseconds since some moment. They never go back.
class StreamKeeper {
 public:
  // The stream was just started.
  void Start(const std::wstring& source, std::uint64_t now);
  void Stop();

  // Call once a second. True when the source has to be started again, now. A try that is due waits
  // for `mayTry`.
  bool Look(Sound sound, std::uint64_t now, bool mayTry);

  // Between Start and Stop.
  bool IsKeeping() const { return source_.has_value(); }
  // Call only while IsKeeping.
  const std::wstring& Source() const { return *source_; }
  // From the loss until it plays again. Each delay counts from the moment at which the stream, or
  // the latest try, is seen as lost.
  bool IsLost() const { return isLost_; }
  // While it plays, and for the first ten minutes of trying.
  bool KeepsAwake() const;

 private:
  void Playing();
  void Paused();
  bool IsSilentForGood(Sound sound) const;

  std::optional<std::wstring> source_;
  std::uint64_t now_ = 0;           // the moment of the latest call
  std::uint64_t startedAt_ = 0;     // the latest start
  std::uint64_t waitingSince_ = 0;  // the latest start, or the latest look at which it played
  std::optional<std::uint64_t> playingSince_;
  std::optional<std::uint64_t> tryingSince_;  // none once it has played for a minute, or is paused
  std::optional<std::uint64_t> nextTry_;      // none until the start, or the latest try, is lost
  std::size_t tries_ = 0;
  bool isLost_ = false;
};

}  // namespace tellurvane

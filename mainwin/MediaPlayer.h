// The media player that the playback needs.
#pragma once

#include <string>

namespace tellurvane {

// The player control's numbers. It has more states than these.
enum PlayState : int {
  kUndefinedState = 0,
  kStoppedState = 1,
  kPausedState = 2,
  kPlayingState = 3,
  kBufferingState = 6,
  kMediaEndedState = 8,
  kTransitioningState = 9,
  kReadyState = 10,
};

// A call that fails does nothing, or returns 0 or an empty text.
class MediaPlayer {
 public:
  MediaPlayer() = default;
  MediaPlayer(const MediaPlayer&) = delete;
  MediaPlayer& operator=(const MediaPlayer&) = delete;
  virtual ~MediaPlayer() = default;

  // A stream's address or a file's path. Nothing plays before Play.
  virtual void Url(const std::wstring& url) = 0;
  virtual void Play() = 0;
  virtual void Stop() = 0;
  virtual void Close() = 0;

  // True after the start until the media is open or has failed. It has no length until then.
  virtual bool IsOpening() = 0;
  // True from the reported end of the media until the next URL or stop.
  virtual bool HasEnded() = 0;

  virtual int PlayState() = 0;
  // In the user's language.
  virtual std::wstring Status() = 0;

  // Seconds; 0 while there is none.
  virtual double Position() = 0;
  virtual void Position(double seconds) = 0;
  virtual double Duration() = 0;
  // "03:25", and "1:03:25" from an hour on.
  virtual std::wstring PositionText() = 0;
  virtual std::wstring DurationText() = 0;

  // 0 to 100.
  virtual void Volume(int volume) = 0;
};

}  // namespace tellurvane

// What the player control has reported of its own accord.
#pragma once

#include "mainwin/MediaPlayer.h"

namespace tellurvane {

// The media is what the URL that was set last names. The control reports its states in no
// guaranteed order, and those of the media before may come late: an end counts only after the new
// media has played.
class PlayerNews {
 public:
  // When a URL is set, and when playing is stopped.
  void ForgetMedia();
  void PlayStateChanged(int state);
  void OpenStateChanged(int state);

  int PlayState() const { return playState_; }
  bool IsMediaOpen() const { return isMediaOpen_; }
  // Stays true until the media is forgotten, so that it can be acted on later.
  bool HasMediaEnded() const { return hasMediaEnded_; }

 private:
  int playState_ = kUndefinedState;
  bool isMediaOpen_ = false;
  bool hasMediaPlayed_ = false;
  bool hasMediaEnded_ = false;
};

}  // namespace tellurvane

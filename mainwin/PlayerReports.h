// What the player control has reported of its own accord.
#pragma once

#include "mainwin/MediaPlayer.h"

namespace tellurvane {

// The media is what the URL that was set last names. The control reports its states in no
// guaranteed order, and those of the media before may come late, when the control is at work on the
// new media already. So an end counts only after playing, and what is asked for names the state
// that the control itself is in now.
class PlayerReports {
 public:
  // When a URL is set, and when playing is stopped.
  void ForgetMedia();
  void PlayStateChanged(int state);
  void OpenStateChanged(int state);

  int PlayState() const { return playState_; }
  bool IsMediaOpen(int stateNow) const;
  // Whether an end was reported at all; then the state is worth asking for.
  bool IsEndReported() const { return hasMediaEnded_; }
  // The report is kept until the media is forgotten, so that it can be acted on later.
  bool HasMediaEnded(int stateNow) const;

 private:
  int playState_ = kUndefinedState;
  bool isMediaOpen_ = false;
  bool hasMediaPlayed_ = false;
  bool hasMediaEnded_ = false;
};

}  // namespace tellurvane

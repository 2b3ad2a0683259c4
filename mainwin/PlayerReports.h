// What the player control has reported through its events.
#pragma once

#include "mainwin/MediaPlayer.h"

namespace tellurvane {

// About the media of the last URL. Reports come in no guaranteed order, and reports of the previous
// media may come after the new URL. So an end counts only after playing, and each question takes
// the state that the control has now.
class PlayerReports {
 public:
  // Called when a URL is set and when playing is stopped.
  void ForgetMedia();
  void PlayStateChanged(int state);
  void OpenStateChanged(int state);

  int PlayState() const { return playState_; }
  bool IsMediaOpen(int stateNow) const;
  // If false, HasMediaEnded is false too, and the caller need not ask the control for its state.
  bool IsEndReported() const { return hasMediaEnded_; }
  bool HasMediaEnded(int stateNow) const;

 private:
  int playState_ = kUndefinedState;
  bool isMediaOpen_ = false;
  bool hasMediaPlayed_ = false;
  bool hasMediaEnded_ = false;
};

}  // namespace tellurvane

#include "mainwin/PlayerNews.h"

namespace tellurvane {
namespace {

constexpr int kMediaOpenState = 13;  // of the open states, as the control counts them

}  // namespace

void PlayerNews::ForgetMedia() { isMediaOpen_ = hasMediaPlayed_ = hasMediaEnded_ = false; }

void PlayerNews::PlayStateChanged(int state) {
  playState_ = state;
  if (state == kPlayingState) hasMediaPlayed_ = true;
  if (state == kMediaEndedState || state == kStoppedState) hasMediaEnded_ |= hasMediaPlayed_;
}

bool PlayerNews::IsMediaOpen(int stateNow) const {
  return isMediaOpen_ && stateNow != kTransitioningState;
}

bool PlayerNews::HasMediaEnded(int stateNow) const {
  switch (stateNow) {
    case kUndefinedState:
    case kStoppedState:
    case kMediaEndedState:
    case kReadyState:
      return hasMediaEnded_;
    default:
      return false;
  }
}

void PlayerNews::OpenStateChanged(int state) {
  if (state == kMediaOpenState) isMediaOpen_ = true;
}

}  // namespace tellurvane

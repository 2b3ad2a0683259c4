#include "mainwin/PlayerReports.h"

namespace tellurvane {
namespace {

constexpr int kMediaOpenState = 13;  // one of the control's open states

}  // namespace

void PlayerReports::ForgetMedia() { isMediaOpen_ = hasMediaPlayed_ = hasMediaEnded_ = false; }

void PlayerReports::PlayStateChanged(int state) {
  playState_ = state;
  if (state == kPlayingState) hasMediaPlayed_ = true;
  if (state == kMediaEndedState || state == kStoppedState) hasMediaEnded_ |= hasMediaPlayed_;
}

bool PlayerReports::IsMediaOpen(int stateNow) const {
  return isMediaOpen_ && stateNow != kTransitioningState;
}

bool PlayerReports::HasMediaEnded(int stateNow) const {
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

void PlayerReports::OpenStateChanged(int state) {
  if (state == kMediaOpenState) isMediaOpen_ = true;
}

}  // namespace tellurvane

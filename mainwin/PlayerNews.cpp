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

void PlayerNews::OpenStateChanged(int state) {
  if (state == kMediaOpenState) isMediaOpen_ = true;
}

}  // namespace tellurvane

#include "mainwin/PlayerReports.h"

#include <gtest/gtest.h>

#include <vector>

namespace tellurvane {
namespace {

constexpr int kMediaOpen = 13;

TEST(PlayerReportsTest, TheEndIsEndedOrStoppedAfterPlaying) {
  const struct {
    std::vector<int> states;
    bool hasEnded;
  } cases[] = {
      {{}, false},
      {{kTransitioningState, kReadyState, kTransitioningState, kPlayingState}, false},
      {{kPlayingState, kBufferingState, kPlayingState}, false},
      {{kPlayingState, kMediaEndedState}, true},
      {{kPlayingState, kStoppedState}, true},
      {{kPlayingState, kMediaEndedState, kStoppedState, kReadyState}, true},
      {{kPlayingState, kMediaEndedState, kTransitioningState, kStoppedState}, true},
      {{kPlayingState, kPausedState, kStoppedState}, true},
      // Late reports of the previous media.
      {{kMediaEndedState}, false},
      {{kMediaEndedState, kStoppedState, kTransitioningState, kPlayingState}, false},
  };
  for (const auto& [states, hasEnded] : cases) {
    PlayerReports reports;
    for (const int state : states) reports.PlayStateChanged(state);
    EXPECT_EQ(reports.HasMediaEnded(kStoppedState), hasEnded) << testing::PrintToString(states);
  }
}

TEST(PlayerReportsTest, KeepsTheEndUntilTheMediaIsForgotten) {
  PlayerReports reports;
  EXPECT_EQ(reports.PlayState(), kUndefinedState);
  reports.PlayStateChanged(kPlayingState);
  reports.PlayStateChanged(kMediaEndedState);
  reports.PlayStateChanged(kTransitioningState);
  EXPECT_TRUE(reports.HasMediaEnded(kStoppedState));
  reports.ForgetMedia();
  EXPECT_EQ(reports.PlayState(), kTransitioningState) << "of the control, not of its media";
  EXPECT_FALSE(reports.HasMediaEnded(kStoppedState));
  reports.PlayStateChanged(kStoppedState);
  EXPECT_FALSE(reports.HasMediaEnded(kStoppedState)) << "the new media has not played yet";
}

TEST(PlayerReportsTest, TheMediaIsOpenUntilItIsForgotten) {
  PlayerReports reports;
  for (const int state : {1, 7, 6, 21}) reports.OpenStateChanged(state);
  EXPECT_FALSE(reports.IsMediaOpen(kPlayingState));
  reports.OpenStateChanged(kMediaOpen);
  reports.OpenStateChanged(6);
  EXPECT_TRUE(reports.IsMediaOpen(kPlayingState));
  reports.ForgetMedia();
  EXPECT_FALSE(reports.IsMediaOpen(kPlayingState));
}

// For example music, a note that fades, and other music in one tick.
TEST(PlayerReportsTest, LateReportsDoNotCountForTheNewMedia) {
  PlayerReports reports;
  reports.ForgetMedia();
  reports.OpenStateChanged(kMediaOpen);
  for (const int late : {kTransitioningState, kPlayingState, kStoppedState}) {
    reports.PlayStateChanged(late);
  }
  EXPECT_FALSE(reports.IsMediaOpen(kTransitioningState)) << "the new one is opening";
  for (const int busy :
       {int{kTransitioningState}, int{kPlayingState}, int{kBufferingState}, 2, 4, 5, 7, 11}) {
    EXPECT_FALSE(reports.HasMediaEnded(busy)) << busy;
  }
  for (const int atRest : {kUndefinedState, kStoppedState, kMediaEndedState, kReadyState}) {
    EXPECT_TRUE(reports.HasMediaEnded(atRest)) << atRest;
  }
}

}  // namespace
}  // namespace tellurvane

#include "mainwin/PlayerNews.h"

#include <gtest/gtest.h>

#include <vector>

namespace tellurvane {
namespace {

constexpr int kPausedState = 2;
constexpr int kMediaOpen = 13;

TEST(PlayerNewsTest, KnowsTheLatestPlayState) {
  PlayerNews news;
  EXPECT_EQ(news.PlayState(), kUndefinedState);
  for (const int state : {9, 0, 3, 2}) {
    news.PlayStateChanged(state);
    EXPECT_EQ(news.PlayState(), state);
  }
  news.ForgetMedia();
  EXPECT_EQ(news.PlayState(), 2) << "of the control, not of its media";
}

TEST(PlayerNewsTest, TellsTheEndByEndedOrStoppedAfterPlaying) {
  const struct {
    std::vector<int> states;
    bool hasEnded;
  } cases[] = {
      {{}, false},
      {{kTransitioningState, kReadyState, kTransitioningState, kPlayingState}, false},
      {{kPlayingState, kPausedState, kPlayingState}, false},
      {{kPlayingState, kBufferingState, kPlayingState}, false},
      {{kPlayingState, kMediaEndedState}, true},
      {{kPlayingState, kStoppedState}, true},
      {{kPlayingState, kMediaEndedState, kStoppedState, kReadyState}, true},
      {{kPlayingState, kMediaEndedState, kTransitioningState, kStoppedState}, true},
      {{kPlayingState, kPausedState, kStoppedState}, true},
      // What comes late of the media before.
      {{kMediaEndedState}, false},
      {{kStoppedState}, false},
      {{kMediaEndedState, kStoppedState, kTransitioningState, kPlayingState}, false},
  };
  for (const auto& [states, hasEnded] : cases) {
    PlayerNews news;
    for (const int state : states) news.PlayStateChanged(state);
    EXPECT_EQ(news.HasMediaEnded(kStoppedState), hasEnded) << testing::PrintToString(states);
  }
}

TEST(PlayerNewsTest, KeepsTheEndUntilTheMediaIsForgotten) {
  PlayerNews news;
  news.PlayStateChanged(kPlayingState);
  news.PlayStateChanged(kMediaEndedState);
  news.PlayStateChanged(kTransitioningState);
  EXPECT_TRUE(news.HasMediaEnded(kStoppedState));
  news.ForgetMedia();
  EXPECT_FALSE(news.HasMediaEnded(kStoppedState));
  news.PlayStateChanged(kStoppedState);
  EXPECT_FALSE(news.HasMediaEnded(kStoppedState)) << "the new media has not played yet";
}

TEST(PlayerNewsTest, KnowsThatTheMediaIsOpenUntilItIsForgotten) {
  PlayerNews news;
  for (const int state : {1, 7, 6, 21}) news.OpenStateChanged(state);
  EXPECT_FALSE(news.IsMediaOpen(kPlayingState));
  news.OpenStateChanged(kMediaOpen);
  news.OpenStateChanged(6);
  EXPECT_TRUE(news.IsMediaOpen(kPlayingState));
  news.ForgetMedia();
  EXPECT_FALSE(news.IsMediaOpen(kPlayingState));
}

// Music, a note that fades for a while, and other music in one tick: the reports of the first music
// come when the second one is already set.
TEST(PlayerNewsTest, LateReportsOfTheMediaBeforeDoNotCountForTheNewOne) {
  PlayerNews news;
  news.ForgetMedia();
  news.OpenStateChanged(kMediaOpen);
  for (const int late : {kTransitioningState, kPlayingState, kStoppedState}) {
    news.PlayStateChanged(late);
  }
  EXPECT_FALSE(news.IsMediaOpen(kTransitioningState)) << "the new one is opening";
  for (const int busy :
       {int{kTransitioningState}, int{kPlayingState}, int{kBufferingState}, 2, 4, 5, 7, 11}) {
    EXPECT_FALSE(news.HasMediaEnded(busy)) << busy;
  }
  for (const int atRest : {kUndefinedState, kStoppedState, kMediaEndedState, kReadyState}) {
    EXPECT_TRUE(news.HasMediaEnded(atRest)) << atRest;
  }
}

}  // namespace
}  // namespace tellurvane

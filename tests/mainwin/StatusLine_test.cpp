#include "mainwin/StatusLine.h"

#include <gmock/gmock.h>

#include <limits>

#include "tests/mainwin/FakePlayer.h"
#include "tests/support/Moments.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kMoment = L"2011 年 02 月 14 日 - 下午 03 時 04 分 05 秒";

std::wstring TextIn(int state, bool isRadio) {
  FakePlayer player;
  player.state = state;
  player.status = L"播放中";
  player.positionText = L"01:02";
  player.durationText = L"03:04";
  return StatusLineText(player, isRadio, At(2011, 2, 14, 15, 4, 5), {L"上午", L"下午"});
}

TEST(StatusLineText, ShowsThePlayerOrTheTime) {
  const wchar_t* const status = L"播放中";
  for (int state = -1; state <= 12; ++state) {
    const bool isStatus = state == 1 || state == 6 || state == 9;
    const std::wstring other = isStatus ? status : kMoment;
    EXPECT_EQ(TextIn(state, false), state == 3 ? L"01:02 / 03:04 * 播放中" : other) << state;
    EXPECT_EQ(TextIn(state, true), state == 3 ? L"01:02 * 播放中" : other) << state;
  }
}

TEST(StatusLineWords, AreThePlayersAndEmptyWhileTheTimeIsShown) {
  for (int state = -1; state <= 12; ++state) {
    const bool hasWords = state == 1 || state == 3 || state == 6 || state == 9;
    FakePlayer player;
    player.state = state;
    player.status = L"播放中";
    EXPECT_EQ(StatusLineWords(player), hasWords ? L"播放中" : L"") << state;
  }
}

TEST(StatusLineWords, DoNotChangeWithEachPercent) {
  FakePlayer player;
  player.state = kBufferingState;
  player.status = L"正在緩衝：已完成 12 %";
  const std::wstring words = StatusLineWords(player);
  player.status = L"正在緩衝：已完成 13 %";
  EXPECT_EQ(StatusLineWords(player), words);
  player.status = L"正在連線";
  EXPECT_NE(StatusLineWords(player), words);
}

TEST(MediaTimeText, HasHoursFromAnHourOn) {
  const struct {
    double seconds;
    const wchar_t* text;
  } cases[] = {
      {0, L"00:00"},
      {0.99, L"00:00"},
      {59.9, L"00:59"},
      {60, L"01:00"},
      {3'599, L"59:59"},
      {3'600, L"1:00:00"},
      {36'125, L"10:02:05"},
      {-5, L"00:00"},
      {1e300, L"00:00"},
      {std::numeric_limits<double>::quiet_NaN(), L"00:00"},
      {std::numeric_limits<double>::infinity(), L"00:00"},
  };
  for (const auto& [seconds, text] : cases) EXPECT_EQ(MediaTimeText(seconds), text) << seconds;
}

}  // namespace
}  // namespace tellurvane

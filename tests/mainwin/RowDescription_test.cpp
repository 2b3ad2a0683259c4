#include "mainwin/RowDescription.h"

#include <gtest/gtest.h>

#include "tests/support/Moments.h"

namespace tellurvane {
namespace {

void WriteDay(std::wstring& text, DateSerial date) {
  text += L"day " + std::to_wstring(static_cast<int>(date));
}

using enum PlaybackSign;

TEST(RowDescription, SaysEverythingThatTheRowShows) {
  const struct {
    std::int32_t mediaType;
    bool isEnabled;
    DateSerial lastRun;
    PlaybackSign sign;
    RunOutcome outcome;
    const wchar_t* text;
  } cases[] = {
      {kInternetRadio,
       true,
       0,
       kNone,
       {},
       L"休息，網路電台，已啟動，尚未執行，下次執行 day 40589，每 5 分鐘執行一次"},
      {kLocalMusic,
       true,
       At(2011, 2, 14),
       kPlaying,
       {},
       L"休息，本地音樂，正在播放，已啟動，最後執行 day 40588，下次執行 day 40589，每 5 "
       L"分鐘執行一次"},
      {kApplication, false, 0, kNone, FileIsMissing(),
       L"休息，應用程式，找不到檔案，已關閉，尚未執行，下次執行 day 40589，每 5 分鐘執行一次"},
      {kReminderNote,
       false,
       0,
       kNone,
       {},
       L"休息，記事提醒，已關閉，尚未執行，下次執行 day 40589，每 5 分鐘執行一次"},
      {kLocalMusic,
       true,
       0,
       kTrying,
       {},
       L"休息，本地音樂，正在開啟，已啟動，尚未執行，下次執行 day 40589，每 5 分鐘執行一次"},
      {kInternetRadio, true, 0, kTrying, StreamIsLost(),
       L"休息，網路電台，無法連線，將再次嘗試，已啟動，尚未執行，下次執行 day 40589，每 5 "
       L"分鐘執行一次"},
      {9, true, 0, kNone, {}, L"休息，已啟動，尚未執行，下次執行 day 40589，每 5 分鐘執行一次"},
  };
  for (const auto& [mediaType, isEnabled, lastRun, sign, outcome, text] : cases) {
    TaskRecord task;
    task.Name = L"休息";
    task.MediaType = mediaType;
    task.Enabled = isEnabled;
    task.Interval = 5;
    task.LastRun = lastRun;
    task.NextRun = At(2011, 2, 15, 12);
    EXPECT_EQ(RowDescription(task, sign, outcome, WriteDay), text);
  }
}

}  // namespace
}  // namespace tellurvane

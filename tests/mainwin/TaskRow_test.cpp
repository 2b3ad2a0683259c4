#include "mainwin/TaskRow.h"

#include <gmock/gmock.h>

#include "tests/support/Moments.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;

constexpr std::uint32_t kIndigo = 0xFF4B0082;
constexpr std::uint32_t kBlackInk = 0xFF000000;

void WriteSerial(std::wstring& text, DateSerial date) {
  text += L"day " + std::to_wstring(static_cast<int>(date));
}

TaskRecord Task() {
  TaskRecord task;
  task.Name = L"休息";
  task.Enabled = true;
  task.Interval = 5;
  task.LastRun = At(2011, 2, 14);
  task.NextRun = At(2011, 2, 15, 12);
  return task;
}

TEST(TaskRowLines, HaveTheirPlacesAndLooks) {
  EXPECT_THAT(
      TaskRowLines(Task(), WriteSerial),
      ElementsAre(RowLine{38, -1, L"休息", kIndigo, RowFont::kName},
                  RowLine{38, 3, L"___________________________________", kIndigo, RowFont::kRule},
                  RowLine{38, 22, L"最後執行", kBlackInk, RowFont::kLabel},
                  RowLine{75, 21, L"day 40588", kIndigo, RowFont::kValue},
                  RowLine{38, 42, L"下次執行", kBlackInk, RowFont::kLabel},
                  RowLine{75, 41, L"day 40589", kIndigo, RowFont::kValue},
                  RowLine{38, 62, L"排程時間", kBlackInk, RowFont::kLabel},
                  RowLine{75, 61, L"每 5 分鐘執行一次", kIndigo, RowFont::kValue}));
}

TEST(TaskRowLines, HaveWordsForATaskThatNeverRan) {
  TaskRecord task = Task();
  task.LastRun = 0;
  EXPECT_EQ(TaskRowLines(task, WriteSerial)[3].text, L"尚未執行");
}

TEST(MarkOf, ShowsTheFirstThatApplies) {
  const struct {
    RowState state;
    bool isEnabled;
    DateSerial now;  // the task runs at 12:00:00
    RowMark mark;
  } cases[] = {
      {{}, true, At(2011, 2, 15, 11, 58, 59), RowMark::kNone},
      {{}, true, At(2011, 2, 15, 11, 59, 0), RowMark::kDue},
      {{}, true, At(2011, 2, 15, 12, 0, 0), RowMark::kDue},
      {{}, true, At(2011, 2, 15, 12, 0, 5), RowMark::kDue},  // overdue
      {{}, false, At(2011, 2, 15, 11, 59, 30), RowMark::kDisabled},
      {{.hasFailed = true}, true, At(2011, 2, 15, 11, 59, 30), RowMark::kFailed},
      {{.hasFailed = true}, false, At(2011, 2, 15, 11, 0, 0), RowMark::kFailed},
      {{.sign = PlaybackSign::kPlaying}, true, At(2011, 2, 15, 11, 59, 30), RowMark::kPlaying},
      {{.sign = PlaybackSign::kPlaying, .hasFailed = true},
       false,
       At(2011, 2, 15, 11),
       RowMark::kPlaying},
      {{.sign = PlaybackSign::kTrying, .hasFailed = true},
       false,
       At(2011, 2, 15, 11),
       RowMark::kTrying},
  };
  for (const auto& [state, isEnabled, now, mark] : cases) {
    TaskRecord task = Task();
    task.Enabled = isEnabled;
    EXPECT_EQ(MarkOf(task, now, state), mark) << now;
  }
}

TEST(MarkOf, IsNeverDueWithoutASchedule) {
  TaskRecord task = Task();
  task.Interval = 0;
  EXPECT_EQ(MarkOf(task, task.NextRun, {}), RowMark::kNone);
  task.Interval = 5;
  task.NextRun = 1e12;  // no date at all
  EXPECT_EQ(MarkOf(task, At(2011, 2, 15), {}), RowMark::kNone);
}

}  // namespace
}  // namespace tellurvane

#include "mainwin/TaskRow.h"

#include "scheduler/Schedule.h"

namespace tellurvane {
namespace {

constexpr std::uint32_t kIndigo = 0xFF4B0082;
constexpr std::uint32_t kBlackInk = 0xFF000000;
constexpr int kLabelX = 38;
constexpr int kValueX = 75;
constexpr size_t kRuleLength = 35;
constexpr std::int64_t kDueSeconds = 60;

}  // namespace

std::wstring LastRunText(const TaskRecord& task, const DateWriter& writeDate) {
  if (task.LastRun == 0) return L"尚未執行";
  std::wstring text;
  writeDate(text, task.LastRun);
  return text;
}

RowMark MarkOf(const TaskRecord& task, DateSerial now, const RowState& state) {
  if (state.sign == PlaybackSign::kTrying) return RowMark::kTrying;
  if (state.sign == PlaybackSign::kPlaying) return RowMark::kPlaying;
  if (state.hasFailed) return RowMark::kFailed;
  if (!task.Enabled) return RowMark::kDisabled;
  if (!HasSchedule(task) || !IsDateSerial(task.NextRun)) return RowMark::kNone;
  const std::int64_t left = SecondsFromSerial(task.NextRun) - SecondsFromSerial(now);
  return left <= kDueSeconds ? RowMark::kDue : RowMark::kNone;
}

std::vector<RowLine> TaskRowLines(const TaskRecord& task, const DateWriter& writeDate) {
  std::wstring nextRun;
  writeDate(nextRun, task.NextRun);
  return {{kLabelX, -1, task.Name, kIndigo, RowFont::kName},
          {kLabelX, 3, std::wstring(kRuleLength, L'_'), kIndigo, RowFont::kRule},
          {kLabelX, 22, L"最後執行", kBlackInk, RowFont::kLabel},
          {kValueX, 21, LastRunText(task, writeDate), kIndigo, RowFont::kValue},
          {kLabelX, 42, L"下次執行", kBlackInk, RowFont::kLabel},
          {kValueX, 41, nextRun, kIndigo, RowFont::kValue},
          {kLabelX, 62, L"排程時間", kBlackInk, RowFont::kLabel},
          {kValueX, 61, ScheduleText(task), kIndigo, RowFont::kValue}};
}

}  // namespace tellurvane

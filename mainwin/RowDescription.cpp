#include "mainwin/RowDescription.h"

#include "mainwin/TaskRow.h"
#include "scheduler/Schedule.h"

namespace tellurvane {
namespace {

// While a lost stream is tried again, the reason says so.
std::wstring Condition(PlaybackSign sign, const RunOutcome& outcome) {
  if (sign == PlaybackSign::kPlaying) return L"正在播放";
  if (outcome.HasFailed()) return outcome.reason;
  return sign == PlaybackSign::kTrying ? L"正在開啟" : L"";
}

}  // namespace

std::wstring RowDescription(const TaskRecord& task, PlaybackSign sign, const RunOutcome& outcome,
                            const DateWriter& writeDate) {
  std::wstring text = task.Name;
  const auto add = [&text](const std::wstring& part) {
    if (!part.empty()) text += L"，" + part;
  };
  if (IsMediaType(task.MediaType)) add(kMediaTypeNames.at(static_cast<size_t>(task.MediaType)));
  add(Condition(sign, outcome));
  add(task.Enabled ? L"已啟動" : L"已關閉");
  const std::wstring lastRun = LastRunText(task, writeDate);
  add(task.LastRun == 0 ? lastRun : L"最後執行 " + lastRun);
  std::wstring nextRun = L"下次執行 ";
  writeDate(nextRun, task.NextRun);
  add(nextRun);
  add(ScheduleText(task));
  return text;
}

}  // namespace tellurvane

#include "scheduler/RunOutcome.h"

#include <utility>

namespace tellurvane {

RunOutcome FileIsMissing() { return {L"找不到檔案"}; }

RunOutcome CannotPlay() { return {L"無法播放"}; }

RunOutcome StreamIsLost() { return {L"無法連線，將再次嘗試"}; }

RunOutcome ProgramNotStarted(std::wstring_view systemText) {
  const std::wstring reason = L"無法啟動程式";
  return {systemText.empty() ? reason : reason + L"：" + std::wstring(systemText)};
}

void RunOutcomes::Set(std::size_t row, RunOutcome outcome) {
  if (row >= outcomes_.size()) outcomes_.resize(row + 1);
  outcomes_[row] = std::move(outcome);
}

RunOutcome RunOutcomes::Of(std::size_t row) const {
  return row < outcomes_.size() ? outcomes_[row] : RunOutcome();
}

void RunOutcomes::DropRemoved(const TaskList& tasks) {
  std::vector<RunOutcome> kept;
  for (std::size_t row = 0; row < tasks.size(); ++row) {
    if (!tasks[row].Deleted) kept.push_back(Of(row));
  }
  outcomes_ = std::move(kept);
}

int RunOutcomes::FailedCount(const TaskList& tasks) const {
  int failed = 0;
  for (std::size_t row = 0; row < tasks.size(); ++row) {
    if (!tasks[row].Deleted && Of(row).HasFailed()) ++failed;
  }
  return failed;
}

}  // namespace tellurvane

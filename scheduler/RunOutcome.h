// How the last run of each task went. Kept in memory only.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "scheduler/TaskRecord.h"

namespace tellurvane {

struct RunOutcome {
  std::wstring reason;  // empty if the run went well

  bool HasFailed() const { return !reason.empty(); }
  bool operator==(const RunOutcome&) const = default;
};

RunOutcome FileIsMissing();
RunOutcome CannotPlay();
// A stream that is tried again.
RunOutcome StreamIsLost();
// With the system's words, if it has any.
RunOutcome ProgramNotStarted(std::wstring_view systemText);

// Row i belongs to task i. A task without an entry has not failed.
class RunOutcomes {
 public:
  void Set(std::size_t row, RunOutcome outcome);
  RunOutcome Of(std::size_t row) const;
  // Call before the removed tasks are erased from the list: the rows below move up.
  void DropRemoved(const TaskList& tasks);
  // The number of tasks of the list whose last run has failed.
  int FailedCount(const TaskList& tasks) const;

 private:
  std::vector<RunOutcome> outcomes_;
};

}  // namespace tellurvane

#include "scheduler/TaskRunner.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "scheduler/Schedule.h"

namespace tellurvane {
namespace {

constexpr unsigned kIdleMilliseconds = 30'000;
constexpr unsigned kSoonMilliseconds = 2'000;
constexpr std::int64_t kNothingSoon = 999;  // minutes

// A step that fails is passed over: a player that refuses a source, say, does not keep the run
// from being recorded.
template <typename Step>
void Attempt(Step step) {
  try {
    step();
  } catch (const std::exception&) {
    // Deliberately dropped; the next step goes on.
    return;
  }
}

}  // namespace

TaskRunner::TaskRunner(TaskList& tasks, TaskRows& rows, TaskTimer& timer, TaskPlayer& player,
                       TaskActions actions, DateWriter writeDate, Clock clock)
    : tasks_(tasks),
      rows_(rows),
      timer_(timer),
      player_(player),
      actions_(std::move(actions)),
      writeDate_(std::move(writeDate)),
      clock_(std::move(clock)) {}

void TaskRunner::SetTaskTimer(bool enable) {
  if (enable) timer_.SetInterval(kTaskTimerMilliseconds);
  timer_.SetEnabled(enable);
}

void TaskRunner::Tick() {
  if (isBusy_) return;
  isBusy_ = true;
  timer_.SetEnabled(false);

  size_t runs = 0;
  std::int64_t soonest = kNothingSoon;
  for (size_t row = 0; row < std::min(rows_.RowCount(), tasks_.size()); ++row) {
    if (RunRow(row)) ++runs;
    soonest = std::min(soonest, MinutesBetween(clock_(), tasks_[row].NextRun));
  }

  // Deliberately without lasting effect: switching the timer on below sets its one interval.
  timer_.SetInterval(soonest > 1 ? kIdleMilliseconds : kSoonMilliseconds);
  if (runs > 0) {
    EnableRows();
    isBusy_ = false;
    actions_.processPendingMessages();
  }
  isBusy_ = false;
  SetTaskTimer(true);
}

// True when the row's task was started.
bool TaskRunner::RunRow(size_t row) {
  if (!IsDue(tasks_[row], clock_())) return false;
  const bool runs = tasks_[row].Enabled;
  if (runs) {
    rows_.EnableArea(false);
    rows_.SetRedraw(false);
    rows_.SelectRow(row);
    Execute(tasks_[row]);
  } else {
    tasks_[row].NextRun = CaughtUpNextRun(tasks_[row], clock_(), CatchUp::kInclusive);
  }
  rows_.RefreshRow(row);
  return runs;
}

void TaskRunner::EnableRows() {
  rows_.SetRedraw(true);
  rows_.EnableArea(true);
}

void TaskRunner::Execute(TaskRecord& task) {
  Attempt([&] { player_.StopPlayback(); });
  task.RunStarted = clock_();
  Start(task);
  task.LastRun = clock_();
  task.NextRun = CaughtUpNextRun(task, clock_(), CatchUp::kInclusive);
  Attempt([&] { actions_.saveList(); });
}

void TaskRunner::Start(const TaskRecord& task) {
  switch (task.MediaType) {
    case kInternetRadio:
      Attempt([&] { player_.SetRadioFlag(true); });
      StartPlaying(task.Source);
      break;
    case kLocalMusic: {
      Attempt([&] { player_.SetRadioFlag(false); });
      bool exists = false;
      Attempt([&] { exists = actions_.pathExists(task.Source); });
      if (exists) StartPlaying(task.Source);
      Attempt([&] { player_.FollowPosition(); });
      break;
    }
    case kApplication:
      Attempt([&] { actions_.startCommand(task.Source); });
      break;
    case kReminderNote:
      Attempt([&] {
        std::wstring time;
        writeDate_(time, clock_());
        actions_.showNote(task.Source, time);
      });
      break;
    default:
      // A file may hold any number; there is nothing to start.
      break;
  }
}

void TaskRunner::StartPlaying(const std::wstring& source) {
  Attempt([&] { player_.SetUrl(source); });
  Attempt([&] { player_.Play(); });
  Attempt([&] { player_.ShowPlaying(); });
}

}  // namespace tellurvane

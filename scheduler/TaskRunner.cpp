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

// A failing step is skipped: the run is recorded even when the player cannot play the source.
template <typename Step>
void Attempt(Step step) {
  try {
    step();
  } catch (const std::exception&) {
    return;  // deliberately dropped
  }
}

}  // namespace

TaskRunner::TaskRunner(TaskList& tasks, TaskRows& rows, TaskTimer& timer, TaskPlayer& player,
                       TaskCallbacks callbacks, DateWriter writeDate, Clock clock)
    : tasks_(tasks),
      rows_(rows),
      timer_(timer),
      player_(player),
      callbacks_(std::move(callbacks)),
      writeDate_(std::move(writeDate)),
      clock_(std::move(clock)) {}

void TaskRunner::SetTaskTimer(bool enable) {
  if (enable) timer_.SetInterval(kTaskTimerMilliseconds);
  timer_.SetEnabled(enable);
}

void TaskRunner::Tick() {
  if (isBusy_) return;
  isBusy_ = true;
  latestTick_ = timer_.Milliseconds();
  timer_.SetEnabled(false);

  const Sweep sweep = SweepRows();
  // Deliberately without effect: SetTaskTimer below sets the timer's only interval.
  timer_.SetInterval(sweep.soonest > 1 ? kIdleMilliseconds : kSoonMilliseconds);
  if (sweep.runs > 0) {
    EnableRows();
    isBusy_ = false;
    callbacks_.processPendingMessages();
  }
  isBusy_ = false;
  SetTaskTimer(true);
}

TaskRunner::Sweep TaskRunner::SweepRows() {
  Sweep sweep{.runs = 0, .soonest = kNothingSoon};
  for (size_t row = 0; row < RowCount(); ++row) {
    DateSerial now = clock_();
    if (IsDue(tasks_[row], now)) {
      if (RunRow(row, now)) ++sweep.runs;
      // A run takes its time, and it may shorten the list.
      if (row >= RowCount()) break;
      now = clock_();
    }
    sweep.soonest = std::min(sweep.soonest, MinutesBetween(now, tasks_[row].NextRun));
  }
  return sweep;
}

size_t TaskRunner::RowCount() const { return std::min(rows_.RowCount(), tasks_.size()); }

bool TaskRunner::RunRow(size_t row, DateSerial now) {
  const bool runs = tasks_[row].Enabled;
  if (runs) {
    rows_.EnableArea(false);
    rows_.SetRedraw(false);
    rows_.SelectRow(row);
    Execute(row);
  } else {
    tasks_[row].NextRun = CaughtUpNextRun(tasks_[row], now, CatchUp::kInclusive);
  }
  rows_.RefreshRow(row);
  return runs;
}

void TaskRunner::EnableRows() {
  rows_.SetRedraw(true);
  rows_.EnableArea(true);
}

void TaskRunner::Execute(size_t row) {
  Attempt([&] { player_.StopPlayback(); });
  tasks_[row].RunStarted = clock_();
  // A copy: a step may handle messages, and the list may be reloaded meanwhile.
  const TaskRecord started = tasks_[row];
  const std::optional<RunOutcome> outcome = Start(row, started);
  if (row < tasks_.size() && tasks_[row].Name == started.Name) {
    TaskRecord& task = tasks_[row];
    task.LastRun = clock_();
    task.NextRun = CaughtUpNextRun(task, clock_(), CatchUp::kInclusive);
    if (outcome) Attempt([&] { rows_.SetOutcome(row, *outcome); });
  }
  Attempt([&] { callbacks_.saveList(); });
}

void TaskRunner::RunNow(std::optional<size_t> row) {
  if (isBusy_) {
    callbacks_.processPendingMessages();
    return;
  }
  if (!HasTask(row)) return;
  SetTaskTimer(false);
  isBusy_ = true;
  rows_.EnableArea(false);
  Execute(*row);
  rows_.RefreshRow(*row);
  isBusy_ = false;
  rows_.EnableArea(true);
  SetTaskTimer(true);
}

void TaskRunner::RunForContinuousPlay(std::optional<size_t> row) {
  const bool runs = !isBusy_ && HasTask(row);
  RunNow(row);
  if (runs && timer_.Milliseconds() - latestTick_ >= kTaskTimerMilliseconds) timer_.PostTick();
}

void TaskRunner::SwitchEnabled(std::optional<size_t> row) {
  if (!HasTask(row)) return;
  tasks_[*row].Enabled = !tasks_[*row].Enabled;
  rows_.RefreshRow(*row);
  Attempt([&] { callbacks_.saveList(); });
}

std::optional<RunOutcome> TaskRunner::Start(size_t row, const TaskRecord& task) {
  std::optional<RunOutcome> outcome;
  // A file may hold any number; an unknown one has nothing to start.
  switch (static_cast<MediaType>(task.MediaType)) {
    case kInternetRadio:
      Attempt([&] { player_.SetRadioFlag(true); });
      StartPlaying(row, task.Source);
      break;
    case kLocalMusic:
      outcome = StartMusic(row, task.Source);
      break;
    case kApplication:
      // Unless the step says otherwise.
      outcome = ProgramNotStarted({});
      Attempt([&] { outcome = callbacks_.startCommand(task.Source); });
      break;
    case kReminderNote:
      Attempt([&] {
        std::wstring time;
        writeDate_(time, clock_());
        callbacks_.showNote(task.Source, time);
        outcome = RunOutcome();
      });
      break;
  }
  return outcome;
}

std::optional<RunOutcome> TaskRunner::StartMusic(size_t row, const std::wstring& source) {
  Attempt([&] { player_.SetRadioFlag(false); });
  bool exists = false;
  Attempt([&] { exists = callbacks_.pathExists(source); });
  if (exists) StartPlaying(row, source);
  Attempt([&] { player_.FollowPosition(); });
  return exists ? std::nullopt : std::optional(FileIsMissing());
}

void TaskRunner::StartPlaying(size_t row, const std::wstring& source) {
  Attempt([&] { player_.SetUrl(source); });
  Attempt([&] { player_.Play(); });
  Attempt([&] { player_.ShowPlaying(row); });
}

}  // namespace tellurvane

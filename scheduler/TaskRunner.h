// Finds the tasks that have fallen due, starts them, records the runs.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "base/DateText.h"
#include "scheduler/RunOutcome.h"
#include "scheduler/TaskRecord.h"

namespace tellurvane {

// The interval of the task timer whenever it is switched on.
inline constexpr unsigned kTaskTimerMilliseconds = 1'000;

// The list of tasks on the screen; row i is task i.
class TaskRows {
 public:
  virtual ~TaskRows() = default;
  virtual size_t RowCount() = 0;
  virtual void SelectRow(size_t row) = 0;
  virtual void RefreshRow(size_t row) = 0;
  // Whether the user can reach the list.
  virtual void EnableArea(bool enable) = 0;
  // Whether changes show at once.
  virtual void SetRedraw(bool redraw) = 0;
  // How the row's latest run went.
  virtual void SetOutcome(size_t row, const RunOutcome& outcome) = 0;
};

// The task timer.
class TaskTimer {
 public:
  virtual ~TaskTimer() = default;
  virtual void SetInterval(unsigned milliseconds) = 0;
  virtual void SetEnabled(bool enable) = 0;
  // One more tick, as soon as the messages before it are handled, if the timer is on by then.
  virtual void PostTick() = 0;
  // Monotonic: setting the clock does not change it.
  virtual std::uint64_t Milliseconds() = 0;
};

// The steps of playing a source, in the order in which the runner takes them.
class TaskPlayer {
 public:
  virtual ~TaskPlayer() = default;
  virtual void StopPlayback() = 0;
  // Whether the source is a stream: it has no end and no position.
  virtual void SetRadioFlag(bool isRadio) = 0;
  virtual void SetUrl(const std::wstring& url) = 0;
  virtual void Play() = 0;
  // The window shows that something plays, and that it is the task of this row.
  virtual void ShowPlaying(size_t row) = 0;
  // The position slider follows the media.
  virtual void FollowPosition() = 0;
};

// All must be set.
struct TaskCallbacks {
  std::function<bool(const std::wstring& path)> pathExists;
  std::function<RunOutcome(const std::wstring& commandLine)> startCommand;
  std::function<void(const std::wstring& text, const std::wstring& time)> showNote;
  std::function<void()> saveList;
  std::function<void()> processPendingMessages;
};

class TaskRunner {
 public:
  TaskRunner(TaskList& tasks, TaskRows& rows, TaskTimer& timer, TaskPlayer& player,
             TaskCallbacks callbacks, DateWriter writeDate, Clock clock);

  // One tick of the task timer: runs what is due, moves what is disabled, in list order.
  void Tick();

  // Starts one task at once, records the run and saves the list. A failing step is skipped. A task
  // without a schedule runs and keeps its next run.
  void Execute(size_t row);

  // For the user's commands. Without a row that has a task nothing happens. While the runner is
  // busy, RunNow only handles pending messages.
  void RunNow(std::optional<size_t> row);
  void SwitchEnabled(std::optional<size_t> row);

  // Like RunNow, for music that has ended. Each run restarts the task timer, so repeated sounds
  // that are shorter than its interval would stop all ticks. Posts a tick if one is overdue.
  void RunForContinuousPlay(std::optional<size_t> row);

  // Switches the task timer on, at its one interval, or off.
  void SetTaskTimer(bool enable);

  // True during a tick or a run: no other run can start.
  bool IsBusy() const { return isBusy_; }

 private:
  struct Sweep {
    size_t runs = 0;
    std::int64_t soonest = 0;  // minutes until the next task
  };

  // Visits every row once.
  Sweep SweepRows();
  // The rows that have a task.
  size_t RowCount() const;
  // Runs or moves on a task that is due. True when it was started.
  bool RunRow(size_t row, DateSerial now);
  // A task that was removed keeps its row until the list is loaded again.
  bool HasTask(std::optional<size_t> row) const {
    return row && *row < RowCount() && !tasks_[*row].Deleted;
  }
  // The outcome, if it is known at once. The player reports later.
  std::optional<RunOutcome> Start(size_t row, const TaskRecord& task);
  std::optional<RunOutcome> StartMusic(size_t row, const std::wstring& source);
  void StartPlaying(size_t row, const std::wstring& source);
  void EnableRows();

  TaskList& tasks_;
  TaskRows& rows_;
  TaskTimer& timer_;
  TaskPlayer& player_;
  TaskCallbacks callbacks_;
  DateWriter writeDate_;
  Clock clock_;
  bool isBusy_ = false;
  std::uint64_t latestTick_ = 0;  // milliseconds
};

}  // namespace tellurvane

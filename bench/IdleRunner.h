// A task runner whose rows, timer and player cost nothing, to measure a tick alone.
#pragma once

#include <utility>

#include "scheduler/TaskRunner.h"

namespace tellurvane {

class IdleRunner : private TaskRows, private TaskTimer, private TaskPlayer {
 public:
  IdleRunner(TaskList& tasks, Clock clock)
      : tasks_(tasks), runner_(tasks, *this, *this, *this, {}, {}, std::move(clock)) {}

  TaskRunner& Runner() { return runner_; }

 private:
  size_t RowCount() override { return tasks_.size(); }
  void SelectRow(size_t) override {}
  void RefreshRow(size_t) override {}
  void EnableArea(bool) override {}
  void SetRedraw(bool) override {}
  void SetOutcome(size_t, const RunOutcome&) override {}

  void SetInterval(unsigned) override {}
  void SetEnabled(bool) override {}
  void PostTick() override {}
  std::uint64_t Milliseconds() override { return 0; }

  void StopPlayback() override {}
  void SetRadioFlag(bool) override {}
  void SetUrl(const std::wstring&) override {}
  void Play() override {}
  void ShowPlaying(size_t) override {}
  void FollowPosition() override {}

  TaskList& tasks_;
  TaskRunner runner_;
};

}  // namespace tellurvane

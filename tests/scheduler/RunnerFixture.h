// A task runner between fakes that record every call.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "scheduler/TaskRunner.h"
#include "tests/support/Moments.h"

namespace tellurvane {

class RunnerFixture : public TaskRows, public TaskTimer, public TaskPlayer {
 public:
  RunnerFixture();

  // Appends a task. It is 12:00:10.
  TaskRecord& Add(MediaType type, const std::wstring& source,
                  DateSerial nextRun = At(2011, 2, 14, 12));

  // Executes a task of the list.
  void Run(const TaskRecord& task) { runner.Execute(static_cast<size_t>(&task - tasks.data())); }

  // Called after a call of this name was recorded, and "outcome" after an outcome was.
  std::map<std::string, std::function<void()>> on;

  TaskList tasks;
  DateSerial now = At(2011, 2, 14, 12, 0, 10);
  std::uint64_t elapsed = 1'000'000;  // milliseconds
  bool pathExists = true;
  RunOutcome commandOutcome;
  std::vector<std::string> calls;
  unsigned interval = 0;
  bool isTimerOn = false;
  std::vector<std::pair<size_t, RunOutcome>> outcomes;  // as reported
  size_t surplusRows = 0;                               // rows on the screen that have no task

  TaskRunner runner;

  size_t RowCount() override { return tasks.size() + surplusRows; }
  void SelectRow(size_t row) override { Call("select " + std::to_string(row)); }
  void RefreshRow(size_t row) override { Call("refresh " + std::to_string(row)); }
  void EnableArea(bool enable) override { Call(enable ? "area on" : "area off"); }
  void SetRedraw(bool redraw) override { Call(redraw ? "redraw on" : "redraw off"); }
  void SetOutcome(size_t row, const RunOutcome& outcome) override {
    outcomes.emplace_back(row, outcome);
    React("outcome");
  }

  void SetInterval(unsigned milliseconds) override;
  void SetEnabled(bool enable) override;
  void PostTick() override { Call("post tick"); }
  std::uint64_t Milliseconds() override { return elapsed; }

  void StopPlayback() override { Call("stop"); }
  void SetRadioFlag(bool isRadio) override { Call(isRadio ? "radio on" : "radio off"); }
  void SetUrl(const std::wstring& url) override { Call("url", url); }
  void Play() override { Call("play"); }
  void ShowPlaying(size_t row) override { Call("show playing " + std::to_string(row)); }
  void FollowPosition() override { Call("follow position"); }

 private:
  TaskCallbacks Callbacks();
  // Records the call with its text, then calls `on` for its name.
  void Call(const std::string& name, const std::wstring& text = {});
  void React(const std::string& name);
};

using Calls = std::vector<std::string>;

// Several lists of calls one after the other.
Calls operator+(Calls left, const Calls& right);

}  // namespace tellurvane

#include "tests/scheduler/RunnerFixture.h"

#include "tests/support/HostDates.h"

namespace tellurvane {

RunnerFixture::RunnerFixture()
    : runner(tasks, *this, *this, *this, Callbacks(), HostDateWriter(ZhTw()),
             [this] { return now; }) {}

TaskRecord& RunnerFixture::Add(MediaType type, const std::wstring& source, DateSerial nextRun) {
  TaskRecord& task = tasks.emplace_back();
  task.Enabled = true;
  task.MediaType = type;
  task.Source = source;
  task.IntervalUnit = kMinutes;
  task.Interval = 30;
  task.NextRun = nextRun;
  return task;
}

void RunnerFixture::SetInterval(unsigned milliseconds) {
  interval = milliseconds;
  Call("interval " + std::to_string(milliseconds));
}

void RunnerFixture::SetEnabled(bool enable) {
  isTimerOn = enable;
  Call(enable ? "timer on" : "timer off");
}

TaskCallbacks RunnerFixture::Callbacks() {
  return {.pathExists =
              [this](const std::wstring& path) {
                Call("exists?", path);
                return pathExists;
              },
          .startCommand =
              [this](const std::wstring& line) {
                Call("command", line);
                return commandOutcome;
              },
          .showNote = [this](const std::wstring& text,
                             const std::wstring& time) { Call("note", text + L" at " + time); },
          .saveList = [this] { Call("save"); },
          .processPendingMessages = [this] { Call("messages"); }};
}

void RunnerFixture::Call(const std::string& name, const std::wstring& text) {
  std::string call = name;
  if (!text.empty()) call += ' ';
  // Letter by letter: the tests write their texts in ASCII, and dates as anything else.
  for (const wchar_t unit : text) call += unit < 128 ? static_cast<char>(unit) : '?';
  calls.push_back(call);
  React(name);
}

void RunnerFixture::React(const std::string& name) {
  if (const auto reaction = on.find(name); reaction != on.end()) reaction->second();
}

Calls operator+(Calls left, const Calls& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

}  // namespace tellurvane

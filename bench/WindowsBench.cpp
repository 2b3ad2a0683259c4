// The task list and the runner under Wine or Windows, with the real file operations and the user's
// own date text. Prints "name median minimum" lines, in nanoseconds. The argument is a folder to
// work in.
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/LocaleDates.h"
#include "bench/BareRead.h"
#include "bench/IdleRunner.h"
#include "bench/SampleList.h"
#include "scheduler/DecodeAnsi.h"
#include "scheduler/TaskListFile.h"
#include "scheduler/Win32FileOperations.h"

namespace tellurvane {
namespace {

constexpr int kRepetitions = 31;

using SteadyClock = std::chrono::steady_clock;

// The real file operations; adds up what the disk is waited for.
class FlushTimed : public Win32FileOperations {
 public:
  bool Flush() override {
    const auto start = SteadyClock::now();
    const bool flushed = Win32FileOperations::Flush();
    waited_ += SteadyClock::now() - start;
    return flushed;
  }

  SteadyClock::duration TakeWaited() { return std::exchange(waited_, {}); }

 private:
  SteadyClock::duration waited_ = {};
};

struct Measure {
  const char* name;
  std::function<void()> prepare;  // not timed
  std::function<void()> run;
  std::vector<double> nanoseconds = {};
  std::vector<double> flushNanoseconds = {};
};

double Nanoseconds(SteadyClock::duration duration) {
  return std::chrono::duration<double, std::nano>(duration).count();
}

void RunOnce(Measure& measure, FlushTimed& files) {
  if (measure.prepare) measure.prepare();
  files.TakeWaited();
  const auto start = SteadyClock::now();
  measure.run();
  measure.nanoseconds.push_back(Nanoseconds(SteadyClock::now() - start));
  measure.flushNanoseconds.push_back(Nanoseconds(files.TakeWaited()));
}

void Print(const std::string& name, std::vector<double> values) {
  std::sort(values.begin(), values.end());
  std::printf("%s %.0f %.0f\n", name.c_str(), values[values.size() / 2], values.front());
}

int Fail(const char* what) {
  std::fprintf(stderr, "windows_bench: %s\n", what);
  return 1;
}

void PrintAll(const std::vector<Measure>& measures) {
  for (const Measure& measure : measures) {
    Print(measure.name, measure.nanoseconds);
    Print(std::string(measure.name) + "_flush", measure.flushNanoseconds);
  }
}

int Main(const std::wstring& folder) {
  const std::wstring path = folder + L"\\JobList.dbs";
  FlushTimed files;
  TaskListFile file(
      files, path,
      {.dateReader = UserDateReader, .writeDate = AppendLocaleDateText, .decodeAnsi = DecodeAnsi},
      Now);
  // Three days after its tasks were due first: some are to be caught up.
  TaskList full = FullSampleTasks(Now() - 3, AppendLocaleDateText);
  TaskList fullIdle = SampleTasks(full.size(), Now() + 30);
  if (!file.Save(full)) return Fail("cannot write the list");
  IdleRunner fullRunner(fullIdle, Now);
  TaskList loaded;

  std::vector<Measure> measures = {
      {.name = "bare_read", .prepare = {}, .run = [&] { BareRead(files, path); }},
      {.name = "load",
       .prepare =
           [&] {
             file.Save(full);
             loaded = {};
           },
       .run = [&] { file.Load(loaded); }},
      {.name = "save", .prepare = {}, .run = [&] { file.Save(full); }},
      {.name = "tick", .prepare = {}, .run = [&] { fullRunner.Runner().Tick(); }},
  };
  // In turns, so that other load on the machine affects all alike.
  for (int i = 0; i < kRepetitions; ++i) {
    for (Measure& measure : measures) RunOnce(measure, files);
    if (loaded.size() != full.size()) return Fail("not all tasks were loaded");
  }
  if (!file.Save(loaded)) return Fail("what was loaded is not written");
  PrintAll(measures);
  std::printf("tasks %zu %zu\n", full.size(), full.size());
  return 0;
}

}  // namespace
}  // namespace tellurvane

int wmain(int count, wchar_t** arguments) {
  return tellurvane::Main(count > 1 ? arguments[1] : L".");
}

// The task list and the runner on this machine. The report divides by bare_read of the same run.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include <ctime>
#include <filesystem>

#include "bench/BareRead.h"
#include "bench/HostFileOperations.h"
#include "bench/IdleRunner.h"
#include "bench/SampleList.h"
#include "scheduler/Schedule.h"
#include "scheduler/TaskListFile.h"
#include "tests/support/HostDates.h"

namespace tellurvane {
namespace {

constexpr std::int64_t kMinutesOfTenYears = 5'256'000;

DateSerial HostNow() {
  const std::time_t now = std::time(nullptr);
  std::tm local = {};
  localtime_r(&now, &local);
  return SerialFromCivil({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                          local.tm_min, local.tm_sec})
      .value_or(0);
}

// A file with a full list, three days after its tasks were due first: some are to be caught up.
class FullList {
 public:
  FullList() {
    std::filesystem::create_directory(folder_);
    tasks_ = FullSampleTasks(HostNow() - 3, HostDateWriter(ZhTw()));
    file_.Save(tasks_);
  }
  FullList(const FullList&) = delete;
  FullList& operator=(const FullList&) = delete;
  ~FullList() { std::filesystem::remove_all(folder_); }

  std::wstring Path() const { return (folder_ / "JobList.dbs").wstring(); }
  TaskList& Tasks() { return tasks_; }
  TaskListFile& File() { return file_; }
  FileOperations& Files() { return files_; }

 private:
  std::filesystem::path folder_ =
      std::filesystem::temp_directory_path() / ("tellurvane-bench-" + std::to_string(getpid()));
  HostFileOperations files_;
  TaskList tasks_;
  TaskListFile file_{files_,
                     Path(),
                     {.dateReader = [] { return HostDateReader(ZhTw()); },
                      .writeDate = HostDateWriter(ZhTw()),
                      .decodeAnsi = {}},
                     HostNow};
};

void BareReadOfFullList(benchmark::State& state) {
  FullList list;
  for (auto _ : state) {
    if (BareRead(list.Files(), list.Path()) == 0) state.SkipWithError("no file");
  }
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(list.Path()));
  state.counters["tasks"] = static_cast<double>(list.Tasks().size());
}
BENCHMARK(BareReadOfFullList)->Name("bare_read")->Unit(benchmark::kMillisecond);

void LoadOfFullList(benchmark::State& state) {
  FullList list;
  TaskList loaded;
  for (auto _ : state) {
    state.PauseTiming();
    list.File().Save(list.Tasks());
    loaded = {};
    state.ResumeTiming();
    list.File().Load(loaded);
    if (loaded.size() != list.Tasks().size()) state.SkipWithError("not all loaded");
  }
  if (!list.File().Save(loaded)) state.SkipWithError("what was loaded is not written");
}
BENCHMARK(LoadOfFullList)->Name("load")->Unit(benchmark::kMillisecond);

void SaveOfFullList(benchmark::State& state) {
  FullList list;
  for (auto _ : state) {
    if (!list.File().Save(list.Tasks())) state.SkipWithError("not saved");
  }
}
BENCHMARK(SaveOfFullList)->Name("save")->Unit(benchmark::kMillisecond);

void TickOfFullList(benchmark::State& state) {
  TaskList tasks = FullSampleTasks(HostNow() + 30, HostDateWriter(ZhTw()));
  IdleRunner idle(tasks, HostNow);
  for (auto _ : state) idle.Runner().Tick();
}
BENCHMARK(TickOfFullList)->Name("tick")->Unit(benchmark::kMillisecond);

// The argument is how many minutes the next run lies in the past.
void CatchUpOfMinuteTask(benchmark::State& state) {
  const DateSerial now = HostNow();
  TaskRecord task;
  task.IntervalUnit = kMinutes;
  task.Interval = 1;
  task.NextRun = SerialFromSeconds(SecondsFromSerial(now) - state.range(0) * 60);
  for (auto _ : state) {
    benchmark::DoNotOptimize(task);
    benchmark::DoNotOptimize(CaughtUpNextRun(task, now, CatchUp::kInclusive));
  }
}
BENCHMARK(CatchUpOfMinuteTask)->Name("catch_up")->Arg(1)->Arg(kMinutesOfTenYears);

}  // namespace
}  // namespace tellurvane

int main(int count, char** arguments) {
  // Large buffers come fresh from the system every time, as in a program that has just started,
  // which is when a list is loaded. Left alone, the allocator would learn to keep the pages, and
  // the smaller a benchmark is the more it would gain.
  mallopt(M_MMAP_THRESHOLD, 128 * 1024);
  mallopt(M_TRIM_THRESHOLD, 128 * 1024);
  benchmark::Initialize(&count, arguments);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

#include "tests/support/EachCallFails.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <utility>
#include <vector>

#include "base/FatalError.h"
#include "tests/support/FailingImport.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/Boundary.h"
#include "ui/GXMSubclass.h"

namespace tellurvane {
namespace {

enum class Severity {
  kMinor,  // the program continues without the result
  kFatal,  // the program may end with a fatal error
};

struct FailingCall {
  PlatformCall call;
  Severity severity = Severity::kMinor;
};

constexpr std::uint64_t kZero = 0;
constexpr std::uint64_t kMinusOne = static_cast<std::uint64_t>(-1);  // INVALID_HANDLE_VALUE too
constexpr std::uint64_t kOutOfMemory = static_cast<DWORD>(E_OUTOFMEMORY);

constexpr FailingCall kCalls[] = {
    {{"CreateFileW", kMinusOne, ERROR_ACCESS_DENIED}},
    {{"GetFileSizeEx", kZero, ERROR_INVALID_HANDLE}},
    {{"ReadFile", kZero, ERROR_CRC}},
    {{"WriteFile", kZero, ERROR_DISK_FULL}},
    {{"FlushFileBuffers", kZero, ERROR_DISK_FULL}},
    {{"MoveFileExW", kZero, ERROR_ACCESS_DENIED}},
    {{"CopyFileW", kZero, ERROR_ACCESS_DENIED}},
    {{"GetFileAttributesW", INVALID_FILE_ATTRIBUTES, ERROR_ACCESS_DENIED}},
    {{"GetPrivateProfileStringW", kZero, ERROR_FILE_NOT_FOUND}, Severity::kFatal},
    {{"WritePrivateProfileStringW", kZero, ERROR_ACCESS_DENIED}},
    {{"RegOpenKeyExW", ERROR_ACCESS_DENIED}},
    {{"RegSetValueExA", ERROR_ACCESS_DENIED}},
    {{"RegDeleteValueA", ERROR_ACCESS_DENIED}},
    {{"RegDeleteKeyValueW", ERROR_ACCESS_DENIED}},
    {{"CreateWindowExW"}, Severity::kFatal},
    {{"Shell_NotifyIconW"}},
    {{"OpenClipboard", kZero, ERROR_ACCESS_DENIED}},
    {{"CLSIDFromProgID", static_cast<DWORD>(REGDB_E_CLASSNOTREG)}},
    {{"CoCreateInstance", kOutOfMemory}},
    {{"CreateMutexW", kZero, ERROR_ACCESS_DENIED}},
};

// The system keeps some objects after their first use; a leak grows in each of these rounds.
constexpr int kLeakRounds = 3;
constexpr DWORD kTimeLimitMilliseconds = 30'000;

// The name of the current run, for the report when the process ends in it.
std::string current;

[[noreturn]] void EndProcess(const char* how) {
  (void)std::printf("%s: %s\n", current.c_str(), how);
  (void)std::fflush(stdout);
  TerminateProcess(GetCurrentProcess(), 1);
  std::abort();
}

LONG WINAPI OnCrash(EXCEPTION_POINTERS* /*pointers*/) { EndProcess("crashed"); }
void OnFatal(const std::exception_ptr& /*error*/) { EndProcess("threw across a boundary"); }
[[noreturn]] void OnTerminate() { EndProcess("threw in a noexcept function"); }
void CALLBACK OnTimeUp(void* /*context*/, BOOLEAN /*fired*/) { EndProcess("hangs"); }

// Reports the current run when the process ends.
class ProcessEndReporter {
 public:
  ProcessEndReporter()
      : crashFilter_(SetUnhandledExceptionFilter(OnCrash)),
        terminate_(std::set_terminate(OnTerminate)) {
    SetFatalHandler(OnFatal);
  }
  ProcessEndReporter(const ProcessEndReporter&) = delete;
  ProcessEndReporter& operator=(const ProcessEndReporter&) = delete;
  ~ProcessEndReporter() {
    SetFatalHandler(nullptr);
    std::set_terminate(terminate_);
    SetUnhandledExceptionFilter(crashFilter_);
  }

 private:
  LPTOP_LEVEL_EXCEPTION_FILTER crashFilter_;
  std::terminate_handler terminate_;
};

class TimeLimit {
 public:
  TimeLimit() {
    CreateTimerQueueTimer(&timer_, nullptr, OnTimeUp, nullptr, kTimeLimitMilliseconds, 0,
                          WT_EXECUTEONLYONCE);
  }
  TimeLimit(const TimeLimit&) = delete;
  TimeLimit& operator=(const TimeLimit&) = delete;
  // Waits for a running callback.
  ~TimeLimit() { DeleteTimerQueueTimer(nullptr, timer_, INVALID_HANDLE_VALUE); }

 private:
  HANDLE timer_ = nullptr;
};

// One function of the platform, counted, and failing on demand.
struct CountedCall {
  const FailingCall* row;
  std::unique_ptr<FailingImport> import;
  int uses = 0;  // in a run without a failure
};

class Trial {
 public:
  explicit Trial(const Scenario& scenario) : scenario_(scenario) {
    for (const FailingCall& row : kCalls) {
      auto import = std::make_unique<FailingImport>(row.call);
      if (import->IsImported()) calls_.push_back({&row, std::move(import)});
    }
    Run("no failure");  // the program creates and keeps some objects
    Run("no failure");
  }
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;
  ~Trial() = default;

  // Returns the names of the functions that failed.
  std::set<std::string> FailEach() {
    std::set<std::string> failed;
    for (CountedCall& call : calls_) {
      const std::string name = call.row->call.name;
      if (call.uses == 0 || (!scenario_.calls.empty() && !scenario_.calls.contains(name))) continue;
      failed.insert(name);
      for (const int number : std::set{1, (1 + call.uses) / 2, call.uses}) {
        FailAt(call, number, number);
      }
      if (call.uses > 1) FailAt(call, 1, INT_MAX);
    }
    Run("no failure");
    return failed;
  }

 private:
  // The number of paint messages varies, so a run may make fewer calls than counted. Then the last
  // call fails instead.
  void FailAt(CountedCall& call, int first, int last) {
    int uses = RunWithFailure(call, first, last);
    while (uses < first && first > 1) {
      first = last = std::max(uses, 1);
      uses = RunWithFailure(call, first, last);
    }
    EXPECT_GE(uses, first) << current << ": it was not called";
  }

  // Returns the number of uses.
  int RunWithFailure(CountedCall& call, int first, int last) {
    const std::string name = std::string(call.row->call.name) + " " + std::to_string(first) +
                             (first == last ? "" : " and later") + " of " +
                             std::to_string(call.uses);
    ResourceCounts grown;
    int uses = 0;
    for (int round = 0; round < kLeakRounds; ++round) {
      const ResourceCounts before = CountResources();
      const size_t blocks = LiveSubclassBlocks();
      uses = Run(name, &call, first, last);
      const ResourceCounts after = CountResources();
      EXPECT_EQ(LiveSubclassBlocks(), blocks) << current;
      grown = {after.gdiObjects - before.gdiObjects, after.windows - before.windows,
               after.kernelHandles - before.kernelHandles};
      if (grown.gdiObjects <= 0 && grown.windows <= 0 && grown.kernelHandles <= 0) return uses;
    }
    ADD_FAILURE() << current << " leaks " << grown;
    return uses;
  }

  // Returns the number of uses of the failing call. Without one it counts the uses of all calls.
  int Run(const std::string& failure, CountedCall* failing = nullptr, int first = 0, int last = 0) {
    for (const CountedCall& each : calls_) each.import->LetAllThrough();
    scenario_.prepare();
    current = std::string(scenario_.name) + ", " + failure;
    SCOPED_TRACE(current);
    const TimeLimit limit;
    for (const CountedCall& each : calls_) each.import->LetAllThrough();
    if (failing != nullptr) failing->import->Fail(first, last);
    const bool isFatal = EndsFatally();
    const bool mayBeFatal = failing != nullptr && failing->row->severity == Severity::kFatal;
    EXPECT_TRUE(!isFatal || mayBeFatal);
    const int uses = failing != nullptr ? failing->import->Calls() : 0;
    for (CountedCall& each : calls_) {
      if (failing == nullptr) each.uses = each.import->Calls();
      each.import->LetAllThrough();
    }
    Pump();
    MSG message = {};
    while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) continue;
    EXPECT_EQ(scenario_.fault(), "");
    return uses;
  }

  bool EndsFatally() {
    try {
      scenario_.act();
      return false;
    } catch (const FatalError&) {
      return true;
    } catch (const SubclassError&) {
      return true;
    } catch (const std::exception& error) {
      ADD_FAILURE() << error.what();
      return false;
    }
  }

  const Scenario& scenario_;
  std::vector<CountedCall> calls_;
};

}  // namespace

void FailEachCall(const Scenario& scenario) {
  const ProcessEndReporter reporter;
  Trial trial(scenario);
  const std::set<std::string> failed = trial.FailEach();
  EXPECT_FALSE(failed.empty()) << scenario.name;
  for (const std::string& function : scenario.calls) {
    EXPECT_TRUE(failed.contains(function)) << scenario.name << " does not call " << function;
  }
}

}  // namespace tellurvane

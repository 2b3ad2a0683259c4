#include "tests/support/EachCallFails.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "base/FatalError.h"
#include "tests/support/PlatformCalls.h"
#include "tests/ui/UiTestSupport.h"
#include "ui/Boundary.h"
#include "ui/GXMSubclass.h"

namespace tellurvane {
namespace {

// Where the deed goes on at any rate, the first and the last are enough.
constexpr int kMostNumbers = 2;
constexpr int kMostFatalNumbers = 5;
// What leaks does so each time; what the system makes once and keeps does not.
constexpr int kLeakingRounds = 3;
constexpr DWORD kLongestMilliseconds = 30'000;

// What is being tried: whoever ends the process tells it.
std::string current;

[[noreturn]] void EndProcess(const char* how) {
  (void)std::printf("%s: %s\n", current.c_str(), how);
  (void)std::fflush(stdout);
  TerminateProcess(GetCurrentProcess(), 1);
  std::abort();
}

LONG WINAPI OnCrash(EXCEPTION_POINTERS* /*pointers*/) { EndProcess("crashed"); }
void OnFatal(const std::exception_ptr& /*error*/) { EndProcess("threw across a boundary"); }
void CALLBACK OnTimeUp(void* /*context*/, BOOLEAN /*fired*/) { EndProcess("hangs"); }

// Tells what ends the process, for as long as it lives.
class Witness {
 public:
  Witness() : crashFilter_(SetUnhandledExceptionFilter(OnCrash)) { SetFatalHandler(OnFatal); }
  Witness(const Witness&) = delete;
  Witness& operator=(const Witness&) = delete;
  ~Witness() {
    SetFatalHandler(nullptr);
    SetUnhandledExceptionFilter(crashFilter_);
  }

 private:
  LPTOP_LEVEL_EXCEPTION_FILTER crashFilter_;
};

class TimeLimit {
 public:
  TimeLimit() {
    CreateTimerQueueTimer(&timer_, nullptr, OnTimeUp, nullptr, kLongestMilliseconds, 0,
                          WT_EXECUTEONLYONCE);
  }
  TimeLimit(const TimeLimit&) = delete;
  TimeLimit& operator=(const TimeLimit&) = delete;
  ~TimeLimit() {
    // Waits until nobody is inside.
    DeleteTimerQueueTimer(nullptr, timer_, INVALID_HANDLE_VALUE);
  }

 private:
  HANDLE timer_ = nullptr;
};

enum class End { kUsual, kFatal, kWrong };

End EndOf(const std::function<void()>& act) {
  try {
    act();
    return End::kUsual;
  } catch (const FatalError&) {
    return End::kFatal;
  } catch (const SubclassError&) {
    return End::kFatal;
  } catch (const std::bad_alloc&) {
    return End::kFatal;
  } catch (const std::exception& error) {
    ADD_FAILURE() << current << ": " << error.what();
    return End::kWrong;
  }
}

struct Refusal {
  const RefusedCall* refused;
  std::unique_ptr<FailingImport> import;
  int calls = 0;  // when nothing fails
};

class Trial {
 public:
  explicit Trial(const Deed& deed) : deed_(deed) {
    for (const RefusedCall& refused : AllRefusedCalls()) {
      auto import = std::make_unique<FailingImport>(refused.call);
      if (import->IsImported()) refusals_.push_back({&refused, std::move(import)});
    }
    // It keeps two addresses of its own.
    TheSubclassPlatform() = {};
    // What the program makes once and keeps.
    for (int i = 0; i < 2; ++i) Do(nullptr, 0, 0);
  }
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;
  ~Trial() {
    for (Refusal& refusal : refusals_) refusal.import.reset();
    TheSubclassPlatform() = {};
  }

  std::set<std::string> All() {
    std::set<std::string> failed;
    for (const Refusal& refusal : refusals_) {
      const std::string name = refusal.refused->call.name;
      if (refusal.calls == 0 || (!deed_.refused.empty() && !deed_.refused.contains(name))) continue;
      failed.insert(name);
      for (const int number : Numbers(refusal)) Try(refusal, number, number);
      if (refusal.calls > 1 && refusal.refused->canFailForGood) Try(refusal, 1, INT_MAX);
    }
    Do(nullptr, 0, 0);
    return failed;
  }
  int Count() const { return count_; }

 private:
  static std::set<int> Numbers(const Refusal& refusal) {
    const bool isFatal = refusal.refused->gravity == Gravity::kFatal;
    const int steps = (isFatal ? kMostFatalNumbers : kMostNumbers) - 1;
    std::set<int> numbers;
    for (int i = 0; i <= steps; ++i) numbers.insert(1 + i * (refusal.calls - 1) / steps);
    return numbers;
  }

  void Try(const Refusal& refusal, int first, int last) {
    ResourceCounts grown;
    for (int round = 0; round < kLeakingRounds; ++round) {
      const ResourceCounts before = CountResources();
      const size_t blocks = LiveSubclassBlocks();
      Do(&refusal, first, last);
      const ResourceCounts after = CountResources();
      EXPECT_EQ(LiveSubclassBlocks(), blocks) << current;
      grown = {after.gdiObjects - before.gdiObjects, after.windows - before.windows,
               after.kernelHandles - before.kernelHandles};
      if (grown.gdiObjects <= 0 && grown.windows <= 0 && grown.kernelHandles <= 0) return;
    }
    ADD_FAILURE() << current << " leaks " << grown;
  }

  void Do(const Refusal* refusal, int first, int last) {
    current = std::string(deed_.name) + ", nothing refused";
    deed_.prepare();
    for (const Refusal& each : refusals_) each.import->LetAllThrough();
    if (refusal != nullptr) {
      ++count_;
      current = std::string(deed_.name) + ", " + refusal->refused->call.name + " " +
                std::to_string(first) + (first == last ? "" : " and on") + " of " +
                std::to_string(refusal->calls);
      refusal->import->Fail(first, last);
    }
    SCOPED_TRACE(current);
    const TimeLimit limit;
    const End end = EndOf(deed_.act);
    for (Refusal& each : refusals_) {
      if (refusal == nullptr) each.calls = each.import->Calls();
    }
    if (refusal != nullptr) {
      EXPECT_TRUE(first > 1 || refusal->import->Calls() > 0) << "it was not called";
      refusal->import->LetAllThrough();
    }
    const bool mayBeFatal = refusal != nullptr && refusal->refused->gravity == Gravity::kFatal;
    EXPECT_TRUE(end == End::kUsual || (end == End::kFatal && mayBeFatal)) << current;
    Pump();
    MSG message = {};
    while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) continue;
    EXPECT_EQ(deed_.fault(), "") << current;
  }

  const Deed& deed_;
  std::vector<Refusal> refusals_;
  int count_ = 0;
};

}  // namespace

void FailEachCall(const Deed& deed) {
  const Witness witness;
  Trial trial(deed);
  const auto failed = trial.All();
  EXPECT_FALSE(failed.empty()) << deed.name;
  for (const std::string& function : deed.refused) {
    EXPECT_TRUE(failed.contains(function)) << deed.name << " does not call " << function;
  }
  std::printf("%s: %zu functions failed in %d ways\n", deed.name, failed.size(), trial.Count());
}

}  // namespace tellurvane

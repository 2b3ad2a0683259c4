#include "tests/support/EachCallFails.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "base/FatalError.h"
#include "tests/support/CallStack.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/PlatformCalls.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/Boundary.h"
#include "ui/GXMSubclass.h"

namespace tellurvane {
namespace {

// Where the scenario goes on at any rate, the first, the middle and the last are enough.
constexpr int kMostNumbers = 3;
constexpr int kMostFatalNumbers = 5;
// Of the allocations the first ones each, and so many from the first to the last.
constexpr int kFirstAllocations = 30;
constexpr int kMostSpreadAllocations = 15;
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
[[noreturn]] void OnTerminate() { EndProcess("threw where nothing may"); }
void CALLBACK OnTimeUp(void* /*context*/, BOOLEAN /*fired*/) { EndProcess("hangs"); }

// Tells what ends the process, for as long as it lives.
class Witness {
 public:
  Witness()
      : crashFilter_(SetUnhandledExceptionFilter(OnCrash)),
        terminate_(std::set_terminate(OnTerminate)) {
    SetFatalHandler(OnFatal);
  }
  Witness(const Witness&) = delete;
  Witness& operator=(const Witness&) = delete;
  ~Witness() {
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
    const AllocationPause pause;
    ADD_FAILURE() << current << ": " << error.what();
    return End::kWrong;
  }
}

struct Refusal {
  const RefusedCall* refused;
  std::unique_ptr<FailingImport> import;
  int calls = 0;   // when nothing fails
  int latest = 0;  // of the latest try
};

// What stands in the scenario's way one time.
struct Obstacle {
  std::string name = "nothing refused";
  bool mayBeFatal = false;
  std::function<void()> put = [] {};
  std::function<void()> remove = [] {};
};

// Those that have failed in any scenario.
std::set<std::string>& EverFailed() {
  static std::set<std::string> failed;
  return failed;
}

// So many of the numbers from 1 to the last one, evenly spread; both ends are among them.
std::set<int> Spread(int last, int count) {
  std::set<int> numbers;
  for (int i = 0; i < count; ++i) numbers.insert(1 + i * (last - 1) / (count - 1));
  return numbers;
}

class Trial {
 public:
  explicit Trial(const Scenario& scenario) : deed_(scenario) {
    for (const RefusedCall& refused : AllFailingCalls()) {
      auto import = std::make_unique<FailingImport>(refused.call);
      if (import->IsImported()) refusals_.push_back({&refused, std::move(import)});
    }
    // It keeps two addresses of its own.
    TheSubclassPlatform() = {};
    // Seen once from here, which is outside of any.
    EXPECT_FALSE(IsInCallback());
    // What the program makes once and keeps.
    Do({});
    Do({.remove = [this] {
      for (Refusal& refusal : refusals_) refusal.calls = refusal.import->Calls();
    }});
  }
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;
  ~Trial() {
    for (Refusal& refusal : refusals_) refusal.import.reset();
    TheSubclassPlatform() = {};
  }

  std::set<std::string> RefuseEachCall() {
    std::set<std::string> failed;
    for (Refusal& refusal : refusals_) {
      const std::string name = refusal.refused->call.name;
      if (refusal.calls == 0 || (!deed_.refused.empty() && !deed_.refused.contains(name))) continue;
      failed.insert(name);
      const bool isFatal = refusal.refused->gravity == Gravity::kFatal;
      for (const int number : Spread(refusal.calls, isFatal ? kMostFatalNumbers : kMostNumbers)) {
        Refuse(refusal, number);
      }
      if (refusal.calls > 1 && refusal.refused->canFailForGood) RefuseForGood(refusal);
    }
    Do({});
    EverFailed().insert(failed.begin(), failed.end());
    return failed;
  }

  // How many of them there are.
  int RefuseEachAllocation() {
    Do(AllocationRefusal(INT_MAX, 0));
    const int allocations = FailingAllocation::Asked();
    std::set<int> numbers = Spread(std::max(allocations, 1), kMostSpreadAllocations);
    for (int number = 1; number <= kFirstAllocations; ++number) numbers.insert(number);
    for (const int number : numbers) {
      if (number <= allocations) RefuseAllocation(number);
    }
    Do({});
    return allocations;
  }

  int Count() const { return count_; }

 private:
  // The system paints when it pleases, so that there may be fewer calls this time than were
  // counted: the last one there is takes the place of one that was not reached.
  void TryAt(int number, const std::function<Obstacle(int)>& obstacleAt,
             const std::function<int()>& latestCalls) {
    Try(obstacleAt(number));
    while (latestCalls() < number && number > 1) {
      number = std::max(latestCalls(), 1);
      Try(obstacleAt(number));
    }
    EXPECT_GE(latestCalls(), number) << current << ": it was not called";
  }

  void Refuse(Refusal& refusal, int number) {
    TryAt(
        number, [&](int first) { return RefusalOf(refusal, first, first); },
        [&] { return refusal.latest; });
  }

  void RefuseForGood(Refusal& refusal) {
    Try(RefusalOf(refusal, 1, INT_MAX));
    EXPECT_GE(refusal.latest, 1) << current << ": it was not called";
  }

  static Obstacle RefusalOf(Refusal& refusal, int first, int last) {
    return {.name = std::string(refusal.refused->call.name) + " " + std::to_string(first) +
                    (first == last ? "" : " and on") + " of " + std::to_string(refusal.calls),
            .mayBeFatal = refusal.refused->gravity == Gravity::kFatal,
            .put = [&refusal, first, last] { refusal.import->Fail(first, last); },
            .remove =
                [&refusal] {
                  refusal.latest = refusal.import->Calls();
                  refusal.import->LetAllThrough();
                }};
  }

  void RefuseAllocation(int number) {
    TryAt(
        number, [&](int first) { return AllocationRefusal(first - 1, 1); },
        FailingAllocation::Asked);
    EXPECT_TRUE(FailingAllocation::Happened()) << current;
  }

  // Only what the scenario does by itself: an exception inside a window procedure or another
  // callback is meant to end the program, and ThrowingHandlers_test sees it do so.
  Obstacle AllocationRefusal(int granted, int failing) {
    return {.name = "allocation " + std::to_string(granted + 1),
            .mayBeFatal = failing > 0,
            .put = [this, granted,
                    failing] { memory_.emplace(granted, failing, [] { return !IsInCallback(); }); },
            .remove = [this] { memory_.reset(); }};
  }

  void Try(const Obstacle& obstacle) {
    ResourceCounts grown;
    for (int round = 0; round < kLeakingRounds; ++round) {
      const ResourceCounts before = CountResources();
      const size_t blocks = LiveSubclassBlocks();
      ++count_;
      Do(obstacle);
      const ResourceCounts after = CountResources();
      EXPECT_EQ(LiveSubclassBlocks(), blocks) << current;
      grown = {after.gdiObjects - before.gdiObjects, after.windows - before.windows,
               after.kernelHandles - before.kernelHandles};
      if (grown.gdiObjects <= 0 && grown.windows <= 0 && grown.kernelHandles <= 0) return;
    }
    ADD_FAILURE() << current << " leaks " << grown;
  }

  void Do(const Obstacle& obstacle) {
    deed_.prepare();
    for (const Refusal& each : refusals_) each.import->LetAllThrough();
    current = std::string(deed_.name) + ", " + obstacle.name;
    SCOPED_TRACE(current);
    const TimeLimit limit;
    obstacle.put();
    const End end = EndOf(deed_.act);
    obstacle.remove();
    EXPECT_TRUE(end == End::kUsual || (end == End::kFatal && obstacle.mayBeFatal)) << current;
    Pump();
    MSG message = {};
    while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) continue;
    EXPECT_EQ(deed_.fault(), "") << current;
  }

  const Scenario& deed_;
  std::vector<Refusal> refusals_;
  std::optional<FailingAllocation> memory_;
  int count_ = 0;
};

// At the end of all: what no scenario calls any more would be refused nowhere, and nobody would
// see.
class EveryCallWasRefused : public testing::Environment {
 public:
  void TearDown() override {
    const auto& tests = *testing::UnitTest::GetInstance();
    // A filter has left tests out.
    if (tests.test_to_run_count() < tests.total_test_count()) return;
    for (const RefusedCall& refused : AllFailingCalls()) {
      EXPECT_TRUE(EverFailed().contains(refused.call.name))
          << "no scenario calls " << refused.call.name;
    }
  }
};
const auto* const kEveryCallWasRefused = testing::AddGlobalTestEnvironment(new EveryCallWasRefused);

}  // namespace

void FailEachCall(const Scenario& scenario) {
  const Witness witness;
  Trial trial(scenario);
  const auto failed = trial.RefuseEachCall();
  EXPECT_FALSE(failed.empty()) << scenario.name;
  for (const std::string& function : scenario.refused) {
    EXPECT_TRUE(failed.contains(function)) << scenario.name << " does not call " << function;
  }
  const int allocations = trial.RefuseEachAllocation();
  std::printf("%s: %zu functions and %d allocations failed in %d ways\n", scenario.name,
              failed.size(), allocations, trial.Count());
}

}  // namespace tellurvane

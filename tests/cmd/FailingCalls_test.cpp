// Starting a program when a call fails.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "cmd/ModCMD.h"
#include "tests/cmd/ProcessJob.h"
#include "tests/support/FailingImport.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {
namespace {

// This program, with nothing to do.
std::wstring OwnCommand() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return L"\"" + std::wstring(path) + L"\" --gtest_filter=none";
}

// This process and its children.
DWORD RunningProcesses() { return JobAccounting().ActiveProcesses; }

// Starts this program again and again. Wine, on a busy machine, fails to create a process now and
// then: a few failures count as such, and their errors go into the log.
class Starts {
 public:
  void Start() {
    constexpr DWORD kMost = 6;
    EXPECT_TRUE(BecomesTrue([] { return RunningProcesses() < kMost; })) << "children do not end";
    DWORD error = 0;
    ++(RunCommand(OwnCommand(), PipeRefusesCollection, &error) ? succeeded_ : failed_);
    if (error != 0) std::printf("no start: error %lu\n", error);
  }
  void ExpectSuccess() const { EXPECT_GT(succeeded_, 20 * failed_); }

 private:
  int succeeded_ = 0;
  int failed_ = 0;
};

TEST(FailingCallsTest, AFailedStartLeaksNothing) {
  for (const char* const name : {"CreatePipe", "SetHandleInformation", "CreateProcessW"}) {
    FailingImport call({name, 0, ERROR_NO_SYSTEM_RESOURCES});
    EXPECT_EQ(LeakedBy([&] {
                call.Fail(1);
                EXPECT_FALSE(RunCommand(OwnCommand())) << name;
                EXPECT_EQ(call.Calls(), 1) << name;
              }),
              ResourceCounts())
        << name;
  }
}

TEST(FailingCallsTest, NoStartLeaksAHandle) {
  const PipeTest failing = [](HANDLE) { return false; };
  Starts starts;
  EXPECT_EQ(LeakedBy([&] { starts.Start(); }), ResourceCounts());
  starts.ExpectSuccess();
  EXPECT_EQ(LeakedBy([] { EXPECT_FALSE(RunCommand(L"no-such-program")); }), ResourceCounts());
  EXPECT_EQ(LeakedBy([&] { EXPECT_FALSE(RunCommand(OwnCommand(), failing)); }), ResourceCounts());
}

TEST(FailingCallsTest, StartsWithoutAnEmptyInput) {
  FailingImport files({"CreateFileW", static_cast<std::uint64_t>(-1), ERROR_ACCESS_DENIED});
  Starts starts;
  EXPECT_EQ(LeakedBy([&] {
              files.Fail(1);
              starts.Start();
              EXPECT_EQ(files.Calls(), 1);
            }),
            ResourceCounts());
  starts.ExpectSuccess();
}

}  // namespace
}  // namespace tellurvane

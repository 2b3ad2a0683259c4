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

BOOL WINAPI CheckCreation(const wchar_t* application, wchar_t*, SECURITY_ATTRIBUTES*,
                          SECURITY_ATTRIBUTES*, BOOL inherits, DWORD flags, void* environment,
                          const wchar_t* folder, STARTUPINFOW* startup, PROCESS_INFORMATION*) {
  EXPECT_EQ(application, nullptr);
  EXPECT_TRUE(inherits);
  EXPECT_EQ(flags, 0U);
  EXPECT_EQ(environment, nullptr);
  EXPECT_EQ(folder, nullptr);
  EXPECT_EQ(startup->cb, sizeof(STARTUPINFOW));
  return FALSE;
}

BOOL WINAPI CheckPipeState(HANDLE pipe, DWORD* mode, DWORD* count, DWORD* timeout) {
  EXPECT_TRUE(PeekNamedPipe(pipe, nullptr, 0, nullptr, nullptr, nullptr)) << "not the end to read";
  EXPECT_TRUE(mode != nullptr && *mode == PIPE_NOWAIT);
  EXPECT_TRUE(count != nullptr && *count == 0);
  EXPECT_TRUE(timeout != nullptr && *timeout == 0);
  return FALSE;
}

TEST(FailingCallsTest, TriesThePipeAndStartsWithoutFlags) {
  FailingImport pipeState({"SetNamedPipeHandleState"});
  FailingImport creation({"CreateProcessW"});
  pipeState.Replace(CheckPipeState);
  creation.Replace(CheckCreation);
  EXPECT_FALSE(RunCommand(OwnCommand()));
  EXPECT_EQ(pipeState.Calls(), 1);
  EXPECT_EQ(creation.Calls(), 1);
}

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

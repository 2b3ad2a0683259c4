// Starting a program when a call fails.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "cmd/ModCMD.h"
#include "tests/support/FailingImport.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {
namespace {

// This program, with nothing to do.
std::wstring OwnCommand() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return L"\"" + std::wstring(path) + L"\" --gtest_filter=none";
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
  EXPECT_EQ(LeakedBy([] { EXPECT_TRUE(RunCommand(OwnCommand())); }), ResourceCounts());
  EXPECT_EQ(LeakedBy([] { EXPECT_FALSE(RunCommand(L"no-such-program")); }), ResourceCounts());
  EXPECT_EQ(LeakedBy([&] { EXPECT_FALSE(RunCommand(OwnCommand(), failing)); }), ResourceCounts());
}

TEST(FailingCallsTest, StartsWithoutAnEmptyInput) {
  FailingImport files({"CreateFileW", static_cast<std::uint64_t>(-1), ERROR_ACCESS_DENIED});
  EXPECT_EQ(LeakedBy([&] {
              files.Fail(1);
              EXPECT_TRUE(RunCommand(OwnCommand()));
              EXPECT_EQ(files.Calls(), 1);
            }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane

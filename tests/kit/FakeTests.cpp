// A test program with one test for each outcome: passed, crashed, failed, hung, skipped.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>

namespace tellurvane {
namespace {

TEST(Fake, Passes) { EXPECT_NE(GetCurrentProcessId(), 0U); }

TEST(Fake, HasAFolderOfItsOwn) {
  wchar_t folder[MAX_PATH] = {};
  GetCurrentDirectoryW(MAX_PATH, folder);
  wchar_t temporary[MAX_PATH] = {};
  GetTempPathW(MAX_PATH, temporary);
  EXPECT_EQ(std::wstring(folder) + L"\\", temporary);
  EXPECT_TRUE(std::ofstream("left behind.txt") << "text");
}

TEST(Fake, Crashes) {
  SetErrorMode(SEM_NOGPFAULTERRORBOX);
  RaiseException(EXCEPTION_ACCESS_VIOLATION, EXCEPTION_NONCONTINUABLE, 0, nullptr);
}

TEST(Fake, Fails) { EXPECT_EQ(1 + 1, 3) << "<中文 & more>"; }

TEST(Fake, Hangs) { Sleep(INFINITE); }

// For longer than the limit of a silence.
TEST(Fake, IsSlow) {
  for (int second = 0; second < 10; ++second) {
    Sleep(1'000);
    std::puts("working");
    std::fflush(stdout);
  }
}

TEST(Fake, IsSkipped) { GTEST_SKIP() << "because of 理由"; }

}  // namespace
}  // namespace tellurvane

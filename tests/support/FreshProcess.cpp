#include "tests/support/FreshProcess.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "tests/support/TemporaryFolder.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kMark = L"TELLURVANE_FRESH_PROCESS";
constexpr DWORD kLongestMilliseconds = 60'000;

// This program with this test alone.
std::wstring Command() {
  wchar_t program[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
  const std::string name = std::string(test.test_suite_name()) + "." + test.name();
  return L"\"" + std::wstring(program) + L"\" --gtest_filter=" +
         std::wstring(name.begin(), name.end());
}

// What it says goes to the file.
bool StartAndAwait(std::wstring command, const std::wstring& outputPath) {
  SECURITY_ATTRIBUTES inherited = {sizeof(inherited), nullptr, TRUE};
  const UniqueKernelHandle output =
      OwnedFile(CreateFileW(outputPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                            CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = startup.hStdError = output.Get();
  PROCESS_INFORMATION started = {};
  SetEnvironmentVariableW(kMark, L"1");
  const bool isStarted = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                        nullptr, &startup, &started) != 0;
  SetEnvironmentVariableW(kMark, nullptr);
  if (!isStarted) return false;
  const UniqueKernelHandle process(started.hProcess);
  const UniqueKernelHandle thread(started.hThread);
  if (WaitForSingleObject(process.Get(), kLongestMilliseconds) == WAIT_OBJECT_0) return true;
  TerminateProcess(process.Get(), 1);
  return false;
}

}  // namespace

bool InFreshProcess() {
  if (GetEnvironmentVariableW(kMark, nullptr, 0) != 0) return true;
  const TemporaryFolder folder;
  EXPECT_TRUE(StartAndAwait(Command(), folder.File(L"output")));
  const std::string output = ReadBytes(folder.File(L"output"));
  // Not by the exit code, which under Wine may be 0 after a crash too.
  EXPECT_NE(output.find("[  PASSED  ] 1 test."), std::string::npos) << output;
  return false;
}

}  // namespace tellurvane

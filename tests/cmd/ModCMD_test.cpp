#include "cmd/ModCMD.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/CodePage.h"
#include "tests/cmd/ProcessJob.h"
#include "tests/support/TemporaryFolder.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

using testing::HasSubstr;

std::filesystem::path TestFolder() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::filesystem::path(path).parent_path();
}

// The processes that this one has started since it asked first.
DWORD StartedProcesses() { return JobAccounting().TotalProcesses - 1; }

class RunCommandTest : public testing::Test {
 protected:
  // The command line of the child process.
  std::wstring Reporter(const std::wstring& arguments = L"") const {
    return L"\"" + (TestFolder() / L"StartReporter.exe").wstring() + L"\" \"" + report_ + L"\"" +
           arguments;
  }

  // Waits for the child's report.
  std::string Report() const {
    std::string report;
    EXPECT_TRUE(BecomesTrue([&] { return !(report = ReadBytes(report_)).empty(); })) << "no report";
    return report;
  }

  TemporaryFolder folder_;
  const std::wstring report_ = folder_.File(L"report");
};

TEST_F(RunCommandTest, TheArgumentsArriveUnderAnyCodePage) {
  const std::wstring command =
      Reporter(L" one \"two words\" a\\b --three=\"\" \"播放 音樂\" \xD55C\x2603\xD83C\xDFB5");
  ASSERT_TRUE(RunCommand(command));
  const std::string report = Report();
  EXPECT_THAT(report, HasSubstr("command=" + Utf8(command) + "\n"));
  EXPECT_THAT(report, HasSubstr("\nargument=one\nargument=two words\nargument=a\\b\n"
                                "argument=--three=\nargument=" +
                                Utf8(L"播放 音樂\nargument=\xD55C\x2603\xD83C\xDFB5\n")));
}

TEST_F(RunCommandTest, TheExtensionAndThePathMayBeMissing) {
  // The platform searches the folder of the calling program.
  ASSERT_TRUE(RunCommand(L"StartReporter \"" + report_ + L"\""));
  EXPECT_THAT(Report(), HasSubstr("command=StartReporter \""));
}

TEST_F(RunCommandTest, StartsItVisiblyInTheCallersFolderWithEmptyInput) {
  wchar_t folder[MAX_PATH] = {};
  GetCurrentDirectoryW(MAX_PATH, folder);
  ASSERT_TRUE(RunCommand(Reporter(L" read")));
  const std::string report = Report();
  EXPECT_THAT(report, HasSubstr("\nfolder=" + Utf8(folder) + "\n"));
  EXPECT_THAT(report, HasSubstr("\nshow=5\nflags=257\n"));
  EXPECT_THAT(report, HasSubstr("\ninput=device\noutput=pipe\nerror=pipe\n"));
  EXPECT_THAT(report, HasSubstr("\nread=end\n"));
}

TEST_F(RunCommandTest, AChildThatWritesMuchGetsABrokenPipe) {
  // With an open end for reading the child would block once the pipe is full.
  ASSERT_TRUE(RunCommand(Reporter(L" write=1000000")));
  const std::string report = Report();
  EXPECT_THAT(report, HasSubstr("\nargument=write=1000000\n"));
  EXPECT_THAT(report, testing::AnyOf(HasSubstr("\nwrite=failed 109\n"),    // ERROR_BROKEN_PIPE
                                     HasSubstr("\nwrite=failed 232\n")));  // ERROR_NO_DATA
}

TEST_F(RunCommandTest, ReturnsWhileTheChildStillRuns) {
  const std::wstring name = L"run-command-" + std::to_wstring(GetCurrentProcessId());
  const UniqueKernelHandle event(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
  ASSERT_TRUE(RunCommand(Reporter(L" wait=" + name)));
  EXPECT_FALSE(std::filesystem::exists(report_)) << "the child was waited for";
  SetEvent(event.Get());
  EXPECT_THAT(Report(), HasSubstr("\nwaited=yes\n"));
}

TEST_F(RunCommandTest, OpensNoDocument) {
  const std::wstring document = folder_.File(L"document.txt");
  WriteBytes(document, "text");
  EXPECT_FALSE(RunCommand(document));
  EXPECT_FALSE(RunCommand(L"\"" + document + L"\""));
  EXPECT_FALSE(RunCommand(folder_.Path())) << "nor a folder";
}

TEST_F(RunCommandTest, StartsNoMissingProgram) {
  EXPECT_FALSE(RunCommand(L"no-such-program-anywhere"));
  EXPECT_FALSE(RunCommand(folder_.File(L"none.exe") + L" argument"));
  EXPECT_FALSE(RunCommand(L""));
  EXPECT_FALSE(RunCommand(L"   "));
}

TEST_F(RunCommandTest, GivesTheErrorOfACreationThatFailed) {
  const std::wstring document = folder_.File(L"document.exe");
  WriteBytes(document, "text");
  const struct {
    std::wstring command;
    DWORD error;
  } cases[] = {{L"no-such-program-anywhere", ERROR_FILE_NOT_FOUND},
               {document, ERROR_BAD_EXE_FORMAT},
               {Reporter(), 0}};
  for (const auto& [command, expected] : cases) {
    DWORD error = 0;
    SetLastError(ERROR_INVALID_DATA);
    EXPECT_EQ(RunCommand(command, PipeRefusesCollection, &error), expected == 0);
    EXPECT_EQ(error, expected) << Utf8(command);
  }
  Report();
}

TEST_F(RunCommandTest, StartsNothingIfThePipeAcceptsTheSettings) {
  const DWORD before = StartedProcesses();
  EXPECT_FALSE(RunCommand(Reporter(), [](HANDLE) { return false; }));
  EXPECT_EQ(StartedProcesses(), before);
  EXPECT_TRUE(RunCommand(Reporter(),
                         [](HANDLE readEnd) { return GetFileType(readEnd) == FILE_TYPE_PIPE; }));
  EXPECT_EQ(StartedProcesses(), before + 1);
  Report();
}

TEST_F(RunCommandTest, ThePlatformRejectsTheSettingsForAPipe) {
  UniqueKernelHandle readEnd;
  UniqueKernelHandle writeEnd;
  ASSERT_TRUE(CreatePipe(readEnd.Receive(), writeEnd.Receive(), nullptr, 0));
  EXPECT_TRUE(PipeRefusesCollection(readEnd.Get()));
}

}  // namespace
}  // namespace tellurvane

#include "cmd/ModCMD.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/cmd/KernelHandles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Utf8.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

using testing::HasSubstr;

constexpr int kCallsForALeak = 50;
// What leaks does so each time; that a busy machine refuses a process once is not its doing.
constexpr int kLeakingRounds = 3;

std::filesystem::path TestFolder() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::filesystem::path(path).parent_path();
}

// How many processes this one has started since the first call. The job that it joins counts each
// of its children as it is created, so that there is nothing to wait for.
DWORD StartedProcesses() {
  static const UniqueKernelHandle job = [] {
    UniqueKernelHandle made(CreateJobObjectW(nullptr, nullptr));
    EXPECT_TRUE(AssignProcessToJobObject(made.Get(), GetCurrentProcess()));
    return made;
  }();
  JOBOBJECT_BASIC_ACCOUNTING_INFORMATION accounting = {};
  EXPECT_TRUE(QueryInformationJobObject(job.Get(), JobObjectBasicAccountingInformation, &accounting,
                                        sizeof(accounting), nullptr));
  EXPECT_GT(accounting.TotalProcesses, 0U);
  return accounting.TotalProcesses - 1;
}

class RunCommandTest : public testing::Test {
 protected:
  // The child process that reports to a file of this test.
  std::wstring Probe(const std::wstring& arguments = L"") const {
    return L"\"" + (TestFolder() / L"CommandProbe.exe").wstring() + L"\" \"" + report_ + L"\"" +
           arguments;
  }

  // Waits until the child has told what it was started with. The one that renames the file may
  // still hold it for an instant after its name has appeared.
  std::string Report() const {
    std::string report;
    EXPECT_TRUE(BecomesTrue([&] { return !(report = ReadBytes(report_)).empty(); })) << "no report";
    return report;
  }

  TemporaryFolder folder_;
  const std::wstring report_ = folder_.File(L"report");
};

TEST_F(RunCommandTest, TheArgumentsArrive) {
  const std::wstring command = Probe(L" one \"two words\" a\\b --three=\"\"");
  ASSERT_TRUE(RunCommand(command));
  const std::string report = Report();
  EXPECT_THAT(report, HasSubstr("command=" + Utf8(command) + "\n"));
  EXPECT_THAT(report, HasSubstr("\nargument=one\nargument=two words\nargument=a\\b\n"
                                "argument=--three=\n"));
}

TEST_F(RunCommandTest, ChineseArrivesUnderAnyCodePage) {
  const std::wstring command = Probe(L" \"播放 音樂\" \xD55C\x2603\xD83C\xDFB5");
  ASSERT_TRUE(RunCommand(command));
  const std::string report = Report();
  EXPECT_THAT(report, HasSubstr("command=" + Utf8(command) + "\n"));
  EXPECT_THAT(report, HasSubstr("\nargument=" + Utf8(L"播放 音樂") + "\n"));
  EXPECT_THAT(report, HasSubstr("\nargument=" + Utf8(L"\xD55C\x2603\xD83C\xDFB5") + "\n"));
}

TEST_F(RunCommandTest, TheExtensionAndThePathMayBeLeftOut) {
  // Beside the calling program is one of the places where the platform looks.
  ASSERT_TRUE(RunCommand(L"CommandProbe \"" + report_ + L"\""));
  EXPECT_THAT(Report(), HasSubstr("command=CommandProbe \""));
}

TEST_F(RunCommandTest, TheChildStartsVisiblyInTheFolderOfTheCaller) {
  wchar_t folder[MAX_PATH] = {};
  GetCurrentDirectoryW(MAX_PATH, folder);
  ASSERT_TRUE(RunCommand(Probe()));
  const std::string report = Report();
  EXPECT_THAT(report, HasSubstr("\nfolder=" + Utf8(folder) + "\n"));
  EXPECT_THAT(report, HasSubstr("\nshow=5\nflags=257\n"));
}

TEST_F(RunCommandTest, TheOutputsAreOnePipe) {
  ASSERT_TRUE(RunCommand(Probe()));
  EXPECT_THAT(Report(), HasSubstr("\noutput=pipe\nerror=pipe\n"));
}

TEST_F(RunCommandTest, TheInputIsThereAndEmpty) {
  ASSERT_TRUE(RunCommand(Probe(L" read")));
  const std::string report = Report();
  EXPECT_THAT(report, HasSubstr("\ninput=device\n"));
  EXPECT_THAT(report, HasSubstr("\nread=end\n"));
}

TEST_F(RunCommandTest, AChildThatWritesMuchIsRefusedAndGoesOn) {
  // Were an end of the pipe still open for reading, the child would wait for ever once the pipe is
  // full.
  ASSERT_TRUE(RunCommand(Probe(L" write=1000000")));
  const std::string report = Report();
  EXPECT_THAT(report, HasSubstr("\nargument=write=1000000\n"));
  EXPECT_THAT(report, testing::AnyOf(HasSubstr("\nwrite=refused 109\n"),    // ERROR_BROKEN_PIPE
                                     HasSubstr("\nwrite=refused 232\n")));  // ERROR_NO_DATA
}

TEST_F(RunCommandTest, ReturnsWhileTheChildStillRuns) {
  const std::wstring name = L"run-command-" + std::to_wstring(GetCurrentProcessId());
  const UniqueKernelHandle event(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
  ASSERT_TRUE(RunCommand(Probe(L" wait=" + name)));
  EXPECT_FALSE(std::filesystem::exists(report_)) << "the child was waited for";
  SetEvent(event.Get());
  EXPECT_THAT(Report(), HasSubstr("\nwaited=yes\n"));
}

TEST_F(RunCommandTest, ADocumentIsNotOpened) {
  const std::wstring document = folder_.File(L"document.txt");
  WriteBytes(document, "text");
  EXPECT_FALSE(RunCommand(document));
  EXPECT_FALSE(RunCommand(L"\"" + document + L"\""));
  EXPECT_FALSE(RunCommand(folder_.Path())) << "nor a folder";
}

TEST_F(RunCommandTest, AMissingProgramIsNotStarted) {
  EXPECT_FALSE(RunCommand(L"no-such-program-anywhere"));
  EXPECT_FALSE(RunCommand(folder_.File(L"none.exe") + L" argument"));
  EXPECT_FALSE(RunCommand(L""));
  EXPECT_FALSE(RunCommand(L"   "));
}

TEST_F(RunCommandTest, NothingIsStartedWhereThePipeTakesTheSettings) {
  const DWORD before = StartedProcesses();
  EXPECT_FALSE(RunCommand(Probe(), [](HANDLE) { return false; }));
  EXPECT_EQ(StartedProcesses(), before);
  EXPECT_TRUE(
      RunCommand(Probe(), [](HANDLE readEnd) { return GetFileType(readEnd) == FILE_TYPE_PIPE; }));
  EXPECT_EQ(StartedProcesses(), before + 1);
  Report();
}

TEST_F(RunCommandTest, ThePlatformsOwnTestHoldsForAPipe) {
  UniqueKernelHandle readEnd;
  UniqueKernelHandle writeEnd;
  ASSERT_TRUE(CreatePipe(readEnd.Receive(), writeEnd.Receive(), nullptr, 0));
  EXPECT_TRUE(PipeRefusesCollection(readEnd.Get()));
}

TEST_F(RunCommandTest, NoHandleIsLeftOpenOnAnyPath) {
  const struct {
    const char* path;
    std::wstring command;
    bool pipeTest;
    bool expected;
  } rows[] = {
      {"started", L"CommandProbe", true, true},
      {"missing", L"no-such-program-anywhere", true, false},
      {"pipe test", L"CommandProbe", false, false},
  };
  for (const auto& row : rows) {
    const PipeTest test = row.pipeTest ? PipeRefusesCollection : [](HANDLE) { return false; };
    RunCommand(row.command, test);  // the first call may fill caches
    const auto callAgainAndAgain = [&] {
      const std::ptrdiff_t before = KernelHandleCount();
      EXPECT_GT(before, 0);
      int asExpected = 0;
      for (int i = 0; i < kCallsForALeak; ++i) {
        if (RunCommand(row.command, test) == row.expected) ++asExpected;
      }
      return asExpected == kCallsForALeak && KernelHandleCount() == before;
    };
    bool isClean = false;
    for (int round = 0; !isClean && round < kLeakingRounds; ++round) isClean = callAgainAndAgain();
    EXPECT_TRUE(isClean) << row.path;
  }
}

TEST_F(RunCommandTest, TheHandleCountSeesALeak) {
  const std::ptrdiff_t before = KernelHandleCount();
  const UniqueKernelHandle one(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  EXPECT_EQ(KernelHandleCount(), before + 1);
}

}  // namespace
}  // namespace tellurvane

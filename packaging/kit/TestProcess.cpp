#include "packaging/kit/TestProcess.h"

#include <windows.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <utility>

#include "ui/Handle.h"

namespace tellurvane {
namespace {

using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

std::string BytesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

UniqueKernelHandle InheritedFile(const fs::path& path, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inherited = {sizeof(inherited), nullptr, TRUE};
  return OwnedFile(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                               disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// Ends its processes when it is closed.
UniqueKernelHandle EndingJob() {
  UniqueKernelHandle job(CreateJobObjectW(nullptr, nullptr));
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof(limits));
  return job;
}

// Without a process and with the last error if it cannot be started. It waits until its thread is
// resumed.
PROCESS_INFORMATION StartWaiting(std::wstring command, const fs::path& folder, HANDLE output) {
  // Temporary files of a program that is ended stay in this folder.
  SetEnvironmentVariableW(L"TEMP", folder.c_str());
  SetEnvironmentVariableW(L"TMP", folder.c_str());
  const UniqueKernelHandle input = InheritedFile(L"NUL", GENERIC_READ, OPEN_EXISTING);
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input.Get();
  startup.hStdOutput = output;
  startup.hStdError = output;
  PROCESS_INFORMATION started = {};
  if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr,
                     folder.c_str(), &startup, &started)) {
    // The tests bring their windows to the front.
    AllowSetForegroundWindow(started.dwProcessId);
  }
  return started;
}

std::string EndCode(DWORD code) {
  // All that GoogleTest gives by itself.
  if (code <= 1) return "";
  std::array<char, 40> text = {};
  (void)std::snprintf(text.data(), text.size(), "結束代碼 0x%08lX", code);
  return text.data();
}

// False if the process printed nothing for longer than the limit.
bool EndsByItself(HANDLE process, HANDLE output, std::chrono::seconds limit) {
  constexpr DWORD kMillisecondsBetweenLooks = 100;
  LONGLONG heard = 0;
  Clock::time_point lastHeard = Clock::now();
  while (WaitForSingleObject(process, kMillisecondsBetweenLooks) != WAIT_OBJECT_0) {
    LARGE_INTEGER size = {};
    GetFileSizeEx(output, &size);
    if (std::exchange(heard, size.QuadPart) != size.QuadPart) lastHeard = Clock::now();
    if (Clock::now() - lastHeard > limit) return false;
  }
  return true;
}

// Returns the fault, if there is one.
std::string RunToItsEnd(const std::wstring& command, const fs::path& folder,
                        std::chrono::seconds limit) {
  const UniqueKernelHandle job = EndingJob();
  const UniqueKernelHandle output =
      InheritedFile(folder / L"output.txt", GENERIC_WRITE, CREATE_ALWAYS);
  const PROCESS_INFORMATION started = StartWaiting(command, folder, output.Get());
  const DWORD error = GetLastError();
  const UniqueKernelHandle process(started.hProcess);
  const UniqueKernelHandle thread(started.hThread);
  if (!process) return "無法啟動（錯誤 " + std::to_string(error) + "）";
  AssignProcessToJobObject(job.Get(), process.Get());
  ResumeThread(thread.Get());
  const bool hasEnded = EndsByItself(process.Get(), output.Get(), limit);
  DWORD code = 0;
  GetExitCodeProcess(process.Get(), &code);
  TerminateJobObject(job.Get(), 1);
  WaitForSingleObject(process.Get(), INFINITE);
  return hasEnded ? EndCode(code) : std::to_string(limit.count()) + " 秒沒有輸出";
}

}  // namespace

ProgramRun RunTestProcess(const fs::path& program, const std::string& filter,
                          const fs::path& folder, std::chrono::seconds limit) {
  fs::create_directories(folder);
  // Relative, because GoogleTest reads its options in the code page of the user.
  const std::wstring command = L"\"" + program.wstring() +
                               L"\" --gtest_color=no --gtest_output=xml:results.xml "
                               L"\"--gtest_filter=" +
                               std::wstring(filter.begin(), filter.end()) + L"\"";
  const Clock::time_point start = Clock::now();
  ProgramRun run;
  run.fault = RunToItsEnd(command, folder, limit);
  run.seconds = std::chrono::duration<double>(Clock::now() - start).count();
  run.xml = BytesOf(folder / L"results.xml");
  run.output = BytesOf(folder / L"output.txt");
  std::error_code ignored;
  fs::remove_all(folder, ignored);
  return run;
}

}  // namespace tellurvane

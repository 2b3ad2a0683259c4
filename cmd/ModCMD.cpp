#include "cmd/ModCMD.h"

#include "ui/Handle.h"

namespace tellurvane {
namespace {

// Wine takes both settings for any pipe and ignores them, where Windows refuses them.
bool IsWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

}  // namespace

bool PipeRefusesCollection(HANDLE readEnd) {
  DWORD mode = PIPE_NOWAIT;
  DWORD collectionCount = 0;
  DWORD collectDataTimeout = 0;
  const BOOL accepted =
      SetNamedPipeHandleState(readEnd, &mode, &collectionCount, &collectDataTimeout);
  return !accepted || IsWine();
}

bool RunCommand(const std::wstring& commandLine, PipeTest pipeTest) {
  std::wstring command = commandLine;  // CreateProcessW writes into its argument

  SECURITY_ATTRIBUTES inheritable = {};
  inheritable.nLength = sizeof(inheritable);
  inheritable.bInheritHandle = TRUE;

  UniqueKernelHandle readEnd;
  UniqueKernelHandle writeEnd;
  if (!CreatePipe(readEnd.Receive(), writeEnd.Receive(), &inheritable, 0)) return false;
  // A child that inherited this end too would wait for ever as soon as it had filled the pipe:
  // the pipe breaks only once nobody can read it.
  if (!SetHandleInformation(readEnd.Get(), HANDLE_FLAG_INHERIT, 0)) return false;

  // Deliberately this way round: a pipe that takes the settings is not the one that we expect.
  if (!pipeTest(readEnd.Get())) return false;

  // Empty input: programs such as xcopy quit at once when their standard input is no handle at all.
  // Should it not open, the program is started without one: most never read it.
  const UniqueKernelHandle emptyInput =
      OwnedFile(CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                            OPEN_EXISTING, 0, nullptr));

  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
  startup.wShowWindow = SW_SHOW;
  startup.hStdInput = emptyInput.Get();
  startup.hStdOutput = writeEnd.Get();
  startup.hStdError = writeEnd.Get();

  PROCESS_INFORMATION created = {};
  if (!CreateProcessW(nullptr, command.data(), &inheritable, &inheritable, TRUE, 0, nullptr,
                      nullptr, &startup, &created)) {
    return false;
  }
  const UniqueKernelHandle process(created.hProcess);
  const UniqueKernelHandle thread(created.hThread);
  return true;
}

}  // namespace tellurvane

#include "cmd/ModCMD.h"

#include "ui/Handle.h"

namespace tellurvane {
namespace {

// Windows rejects both settings; Wine accepts and ignores them.
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

bool RunCommand(const std::wstring& commandLine, PipeTest pipeTest, DWORD* creationError) {
  std::wstring command = commandLine;  // CreateProcessW writes into its argument

  SECURITY_ATTRIBUTES inheritable = {};
  inheritable.nLength = sizeof(inheritable);
  inheritable.bInheritHandle = TRUE;

  UniqueKernelHandle readEnd;
  UniqueKernelHandle writeEnd;
  if (!CreatePipe(readEnd.Receive(), writeEnd.Receive(), &inheritable, 0)) return false;
  // A child that inherits this end keeps its own pipe open, and blocks for ever once it is full.
  if (!SetHandleInformation(readEnd.Get(), HANDLE_FLAG_INHERIT, 0)) return false;

  // Deliberate: do not start where the pipe accepts the settings.
  if (!pipeTest(readEnd.Get())) return false;

  // Empty input: some programs, such as xcopy, quit if their standard input is no handle. If it
  // cannot be opened, the program starts without: most never read it.
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
    // Before the handles are closed, which may set another error.
    if (creationError != nullptr) *creationError = GetLastError();
    return false;
  }
  const UniqueKernelHandle process(created.hProcess);
  const UniqueKernelHandle thread(created.hThread);
  return true;
}

}  // namespace tellurvane

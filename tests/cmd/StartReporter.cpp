// A child process that reports how it was started:
//   StartReporter REPORT-FILE [read] [write=BYTES] [wait=EVENT-NAME] [any other argument]...
// The report is UTF-8, one fact a line. The file gets its name when it is complete.
#include <windows.h>

#include <cwchar>
#include <string>
#include <string_view>

#include "base/CodePage.h"
#include "ui/Handle.h"

namespace {

using tellurvane::Utf8;

std::string Kind(DWORD standardHandle) {
  const HANDLE handle = GetStdHandle(standardHandle);
  if (handle == nullptr || handle == INVALID_HANDLE_VALUE) return "none";
  switch (GetFileType(handle)) {
    case FILE_TYPE_PIPE:
      return "pipe";
    case FILE_TYPE_CHAR: {
      DWORD mode = 0;
      return GetConsoleMode(handle, &mode) ? "console" : "device";
    }
    case FILE_TYPE_DISK:
      return "file";
    default:
      return "unknown";
  }
}

std::string ReadInput() {
  char byte = 0;
  DWORD size = 0;
  if (!ReadFile(GetStdHandle(STD_INPUT_HANDLE), &byte, 1, &size, nullptr)) {
    return "failed " + std::to_string(GetLastError());
  }
  return size == 0 ? "end" : "data";
}

std::string WriteOutput(DWORD bytes) {
  const std::string block(4'096, '.');
  for (DWORD left = bytes; left > 0;) {
    DWORD written = 0;
    const DWORD size = left < block.size() ? left : static_cast<DWORD>(block.size());
    if (!WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), block.data(), size, &written, nullptr)) {
      return "failed " + std::to_string(GetLastError());
    }
    left -= written;
  }
  return "complete";
}

// When this process was created, in seconds since 1970, UTC.
std::string Created() {
  FILETIME created = {}, unused = {};
  GetProcessTimes(GetCurrentProcess(), &created, &unused, &unused, &unused);
  const ULARGE_INTEGER ticks = {{created.dwLowDateTime, created.dwHighDateTime}};
  constexpr double kTicksPerSecond = 1e7;
  constexpr double kSecondsTo1970 = 11'644'473'600;
  return std::to_string(static_cast<double>(ticks.QuadPart) / kTicksPerSecond - kSecondsTo1970);
}

std::string Report(int argumentCount, wchar_t** arguments) {
  STARTUPINFOW startup = {};
  GetStartupInfoW(&startup);
  wchar_t folder[MAX_PATH] = {};
  GetCurrentDirectoryW(MAX_PATH, folder);
  std::string report =
      "command=" + Utf8(GetCommandLineW()) + "\ncreated=" + Created() + "\nfolder=" + Utf8(folder) +
      "\nshow=" + std::to_string(startup.wShowWindow) +
      "\nflags=" + std::to_string(startup.dwFlags) + "\ninput=" + Kind(STD_INPUT_HANDLE) +
      "\noutput=" + Kind(STD_OUTPUT_HANDLE) + "\nerror=" + Kind(STD_ERROR_HANDLE) + "\n";
  for (int i = 2; i < argumentCount; ++i) {
    const std::wstring_view argument = arguments[i];
    report += "argument=" + Utf8(argument) + "\n";
    if (argument == L"read") {
      report += "read=" + ReadInput() + "\n";
    } else if (argument.starts_with(L"write=")) {
      report += "write=" + WriteOutput(std::wcstoul(arguments[i] + 6, nullptr, 10)) + "\n";
    } else if (argument.starts_with(L"wait=")) {
      const tellurvane::UniqueKernelHandle event(OpenEventW(SYNCHRONIZE, FALSE, arguments[i] + 5));
      const DWORD waited = WaitForSingleObject(event.Get(), 20'000);
      report += waited == WAIT_OBJECT_0 ? "waited=yes\n" : "waited=no\n";
    }
  }
  return report;
}

bool WriteFileTo(const std::wstring& path, const std::string& bytes) {
  const auto file = tellurvane::OwnedFile(
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  if (!file) return false;
  DWORD written = 0;
  return WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
         written == bytes.size();
}

}  // namespace

int wmain(int argumentCount, wchar_t** arguments) {
  if (argumentCount < 2) return 0;
  const std::string report = Report(argumentCount, arguments);
  const std::wstring path = arguments[1];
  const std::wstring unfinished = path + L".unfinished";
  if (!WriteFileTo(unfinished, report)) return 1;
  return MoveFileW(unfinished.c_str(), path.c_str()) ? 0 : 1;
}

// Appends a line to a file each time it is started, and shows no window:
//   RunLog FILE NAME
// The line is the name, a tab, and the local moment at which this process was created.
#include <windows.h>

#include <cstdio>
#include <string>

#include "ui/Handle.h"

namespace {

std::string Created() {
  FILETIME created = {}, unused = {}, local = {};
  SYSTEMTIME at = {};
  GetProcessTimes(GetCurrentProcess(), &created, &unused, &unused, &unused);
  FileTimeToLocalFileTime(&created, &local);
  FileTimeToSystemTime(&local, &at);
  char text[64] = {};
  std::snprintf(text, sizeof(text), "%04d-%02d-%02dT%02d:%02d:%02d.%03d", at.wYear, at.wMonth,
                at.wDay, at.wHour, at.wMinute, at.wSecond, at.wMilliseconds);
  return text;
}

// The names are ASCII.
std::string Narrow(const wchar_t* text) {
  std::string narrow;
  for (; *text != L'\0'; ++text) narrow += static_cast<char>(*text);
  return narrow;
}

}  // namespace

int wmain(int argumentCount, wchar_t** arguments) {
  if (argumentCount != 3) return 2;
  const std::string line = Narrow(arguments[2]) + "\t" + Created() + "\n";
  const auto file = tellurvane::OwnedFile(CreateFileW(arguments[1], FILE_APPEND_DATA,
                                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                                      OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return 1;
  DWORD written = 0;
  const auto size = static_cast<DWORD>(line.size());
  return WriteFile(file.Get(), line.data(), size, &written, nullptr) && written == size ? 0 : 1;
}

// What a running program holds of the system, as one JSON object:
//   CountResources PROGRAM.EXE
// GDI objects, windows with their children and those that only take messages, kernel handles. The
// calls that are made for it, GetGuiResources and GetProcessHandleCount, always answer 0 under
// Wine.
#include <windows.h>

#include <tlhelp32.h>
#include <winternl.h>

#include <cstdio>
#include <optional>
#include <vector>

#include "tests/support/KernelHandles.h"
#include "ui/Handle.h"

namespace {

// Of the x64 process environment block, and of the table of GDI handles to which it points.
constexpr size_t kGdiTableInPeb = 0xF8;
constexpr size_t kGdiEntries = 65'536;
constexpr size_t kGdiEntrySize = 24;
constexpr size_t kGdiTypeAt = 14;

// The program must run once.
DWORD ProcessOf(const wchar_t* name) {
  const tellurvane::UniqueKernelHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32W entry = {};
  entry.dwSize = sizeof(entry);
  DWORD found = 0;
  for (BOOL more = Process32FirstW(snapshot.Get(), &entry); more;
       more = Process32NextW(snapshot.Get(), &entry)) {
    if (lstrcmpiW(entry.szExeFile, name) != 0) continue;
    if (found != 0) return 0;
    found = entry.th32ProcessID;
  }
  return found;
}

bool ReadFrom(HANDLE process, const void* address, void* buffer, size_t size) {
  SIZE_T read = 0;
  return ReadProcessMemory(process, address, buffer, size, &read) && read == size;
}

std::optional<long> CountGdiObjects(DWORD id) {
  const tellurvane::UniqueKernelHandle process(
      OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, id));
  PROCESS_BASIC_INFORMATION facts = {};
  if (NtQueryInformationProcess(process.Get(), ProcessBasicInformation, &facts, sizeof(facts),
                                nullptr) != 0) {
    return std::nullopt;
  }
  const char* table = nullptr;
  std::vector<char> entries(kGdiEntries * kGdiEntrySize);
  const auto* const peb = reinterpret_cast<const char*>(facts.PebBaseAddress);
  if (!ReadFrom(process.Get(), peb + kGdiTableInPeb, &table, sizeof(table)) ||
      !ReadFrom(process.Get(), table, entries.data(), entries.size())) {
    return std::nullopt;
  }
  // Wine has such a table for each process, in which nobody else has entries.
  long count = 0;
  for (size_t at = kGdiTypeAt; at < entries.size(); at += kGdiEntrySize) {
    if (entries[at] != 0) ++count;
  }
  return count;
}

struct WindowCount {
  DWORD process = 0;
  long count = 0;
};

BOOL CALLBACK CountOne(HWND window, LPARAM counter) {
  auto& windows = *reinterpret_cast<WindowCount*>(counter);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process == windows.process) ++windows.count;
  return TRUE;
}

long CountWindows(DWORD process) {
  WindowCount windows{.process = process};
  EnumChildWindows(GetDesktopWindow(), CountOne, reinterpret_cast<LPARAM>(&windows));
  EnumChildWindows(HWND_MESSAGE, CountOne, reinterpret_cast<LPARAM>(&windows));
  return windows.count;
}

}  // namespace

int wmain(int argumentCount, wchar_t** arguments) {
  if (argumentCount != 2) return 2;
  const DWORD process = ProcessOf(arguments[1]);
  if (process == 0) return 1;
  const auto gdiObjects = CountGdiObjects(process);
  const auto kernelHandles = tellurvane::KernelHandleCount(process);
  if (!gdiObjects || kernelHandles < 0) return 1;
  std::printf("{\"gdi\": %ld, \"windows\": %ld, \"kernel\": %lld}\n", *gdiObjects,
              CountWindows(process), static_cast<long long>(kernelHandles));
  return 0;
}

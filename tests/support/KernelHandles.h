// Counts the kernel handles of a process. Under Wine GetProcessHandleCount always returns 0, but
// the system's table of all handles is right.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tellurvane {

// -1 if the table cannot be read.
inline std::ptrdiff_t KernelHandleCount(DWORD process = GetCurrentProcessId()) {
  struct Entry {
    void* object;
    ULONG_PTR process;
    ULONG_PTR handle;
    ULONG access;
    USHORT trace;
    USHORT type;
    ULONG attributes;
    ULONG reserved;
  };
  struct Table {
    ULONG_PTR count;
    ULONG_PTR reserved;
    Entry entries[1];
  };
  constexpr ULONG kExtendedHandleInformation = 64;
  using Query = LONG(WINAPI*)(ULONG kind, void* buffer, ULONG size, ULONG* needed);
  static const auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));

  std::vector<std::byte> buffer(1 << 16);
  ULONG needed = 0;
  while (query(kExtendedHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size()),
               &needed) != 0) {
    if (buffer.size() > (1U << 28)) return -1;
    buffer.resize(buffer.size() * 2);
  }
  const auto* const table = reinterpret_cast<const Table*>(buffer.data());
  return std::count_if(table->entries, table->entries + table->count,
                       [process](const Entry& entry) { return entry.process == process; });
}

}  // namespace tellurvane

#include "tests/fakeplayer/ProgramCalls.h"

#include <cstddef>
#include <cstring>
#include <utility>

namespace fakeplayer {
namespace {

ULONGLONG ahead = 0;  // milliseconds
std::function<void(bool)> onKeepAwake;

ULONGLONG WINAPI ProgramTickCount() { return GetTickCount64() + ahead; }

EXECUTION_STATE WINAPI ProgramExecutionState(EXECUTION_STATE state) {
  onKeepAwake((state & ES_SYSTEM_REQUIRED) != 0);
  return SetThreadExecutionState(state);
}

template <typename Type>
Type* At(std::size_t offset) {
  return reinterpret_cast<Type*>(reinterpret_cast<std::byte*>(GetModuleHandleW(nullptr)) + offset);
}

// Of the program's imports from one library.
void Replace(const IMAGE_IMPORT_DESCRIPTOR& library, const char* function, void* replacement) {
  const auto* name = At<ULONGLONG>(library.OriginalFirstThunk);
  auto** slot = At<void*>(library.FirstThunk);
  for (; *name != 0; ++name, ++slot) {
    if (IMAGE_SNAP_BY_ORDINAL64(*name)) continue;
    if (std::strcmp(At<IMAGE_IMPORT_BY_NAME>(*name)->Name, function) != 0) continue;
    DWORD before = 0;
    VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &before);
    *slot = replacement;
    VirtualProtect(slot, sizeof(*slot), before, &before);
  }
}

}  // namespace

void TakeProgramCalls(std::function<void(bool)> keepsAwake) {
  onKeepAwake = std::move(keepsAwake);
  const auto* const headers =
      At<IMAGE_NT_HEADERS>(static_cast<std::size_t>(At<IMAGE_DOS_HEADER>(0)->e_lfanew));
  const auto& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (const auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(imports.VirtualAddress);
       library->Name != 0; ++library) {
    Replace(*library, "GetTickCount64", reinterpret_cast<void*>(ProgramTickCount));
    Replace(*library, "SetThreadExecutionState", reinterpret_cast<void*>(ProgramExecutionState));
  }
}

void SetClockAhead(double seconds) { ahead = static_cast<ULONGLONG>(seconds * 1'000); }

double ProgramSeconds() { return static_cast<double>(ProgramTickCount()) / 1'000; }

}  // namespace fakeplayer

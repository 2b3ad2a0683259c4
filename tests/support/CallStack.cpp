#include "tests/support/CallStack.h"

#include <windows.h>

#include <array>
#include <cstdint>

namespace tellurvane {
namespace {

constexpr ULONG kDeepest = 500;

bool IsOwn(const void* address) {
  static const auto base = reinterpret_cast<std::uintptr_t>(GetModuleHandleW(nullptr));
  static const std::uintptr_t size = [] {
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(
        base + static_cast<std::uintptr_t>(dos->e_lfanew));
    return std::uintptr_t{headers->OptionalHeader.SizeOfImage};
  }();
  return reinterpret_cast<std::uintptr_t>(address) - base < size;
}

// The place in the system's code from which the program was entered last.
const void* NearestSystemCode() {
  std::array<void*, kDeepest> frames = {};
  const USHORT count = RtlCaptureStackBackTrace(0, kDeepest, frames.data(), nullptr);
  for (USHORT i = 0; i < count; ++i) {
    if (!IsOwn(frames[i])) return frames[i];
  }
  return nullptr;
}

}  // namespace

bool IsInCallback() {
  // What has called the program's entry routine.
  static const void* const start = NearestSystemCode();
  return NearestSystemCode() != start;
}

}  // namespace tellurvane

// What the compiler's stack protector calls. The compiler's own library would load a cryptographic
// provider at each start, and until the entry routine runs many libraries are looked for in the
// program's folder first.
#include <windows.h>

#include <initializer_list>

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the compiler's names
extern "C" {

// The value that a function puts between its arrays and its return address.
void* __stack_chk_guard = nullptr;

// The array was overrun: nothing of this process can be trusted, so Windows ends it at once.
[[noreturn]] void __stack_chk_fail() {
  asm volatile("int $0x29" ::"c"(FAST_FAIL_STACK_COOKIE_CHECK_FAILURE));
  __builtin_unreachable();
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

namespace {

// Before all other static objects, and itself without a guard: no protected function may see the
// value change. Of what differs from start to start: times, numbers, and the places in memory.
[[gnu::constructor(101), gnu::no_stack_protector]] void ChooseStackGuard() {
  constexpr UINT_PTR kOddMultiplier = 0x9E3779B97F4A7C15;
  // Stops an overrun by a text function.
  constexpr UINT_PTR kZeroByte = 0xFF;
  LARGE_INTEGER counter = {};
  QueryPerformanceCounter(&counter);
  FILETIME now = {};
  GetSystemTimeAsFileTime(&now);
  UINT_PTR value = 0;
  for (const UINT_PTR part :
       {static_cast<UINT_PTR>(counter.QuadPart), UINT_PTR{now.dwLowDateTime},
        UINT_PTR{GetCurrentProcessId()}, UINT_PTR{GetCurrentThreadId()},
        reinterpret_cast<UINT_PTR>(&counter), reinterpret_cast<UINT_PTR>(&__stack_chk_guard)}) {
    value = (value ^ part ^ value >> 32) * kOddMultiplier;
  }
  __stack_chk_guard = reinterpret_cast<void*>(value & ~kZeroByte);
}

}  // namespace

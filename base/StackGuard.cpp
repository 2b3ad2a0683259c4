// What the compiler's stack protector calls. The compiler's own library would load a cryptographic
// provider at each start, which takes longer than all else before the first window.
#include <windows.h>

#include <ntsecapi.h>

extern "C" {

// The value that a function puts between its arrays and its return address. The zero byte stops an
// overflow by a text function.
void* __stack_chk_guard = reinterpret_cast<void*>(0xFF0A0D00);

// The array was overrun: nothing of this process can be trusted, so Windows ends it at once.
[[noreturn]] void __stack_chk_fail() {
  asm volatile("int $0x29" ::"c"(FAST_FAIL_STACK_COOKIE_CHECK_FAILURE));
  __builtin_unreachable();
}

}  // extern "C"

namespace {

// Protected functions run only before or after this one, so that none sees the value change.
[[gnu::constructor]] void ChooseStackGuard() {
  ULONG_PTR value = 0;
  if (!RtlGenRandom(&value, sizeof(value))) return;
  constexpr ULONG_PTR kZeroByte = 0xFF;
  __stack_chk_guard = reinterpret_cast<void*>(value & ~kZeroByte);
}

}  // namespace

// The stack protector's own parts, which every program of this project has.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstring>

extern "C" void* __stack_chk_guard;

namespace tellurvane {
namespace {

constexpr size_t kArraySize = 16;

// As for any length, or the compiler would see the overrun.
[[gnu::noipa]] int Overrun(size_t length) {
  char array[kArraySize];
  std::memset(array, 'x', length);
  volatile char* seen = array;
  return seen[0];
}

TEST(StackGuardTest, IsChosenAtTheStartAndHasAZeroByte) {
  const auto value = reinterpret_cast<ULONG_PTR>(__stack_chk_guard);
  EXPECT_EQ(value & 0xFF, 0);
  EXPECT_NE(value, 0);
}

TEST(StackGuardDeathTest, EndsAProcessWhoseArrayWasOverrun) {
  EXPECT_EQ(Overrun(kArraySize), 'x');
  const auto wasEnded = [](int code) {
    return static_cast<DWORD>(code) == STATUS_STACK_BUFFER_OVERRUN;
  };
  EXPECT_EXIT(Overrun(kArraySize + 16), wasEnded, "");
}

}  // namespace
}  // namespace tellurvane

// The stack protector's own parts, which every program of this project has.
#include <windows.h>

#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>

extern "C" void* __stack_chk_guard;

namespace tellurvane {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr size_t kArraySize = 16;

// As for any length, or the compiler would see the overrun.
[[gnu::noipa]] int Overrun(size_t length) {
  char array[kArraySize];
  std::memset(array, 'x', length);
  volatile char* seen = array;
  return seen[0];
}

TEST(StackGuardTest, HasAZeroByte) {
  EXPECT_EQ(reinterpret_cast<ULONG_PTR>(__stack_chk_guard) & 0xFF, 0);
}

TEST(StackGuardDeathTest, HasAnotherValueInEachProcess) {
  std::array<char, 40> own = {};
  std::snprintf(own.data(), own.size(), "guard %p", __stack_chk_guard);
  EXPECT_EXIT((std::fprintf(stderr, "guard %p", __stack_chk_guard), std::_Exit(0)),
              testing::ExitedWithCode(0), AllOf(HasSubstr("guard "), Not(HasSubstr(own.data()))));
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

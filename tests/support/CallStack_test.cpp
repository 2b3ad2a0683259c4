#include "tests/support/CallStack.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "tests/support/ActingForm.h"
#include "tests/support/FailingAllocation.h"

namespace tellurvane {
namespace {

TEST(CallStackTest, KnowsACallbackFromTheProgramsOwnDoing) {
  ASSERT_FALSE(IsInCallback());
  bool insideProcedure = false;
  ActingForm form;
  form.ActLater([&] { insideProcedure = IsInCallback(); });
  Pump();
  EXPECT_TRUE(insideProcedure);

  bool insideEnumeration = false;
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND, LPARAM inside) -> BOOL {
        *reinterpret_cast<bool*>(inside) = IsInCallback();
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&insideEnumeration));
  EXPECT_TRUE(insideEnumeration);
  EXPECT_FALSE(IsInCallback());
}

// Not by a new expression, which the compiler may leave out.
void Allocate() { ::operator delete(::operator new(1)); }

TEST(FailingAllocationTest, TheNamedOnesFailAndTheOthersAreGranted) {
  {
    const FailingAllocation memory(1, 1);
    Allocate();
    EXPECT_THROW(Allocate(), std::bad_alloc);
    Allocate();
  }
  EXPECT_TRUE(FailingAllocation::Happened());
  {
    const FailingAllocation memory(0, 1, [] { return false; });
    Allocate();
  }
  EXPECT_FALSE(FailingAllocation::Happened());
  EXPECT_EQ(FailingAllocation::Asked(), 0);
}

}  // namespace
}  // namespace tellurvane

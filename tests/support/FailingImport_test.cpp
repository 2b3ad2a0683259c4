#include "tests/support/FailingImport.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <shellapi.h>

#include <climits>

#include "ui/Handle.h"

namespace tellurvane {
namespace {

// Not inlined: otherwise the compiler would keep the table entry in a register.
[[gnu::noipa]] bool CanMakeBrush() { return static_cast<bool>(UniqueBrush(CreateSolidBrush(0))); }
[[gnu::noipa]] const void* BrushFunction() {
  return reinterpret_cast<const void*>(CreateSolidBrush);
}

TEST(FailingImportTest, TheNamedCallsFailAndTheOthersGoThrough) {
  FailingImport brushes({"CreateSolidBrush", 0, ERROR_DISK_FULL});
  ASSERT_TRUE(brushes.IsImported());
  brushes.Fail(2, 3);
  EXPECT_TRUE(CanMakeBrush());
  SetLastError(ERROR_SUCCESS);
  EXPECT_FALSE(CanMakeBrush());
  EXPECT_EQ(GetLastError(), DWORD{ERROR_DISK_FULL});
  EXPECT_FALSE(CanMakeBrush());
  EXPECT_TRUE(CanMakeBrush());
  EXPECT_EQ(brushes.Calls(), 4);
  brushes.Fail(1);
  EXPECT_FALSE(CanMakeBrush());
  brushes.LetAllThrough();
  EXPECT_TRUE(CanMakeBrush());
  EXPECT_EQ(brushes.Calls(), 1);
}

TEST(FailingImportTest, NothingFailsAfterItsEnd) {
  const void* const before = BrushFunction();
  {
    FailingImport brushes({"CreateSolidBrush"});
    brushes.Fail(1, INT_MAX);
    EXPECT_FALSE(CanMakeBrush());
    EXPECT_NE(BrushFunction(), before);
  }
  EXPECT_TRUE(CanMakeBrush());
  EXPECT_EQ(BrushFunction(), before);
}

// The first call of such a function puts the address of the function itself into the table.
TEST(FailingImportTest, ReachesDelayLoadedFunctions) {
  NOTIFYICONDATAW none = {};
  FailingImport icons({"Shell_NotifyIconW", TRUE});
  ASSERT_TRUE(icons.IsImported());
  for (int i = 0; i < 2; ++i) {
    icons.LetAllThrough();
    EXPECT_FALSE(Shell_NotifyIconW(NIM_DELETE, &none));
    EXPECT_EQ(icons.Calls(), 1);
    icons.Fail(1);
    EXPECT_TRUE(Shell_NotifyIconW(NIM_DELETE, &none)) << "the answer that stands for the failure";
  }
}

}  // namespace
}  // namespace tellurvane

// What the toolkit finds out once and keeps: where the platform refuses at the first time, it is
// asked again.
#include <windows.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>

#include "tests/support/FailingImport.h"
#include "tests/support/FreshProcess.h"
#include "tests/support/GdiPlusSession.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/Density.h"
#include "ui/Handle.h"
#include "ui/MemoryContext.h"
#include "ui/ModTheme.h"
#include "ui/ToolkitFont.h"
#include "ui/clsNotifyIcon.h"

namespace tellurvane {
namespace {

constexpr std::uint64_t kGdiPlusOutOfMemory = 3;

int Density() {
  const WindowDc screen(nullptr);
  return GetDeviceCaps(screen.Get(), LOGPIXELSX);
}

LONG HeightOf(HFONT font) {
  LOGFONTW record = {};
  GetObjectW(font, sizeof(record), &record);
  return record.lfHeight;
}

void ExpectTheUsualDensityWhileItFails(FailingImport& call) {
  call.Fail(1, INT_MAX);
  EXPECT_EQ(DotsPerInch(), 96);
  EXPECT_EQ(PixelsFromTwips(1'500), 100);
  EXPECT_EQ(Scaled(100), 100);

  call.LetAllThrough();
  EXPECT_EQ(DotsPerInch(), Density());
  const int calls = call.Calls();
  EXPECT_GT(calls, 1) << "it did not ask again";
  EXPECT_EQ(DotsPerInch(), Density());
  EXPECT_EQ(call.Calls(), calls + 1) << "only this test asked once more";
}

TEST(FirstCallsTest, WithoutAScreenTheDensityIs96) {
  if (!InFreshProcess()) return;
  FailingImport contexts({"GetDC"});
  ExpectTheUsualDensityWhileItFails(contexts);
}

TEST(FirstCallsTest, WithoutADensityOfTheScreenItIs96) {
  if (!InFreshProcess()) return;
  FailingImport densities({"GetDeviceCaps"});
  ExpectTheUsualDensityWhileItFails(densities);
}

TEST(FirstCallsTest, AFontThatWasRefusedIsMadeLater) {
  if (!InFreshProcess()) return;
  FailingImport fonts({"CreateFontIndirectW"});
  fonts.Fail(1, INT_MAX);
  EXPECT_EQ(ToolkitFont(), nullptr);
  fonts.LetAllThrough();
  EXPECT_NE(ToolkitFont(), nullptr);
  EXPECT_EQ(ToolkitFont(), ToolkitFont());
}

TEST(FirstCallsTest, IconsThatWereRefusedAreLoadedLater) {
  if (!InFreshProcess()) return;
  FailingImport icons({"LoadImageW"});
  icons.Fail(1, INT_MAX);
  EXPECT_EQ(ExecutableIcons().big, nullptr);
  EXPECT_EQ(ExecutableIcons().small, nullptr);
  icons.LetAllThrough();
  EXPECT_NE(ExecutableIcons().big, nullptr);
  EXPECT_NE(ExecutableIcons().small, nullptr);
  EXPECT_EQ(ExecutableIcons().big, ExecutableIcons().big);
}

TEST(FirstCallsTest, WithoutAScreenTheFontHasTheHeightOfMostScreens) {
  if (!InFreshProcess()) return;
  FailingImport contexts({"GetDC"});
  contexts.Fail(1, INT_MAX);
  EXPECT_EQ(HeightOf(ToolkitFont()), -12);
}

TEST(FirstCallsTest, AFaceThatCouldNotBeLookedUpIsLookedUpAgain) {
  if (!InFreshProcess()) return;
  const GdiPlusSession gdiPlus;
  FailingImport families({"GdipCreateFontFamilyFromName", kGdiPlusOutOfMemory});
  const std::wstring installed = ModTheme::AvailableFace(L"Never Seen Before");
  for (const int last : {1, 2, INT_MAX}) {
    families.Fail(1, last);
    (void)ModTheme::AvailableFace(installed);
    EXPECT_GE(families.Calls(), 2) << "another face was not looked for";
  }
  EXPECT_NE(ModTheme::AvailableFace(installed), installed);
  families.LetAllThrough();
  EXPECT_EQ(ModTheme::AvailableFace(installed), installed);
  EXPECT_EQ(families.Calls(), 1);
}

// Neither a face nor one in its place.
TEST(FirstCallsTest, WithoutAnyFaceNothingIsDrawnUntilThereIsOne) {
  if (!InFreshProcess()) return;
  const GdiPlusSession gdiPlus;
  const auto picture = MemoryContext::Create(100, 40);
  FailingImport families({"GdipCreateFontFamilyFromName", kGdiPlusOutOfMemory});
  FailingImport generic({"GdipGetGenericFontFamilySansSerif", kGdiPlusOutOfMemory});
  families.Fail(1, INT_MAX);
  generic.Fail(1, INT_MAX);
  EXPECT_EQ(ModTheme::AvailableFace(L"Never Seen Before"), L"");
  EXPECT_GT(generic.Calls(), 0);
  EXPECT_EQ(ModTheme::Text(picture->Dc(), L"喝水", 2, 2, {}, {}), 0);
  families.LetAllThrough();
  generic.LetAllThrough();
  EXPECT_GT(ModTheme::Text(picture->Dc(), L"喝水", 2, 2, {}, {}), 0);
}

TEST(FirstCallsTest, AnIconWithoutTheTaskbarsMessageIsShownAllTheSame) {
  if (!InFreshProcess()) return;
  FailingImport messages({"RegisterWindowMessageW"});
  messages.Fail(1, INT_MAX);
  TestForm form;
  clsNotifyIcon icon;
  icon.IconInit(form);
  EXPECT_GT(messages.Calls(), 0);
  FailingImport shown({"Shell_NotifyIconW"});
  shown.LetAllThrough();
  icon.IconAdd();
  EXPECT_GT(shown.Calls(), 0);
  icon.IconDelete();
}

TEST(FirstCallsTest, AFaceIsLookedUpOnce) {
  if (!InFreshProcess()) return;
  const GdiPlusSession gdiPlus;
  FailingImport families({"GdipCreateFontFamilyFromName", kGdiPlusOutOfMemory});
  std::wstring first = L"Never Seen Before";
  for (int i = 0; i < 2; ++i) {
    const std::wstring face = first;
    families.LetAllThrough();
    first = ModTheme::AvailableFace(face);
    const int calls = families.Calls();
    EXPECT_GT(calls, 0);
    EXPECT_EQ(ModTheme::AvailableFace(face), first);
    EXPECT_EQ(families.Calls(), calls) << "it was kept";
  }
}

}  // namespace
}  // namespace tellurvane

#include "ui/clsPopupMenu.h"

#include <gtest/gtest.h>

#include <array>

#include "tests/support/MenuTestSupport.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {
namespace {

MENUITEMINFOW ItemOf(HMENU menu, UINT position) {
  MENUITEMINFOW info = {};
  info.cbSize = sizeof(info);
  info.fMask = MIIM_ID | MIIM_STATE | MIIM_FTYPE | MIIM_SUBMENU;
  EXPECT_TRUE(GetMenuItemInfoW(menu, position, TRUE, &info)) << position;
  return info;
}

std::wstring TextOf(HMENU menu, UINT position) {
  std::array<wchar_t, 100> text = {};
  GetMenuStringW(menu, position, text.data(), static_cast<int>(text.size()), MF_BYPOSITION);
  return text.data();
}

TEST(PopupMenuTest, AddsItemsWithTextFlagsAndIdentifier) {
  clsPopupMenu menu;
  menu.AddMenuItem(L"顯示主畫面", 0, 1);
  menu.AddMenuItem(L"隱藏小時鐘", MF_CHECKED, 2);
  menu.AddMenuItem(L"", MF_SEPARATOR, 0);
  menu.AddMenuItem(L"離開本軟體", 0, 3);
  ASSERT_EQ(GetMenuItemCount(menu.Handle()), 4);
  EXPECT_EQ(TextOf(menu.Handle(), 0), L"顯示主畫面");
  EXPECT_EQ(TextOf(menu.Handle(), 1), L"隱藏小時鐘");
  EXPECT_EQ(ItemOf(menu.Handle(), 0).wID, 1U);
  EXPECT_EQ(ItemOf(menu.Handle(), 3).wID, 3U);
  EXPECT_EQ(ItemOf(menu.Handle(), 0).fState, UINT{MFS_UNCHECKED});
  EXPECT_EQ(ItemOf(menu.Handle(), 1).fState, UINT{MFS_CHECKED});
  EXPECT_EQ(ItemOf(menu.Handle(), 2).fType, UINT{MFT_SEPARATOR});
  EXPECT_EQ(GetMenuDefaultItem(menu.Handle(), TRUE, 0), static_cast<UINT>(-1));
  for (const UINT position : {0U, 3U}) {
    menu.SetMenuDefItem(position);
    EXPECT_EQ(GetMenuDefaultItem(menu.Handle(), TRUE, 0), position);
  }
}

TEST(PopupMenuTest, TheLatestSubmenuGetsTheItems) {
  clsPopupMenu menu;
  menu.CreateSubmenu(L"第一");
  menu.AddSubmenuItem(L"乙", 0, 21);
  menu.CreateSubmenu(L"第二");
  menu.AddSubmenuItem(L"丙", MF_CHECKED, 31);
  menu.AddSubmenuItem(L"丁", 0, 32);
  ASSERT_EQ(GetMenuItemCount(menu.Handle()), 2);
  EXPECT_EQ(TextOf(menu.Handle(), 1), L"第二");
  const HMENU first = GetSubMenu(menu.Handle(), 0);
  const HMENU second = GetSubMenu(menu.Handle(), 1);
  EXPECT_EQ(GetMenuItemCount(first), 1);
  EXPECT_EQ(ItemOf(first, 0).wID, 21U);
  ASSERT_EQ(GetMenuItemCount(second), 2);
  EXPECT_EQ(TextOf(second, 1), L"丁");
  EXPECT_EQ(ItemOf(second, 0).fState, UINT{MFS_CHECKED});
  menu.CheckRadioItem(0, 1, 1);
  EXPECT_EQ(ItemOf(second, 0).fState, UINT{MFS_UNCHECKED});
  EXPECT_EQ(ItemOf(second, 1).fState, UINT{MFS_CHECKED});
  EXPECT_NE(ItemOf(second, 1).fType & MFT_RADIOCHECK, 0U);
}

TEST(PopupMenuTest, DeletesTheMenuWithItsSubmenusAndCanBeginAgain) {
  clsPopupMenu menu;
  menu.CreateSubmenu(L"一");
  const HMENU menus[] = {menu.Handle(), GetSubMenu(menu.Handle(), 0)};
  for (const HMENU each : menus) EXPECT_TRUE(IsMenu(each));
  menu.DeleteMenu();
  for (const HMENU each : menus) EXPECT_FALSE(IsMenu(each));
  EXPECT_EQ(menu.Handle(), nullptr);
  menu.CreateMenu();
  const HMENU handle = menu.Handle();
  EXPECT_EQ(GetMenuItemCount(handle), 0);
  menu.CreateMenu();
  EXPECT_EQ(menu.Handle(), handle) << "there is a menu already";
  HMENU ended = nullptr;
  {
    const clsPopupMenu brief;
    ended = brief.Handle();
    EXPECT_TRUE(IsMenu(ended));
  }
  EXPECT_FALSE(IsMenu(ended));
}

TEST(PopupMenuTest, IsShownAtTheMouseAndReturnsTheChosenItem) {
  if (GetSystemMetrics(SM_MENUDROPALIGNMENT) != 0) GTEST_SKIP() << "menus drop to the left here";
  const TestForm form;
  clsPopupMenu menu;
  menu.AddMenuItem(L"第一項", 0, 101);
  menu.AddMenuItem(L"第二項", 0, 102);
  SetForegroundWindow(form.hwnd());
  SetCursorPos(60, 50);
  RECT place = {};
  UINT chosen = 0;
  InOpenMenu([&] { chosen = menu.TrackMenu(form.hwnd()); },
             [&] {
               GetWindowRect(FindWindowW(L"#32768", nullptr), &place);
               for (const WPARAM key : {VK_DOWN, VK_DOWN, VK_RETURN}) {
                 PostMessageW(form.hwnd(), WM_KEYDOWN, key, 0);
               }
             });
  SetCursorPos(700, 700);
  EXPECT_EQ(chosen, 102U);
  EXPECT_EQ(place.left, 60);
  EXPECT_EQ(place.top, 50);
}

TEST(PopupMenuTest, LeavesTheForegroundToAnotherWindowAndReturnsZeroWhenItIsDismissed) {
  const TestForm form;
  const TestForm other;
  SetForegroundWindow(other.hwnd());
  ASSERT_TRUE(PumpUntil([&] { return GetForegroundWindow() == other.hwnd(); }));
  clsPopupMenu menu;
  menu.AddMenuItem(L"第一項", 0, 101);
  HWND inFront = nullptr;
  UINT chosen = 1;
  InOpenMenu([&] { chosen = menu.TrackMenu(form.hwnd()); },
             [&] {
               inFront = GetForegroundWindow();
               EndMenu();
             });
  EXPECT_EQ(inFront, other.hwnd());
  EXPECT_EQ(chosen, 0U);
}

}  // namespace
}  // namespace tellurvane

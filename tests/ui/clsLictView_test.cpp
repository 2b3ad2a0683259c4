// The list's members, checked with the platform's own messages.
#include "ui/clsLictView.h"

#include <utility>

#include "ListTestSupport.h"
#include "tests/support/FormProbe.h"
#include "ui/Handle.h"
#include "ui/ToolkitFont.h"

namespace tellurvane {
namespace {

TEST_F(ListTest, IsANativeReportListInAStaticContainer) {
  EXPECT_EQ(ClassOf(list.hwnd()), L"SysListView32");
  EXPECT_EQ(ClassOf(Container()), L"Static");
  EXPECT_EQ(GetParent(Container()), host.hwnd());
  EXPECT_EQ(ClassOf(list.HeaderhWnd()), L"SysHeader32");
  const LONG_PTR style = GetWindowLongPtrW(list.hwnd(), GWL_STYLE);
  EXPECT_EQ(style & LVS_TYPEMASK, LVS_REPORT);
  EXPECT_NE(style & LVS_OWNERDATA, 0);
  EXPECT_NE(style & LVS_SHOWSELALWAYS, 0);
  EXPECT_NE(Send(LVM_GETEXTENDEDLISTVIEWSTYLE) & LVS_EX_DOUBLEBUFFER, 0);
  EXPECT_EQ(reinterpret_cast<HFONT>(Send(WM_GETFONT)), ToolkitFont());
  EXPECT_TRUE(Send(LVM_GETUNICODEFORMAT));
}

TEST_F(ListTest, FillsItsHostAndFollowsItsSize) {
  for (const SIZE& size : {SIZE{300, 200}, SIZE{150, 260}}) {
    host.Move(0, 0, static_cast<int>(size.cx), static_cast<int>(size.cy));
    for (const HWND window : {Container(), list.hwnd()}) {
      const RECT box = OnScreen(window);
      EXPECT_EQ(box.right - box.left, size.cx);
      EXPECT_EQ(box.bottom - box.top, size.cy);
    }
  }
}

TEST_F(ListTest, ColumnsHaveTitleWidthAndAlignment) {
  EXPECT_EQ(list.ColumnAdd(L"壓縮頻率", 60, ColumnAlignment::kRight), 2);
  EXPECT_EQ(list.ColumnsCount(), 3);
  wchar_t title[32] = {};
  LVCOLUMNW column = {};
  column.mask = LVCF_TEXT | LVCF_FMT | LVCF_WIDTH;
  column.pszText = title;
  column.cchTextMax = 32;
  Send(LVM_GETCOLUMNW, 2, reinterpret_cast<LPARAM>(&column));
  EXPECT_STREQ(title, L"壓縮頻率");
  EXPECT_EQ(column.fmt & LVCFMT_JUSTIFYMASK, LVCFMT_RIGHT);
  EXPECT_EQ(column.cx, 60);
  list.ColumnWidth(0, 99);
  EXPECT_EQ(list.ColumnWidth(0), 99);
  EXPECT_EQ(list.ColumnWidth(7), 0);
}

TEST_F(ListTest, LockedColumnKeepsItsWidthUnderTheMouse) {
  const auto drag = [&] {
    const HWND header = list.HeaderhWnd();
    RECT column = {};
    SendMessageW(header, HDM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&column));
    const int edge = static_cast<int>(column.right) - 1;
    SendMouse(header, WM_LBUTTONDOWN, edge, 8, MK_LBUTTON);
    SendMouse(header, WM_MOUSEMOVE, edge + 30, 8, MK_LBUTTON);
    SendMouse(header, WM_LBUTTONUP, edge + 30, 8);
    return list.ColumnWidth(0);
  };
  list.LockColumn(true);
  EXPECT_EQ(drag(), 120);
  NMHEADERW notification = {};
  notification.hdr.hwndFrom = list.HeaderhWnd();
  for (const UINT code : {HDN_BEGINTRACKA, HDN_DIVIDERDBLCLICKA, HDN_DIVIDERDBLCLICKW}) {
    notification.hdr.code = code;
    EXPECT_EQ(Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification)), TRUE) << code;
  }
  list.LockColumn(false);
  EXPECT_NE(drag(), 120);
}

TEST_F(ListTest, HoldsAsManyRowsAsTheOwnerSaysAndKeepsItsPosition) {
  EXPECT_EQ(list.ListCount(), 0);
  list.ListCount(1'000'000);
  EXPECT_EQ(Send(LVM_GETITEMCOUNT), 1'000'000);
  list.EnsureVisible(500);
  const int top = list.TopItem();
  list.ListCount(1'000);
  EXPECT_EQ(list.TopItem(), top);
  EXPECT_EQ(list.Add(), 1'000);
  EXPECT_EQ(list.TopItem(), top);
  list.Clear();
  EXPECT_EQ(list.ListCount(), 0);
}

TEST_F(ListTest, SelectsAtMostOneRow) {
  list.ListCount(100);
  const struct {
    int select;
    int selected;
  } cases[] = {{-1, -1}, {70, 70}, {3, 3}, {100, 3}, {-2, 3}, {1'000'000, 3}, {-1, -1}};
  for (const auto& [select, selected] : cases) {
    list.SetSelectList(select);
    EXPECT_EQ(list.Selected(), selected) << select;
    EXPECT_EQ(list.SelCount(), selected == -1 ? 0 : 1) << select;
    if (selected == -1) continue;
    EXPECT_TRUE(list.ItemVisible(selected)) << select;
    EXPECT_EQ(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED), selected) << select;
  }
}

TEST_F(ListTest, SelectionAndMarksMoveWithTheirRows) {
  list.ListCount(10);
  list.SetSelectList(4);
  for (const int row : {3, 7, 99}) list.Checked(row, true);
  EXPECT_FALSE(list.Checked(99));
  list.Remove(1);
  EXPECT_EQ(list.ListCount(), 9);
  EXPECT_EQ(list.Selected(), 3);
  EXPECT_TRUE(list.Checked(2) && list.Checked(6));
  EXPECT_FALSE(list.Checked(3) || list.Checked(7));
  list.Remove(3);
  EXPECT_EQ(list.Selected(), -1);
  for (const int row : {99, -1}) list.Remove(row);
  EXPECT_EQ(list.ListCount(), 8);
  list.Checked(2, false);
  EXPECT_FALSE(list.Checked(2));
  list.SetSelectList(7);
  for (const int count : {5, 8}) list.ListCount(count);
  EXPECT_EQ(list.Selected(), -1);
  EXPECT_FALSE(list.Checked(5));
  list.Checked(2, true);
  list.Clear();
  EXPECT_FALSE(list.Checked(2));
}

TEST_F(ListTest, TextsComeFromTheOwnerInAnyLength) {
  list.ListCount(3);
  EXPECT_EQ(list.text(2), L"列2欄0");
  EXPECT_EQ(list.text(1, 1), L"列1欄1");
  EXPECT_EQ(list.text(3), L"");
  EXPECT_EQ(list.text(-1), L"");
  const std::wstring address(5'000, L'長');
  list.OnData = [&](int, int, LVITEMW& cell) { list.GiveText(cell, address); };
  EXPECT_EQ(list.text(0), address);
  list.OnData = nullptr;
  EXPECT_EQ(list.text(0), L"");
}

TEST_F(ListTest, KeepsGivenTextsUntilTwoMoreAreAsked) {
  LVITEMW cells[3] = {};
  for (int i = 0; i < 3; ++i) list.GiveText(cells[i], L"text " + std::to_wstring(i));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(cells[i].pszText, L"text " + std::to_wstring(i));
}

TEST_F(ListTest, RowsHaveTheRequestedHeightWithAndWithoutRows) {
  for (const int height : {82, 40, 60}) {
    list.ListCount(0);
    list.Block(true);
    list.RowHeight(height);
    list.Block(false);
    EXPECT_EQ(list.GetItemHeight(), height);
    list.ListCount(20);
    EXPECT_EQ(list.GetItemHeight(), height);
    EXPECT_EQ(list.GetItemTop(1) - list.GetItemTop(0), height);
  }
}

// A screen reader would hear of a row that comes and goes.
TEST_F(ListTest, TheNumberOfRowsStaysWhileTheirHeightIsAsked) {
  list.RowHeight(40);
  list.ListCount(1);
  CaughtMessage counts(list.hwnd(), LVM_SETITEMCOUNT);
  EXPECT_EQ(list.GetItemHeight(), 40);
  EXPECT_TRUE(counts.Taken().empty());
}

TEST_F(ListTest, ReportsWhichRowsShow) {
  EXPECT_EQ(list.TopItem(), -1);
  EXPECT_EQ(list.BottomItem(), -1);
  const int header = list.Bottom();
  EXPECT_EQ(header, OnScreen(list.HeaderhWnd()).bottom - OnScreen(list.hwnd()).top);

  list.ListCount(2);
  EXPECT_EQ(list.BottomItem(), 1);
  EXPECT_EQ(list.Bottom(), header + 60);
  EXPECT_EQ(list.HitTest(60, list.GetItemTop(1) + 5), 1);
  EXPECT_EQ(list.HitTest(60, 195), -1);
  list.ListCount(100);
  host.Move(0, 0, 300, header + 75);
  EXPECT_EQ(list.ItemCountPage(), 2);
  EXPECT_EQ(list.TopItem(), 0);
  EXPECT_EQ(list.BottomItem(), 2) << "shows in part";
  const std::pair<int, bool> rows[] = {{-1, false}, {0, true}, {2, true}, {3, false}};
  for (const auto& [row, shows] : rows) EXPECT_EQ(list.ItemVisible(row), shows) << row;
  host.Move(0, 0, 300, header + 60);
  EXPECT_EQ(list.BottomItem(), 1) << "the next row begins at the lower edge";

  list.EnsureVisible(99);
  EXPECT_EQ(list.TopItem(), 98);
  EXPECT_EQ(list.BottomItem(), 99);
  EXPECT_EQ(list.GetItemTop(98), header);
  EXPECT_EQ(list.GetItemTop(0), header - 98 * 30);
  EXPECT_EQ(list.GetItemTop(100), 0);
}

TEST_F(ListTest, CanBeHidden) {
  for (const bool visible : {false, true}) {
    list.Visible(visible);
    EXPECT_EQ(list.Visible(), visible);
    EXPECT_EQ(IsWindowVisible(list.hwnd()) != 0, visible);
  }
}

TEST_F(ListTest, CountsTheImagesOfABitmap) {
  EXPECT_EQ(list.AddBitmap(nullptr, kWhite), -1);
  list.ImageList(16, 16);
  const UniqueBitmap twoImages(CreateBitmap(32, 16, 1, 32, nullptr));
  EXPECT_EQ(list.AddBitmap(twoImages.Get(), kWhite), 0);
  EXPECT_EQ(list.AddBitmap(twoImages.Get(), kWhite), 2);
}

TEST_F(ListTest, LeavesItsHostAndIsEmptyWithoutItsWindows) {
  PictureBox other;
  other.Create({.parent = form.hwnd(), .width = 100, .height = 100});
  { clsLictView().Create(other); }
  EXPECT_FALSE(other.Resize);
  EXPECT_EQ(GetWindow(other.hwnd(), GW_CHILD), nullptr);
  list.ListCount(5);
  form.Unload();
  EXPECT_EQ(list.hwnd(), nullptr);
  EXPECT_EQ(list.ListCount(), 0);
  EXPECT_EQ(list.Selected(), -1);
  EXPECT_EQ(list.text(0), L"");
  list.SetSelectList(2);
  list.RedrawVisibleItems();
}

}  // namespace
}  // namespace tellurvane

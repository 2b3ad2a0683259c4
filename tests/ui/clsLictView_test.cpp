// The list's members: state is read back with the platform's own messages.
#include "ui/clsLictView.h"

#include "ListTestSupport.h"
#include "ui/MemoryContext.h"
#include "ui/ToolkitFont.h"

namespace tellurvane {
namespace {

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  return name;
}

TEST_F(ListTest, IsANativeReportListInAStaticContainerInTheHost) {
  EXPECT_EQ(ClassOf(list().hwnd()), L"SysListView32");
  EXPECT_EQ(ClassOf(container()), L"Static");
  EXPECT_EQ(GetParent(container()), host.hwnd());
  const LONG_PTR style = GetWindowLongPtrW(list().hwnd(), GWL_STYLE);
  EXPECT_EQ(style & LVS_TYPEMASK, LVS_REPORT);
  EXPECT_NE(style & LVS_OWNERDATA, 0);
  EXPECT_NE(style & LVS_SHOWSELALWAYS, 0);
  EXPECT_NE(SendMessageW(list().hwnd(), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_DOUBLEBUFFER,
            0);
  EXPECT_EQ(reinterpret_cast<HFONT>(SendMessageW(list().hwnd(), WM_GETFONT, 0, 0)), ToolkitFont());
  EXPECT_TRUE(SendMessageW(list().hwnd(), LVM_GETUNICODEFORMAT, 0, 0));
}

TEST_F(ListTest, FillsTheHostAndFollowsItsSize) {
  const auto expectSize = [&](int width, int height) {
    for (const HWND window : {container(), list().hwnd()}) {
      RECT box = {};
      GetWindowRect(window, &box);
      EXPECT_EQ(box.right - box.left, width);
      EXPECT_EQ(box.bottom - box.top, height);
    }
  };
  expectSize(300, 200);
  host.Move(0, 0, 150, 260);
  expectSize(150, 260);
}

TEST_F(ListTest, ColumnsHaveTitleWidthAndAlignment) {
  EXPECT_EQ(list().ColumnAdd(L"壓縮頻率", 60, ColumnAlignment::kRight), 2);
  EXPECT_EQ(list().ColumnsCount(), 3);
  wchar_t title[32] = {};
  LVCOLUMNW column = {};
  column.mask = LVCF_TEXT | LVCF_FMT | LVCF_WIDTH;
  column.pszText = title;
  column.cchTextMax = 32;
  SendMessageW(list().hwnd(), LVM_GETCOLUMNW, 2, reinterpret_cast<LPARAM>(&column));
  EXPECT_STREQ(title, L"壓縮頻率");
  EXPECT_EQ(column.fmt & LVCFMT_JUSTIFYMASK, LVCFMT_RIGHT);
  EXPECT_EQ(column.cx, 60);
  EXPECT_EQ(list().ColumnWidth(0), 120);
  list().ColumnWidth(0, 99);
  EXPECT_EQ(SendMessageW(list().hwnd(), LVM_GETCOLUMNWIDTH, 0, 0), 99);
  EXPECT_EQ(list().ColumnWidth(7), 0);
  EXPECT_EQ(list().ColumnWidth(-1), 0);
  EXPECT_EQ(ClassOf(list().HeaderhWnd()), L"SysHeader32");
}

TEST_F(ListTest, HoldsAsManyRowsAsTheOwnerSays) {
  EXPECT_EQ(list().ListCount(), 0);
  list().ListCount(1'000'000);
  EXPECT_EQ(SendMessageW(list().hwnd(), LVM_GETITEMCOUNT, 0, 0), 1'000'000);
  list().ListCount(-3);
  EXPECT_EQ(list().ListCount(), 0);
  EXPECT_EQ(list().Add(), 0);
  EXPECT_EQ(list().Add(), 1);
  EXPECT_EQ(list().ListCount(), 2);
  list().Clear();
  EXPECT_EQ(list().ListCount(), 0);
}

TEST_F(ListTest, KeepsThePositionWhenTheCountIsSetAnew) {
  list().ListCount(1'000);
  list().EnsureVisible(500);
  const int top = list().TopItem();
  list().ListCount(1'001);
  EXPECT_EQ(list().TopItem(), top);
  list().Add();
  EXPECT_EQ(list().TopItem(), top);
}

TEST_F(ListTest, SelectsOneRow) {
  list().ListCount(100);
  EXPECT_EQ(list().Selected(), -1);
  EXPECT_EQ(list().SelCount(), 0);
  list().SetSelectList(70);
  EXPECT_EQ(list().Selected(), 70);
  EXPECT_TRUE(list().ItemVisible(70));
  EXPECT_EQ(SendMessageW(list().hwnd(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED),
            70);
  list().SetSelectList(3);
  EXPECT_EQ(list().Selected(), 3);
  EXPECT_EQ(list().SelCount(), 1);
  EXPECT_TRUE(list().ItemVisible(3));
}

TEST_F(ListTest, SelectingNothingAndRowsThatAreNotThere) {
  list().ListCount(10);
  list().SetSelectList(4);
  for (const int row : {10, -2, 1'000'000}) {
    list().SetSelectList(row);
    EXPECT_EQ(list().Selected(), 4) << row;
  }
  list().SetSelectList(-1);
  EXPECT_EQ(list().Selected(), -1);
  EXPECT_EQ(list().SelCount(), 0);
  list().SetSelectList(-1);
}

TEST_F(ListTest, SelectionGoesWithItsRow) {
  list().ListCount(10);
  list().SetSelectList(4);
  list().Remove(1);
  EXPECT_EQ(list().ListCount(), 9);
  EXPECT_EQ(list().Selected(), 3);
  list().Remove(3);
  EXPECT_EQ(list().Selected(), -1);
  list().Remove(99);
  list().Remove(-1);
  EXPECT_EQ(list().ListCount(), 8);
  list().SetSelectList(7);
  list().ListCount(5);
  EXPECT_EQ(list().Selected(), -1);
}

TEST_F(ListTest, TextsComeFromTheOwnerInAnyLength) {
  list().ListCount(3);
  EXPECT_EQ(list().text(2), L"列2欄0");
  EXPECT_EQ(list().text(1, 1), L"列1欄1");
  EXPECT_EQ(list().text(0, 9), L"列0欄9");  // beyond the shown columns
  EXPECT_EQ(list().text(3), L"");
  EXPECT_EQ(list().text(-1), L"");
  const std::wstring address(5'000, L'長');
  list().OnData = [&](int, int, LVITEMW& cell) { list().GiveText(cell, address); };
  EXPECT_EQ(list().text(0), address);
  list().OnData = nullptr;
  EXPECT_EQ(list().text(0), L"");
}

TEST_F(ListTest, NativeListGetsTheTextsToo) {
  list().ListCount(3);
  wchar_t text[32] = {};
  LVITEMW cell = {};
  cell.iSubItem = 1;
  cell.pszText = text;
  cell.cchTextMax = 32;
  SendMessageW(list().hwnd(), LVM_GETITEMTEXTW, 2, reinterpret_cast<LPARAM>(&cell));
  EXPECT_STREQ(cell.pszText, L"列2欄1");
}

TEST_F(ListTest, GivenTextsStayUntilTwoMoreAreAsked) {
  LVITEMW cells[3] = {};
  for (int i = 0; i < 3; ++i) list().GiveText(cells[i], L"text " + std::to_wstring(i));
  EXPECT_STREQ(cells[0].pszText, L"text 0");
  EXPECT_STREQ(cells[1].pszText, L"text 1");
  EXPECT_STREQ(cells[2].pszText, L"text 2");
}

TEST_F(ListTest, RowsHaveTheHeightAskedFor) {
  for (const int height : {82, 40, 60}) {
    list().RowHeight(height);
    EXPECT_EQ(list().GetItemHeight(), height);
    list().ListCount(20);
    EXPECT_EQ(list().GetItemHeight(), height);
    EXPECT_EQ(list().GetItemTop(1) - list().GetItemTop(0), height);
    list().Clear();
  }
  list().RowHeight(0);
  const int natural = list().GetItemHeight();
  EXPECT_GT(natural, 10);
  list().RowHeight(2);  // less than the text needs
  EXPECT_EQ(list().GetItemHeight(), natural);
}

TEST_F(ListTest, TellsWhichRowsShow) {
  EXPECT_EQ(list().TopItem(), -1);
  EXPECT_EQ(list().BottomItem(), -1);
  RECT header = {};
  GetClientRect(list().HeaderhWnd(), &header);
  EXPECT_EQ(list().Bottom(), header.bottom);

  list().RowHeight(50);
  list().ListCount(2);
  EXPECT_EQ(list().BottomItem(), 1);
  EXPECT_EQ(list().Bottom(), header.bottom + 100);
  list().ListCount(100);
  const int whole = (200 - static_cast<int>(header.bottom)) / 50;
  EXPECT_EQ(list().ItemCountPage(), whole);
  EXPECT_EQ(list().TopItem(), 0);
  EXPECT_EQ(list().BottomItem(), whole);  // the next one shows in part
  EXPECT_TRUE(list().ItemVisible(whole));
  EXPECT_FALSE(list().ItemVisible(whole + 1));
  EXPECT_FALSE(list().ItemVisible(-1));

  list().EnsureVisible(99);
  EXPECT_EQ(list().BottomItem(), 99);
  EXPECT_FALSE(list().ItemVisible(0));
  EXPECT_LE(list().Bottom(), 200);
  EXPECT_EQ(list().GetItemTop(list().TopItem()), header.bottom);
  EXPECT_LT(list().GetItemTop(0), 0);
  EXPECT_EQ(list().GetItemTop(100), 0);
}

TEST_F(ListTest, EnsureVisibleBringsARowThatShowsInPartIntoViewWhole) {
  list().RowHeight(50);
  list().ListCount(100);
  const int inPart = list().BottomItem();
  ASSERT_GT(list().GetItemTop(inPart) + 50, 200);
  list().EnsureVisible(inPart);
  EXPECT_LE(list().GetItemTop(inPart) + 50, 200);
}

TEST_F(ListTest, RowThatBeginsAtTheLowerEdgeDoesNotShow) {
  list().RowHeight(50);
  list().ListCount(100);
  host.Move(0, 0, 300, list().GetItemTop(0) + 100);
  EXPECT_EQ(list().BottomItem(), 1);
}

TEST_F(ListTest, HitTestFindsTheRowInEveryColumn) {
  list().RowHeight(30);
  list().ListCount(3);
  const int top = list().GetItemTop(0);
  EXPECT_EQ(list().HitTest(10, top + 1), 0);
  EXPECT_EQ(list().HitTest(150, top + 31), 1);
  EXPECT_EQ(list().HitTest(10, top + 89), 2);
  EXPECT_EQ(list().HitTest(10, top + 95), -1);
  EXPECT_EQ(list().HitTest(250, top + 5), -1);  // right of the columns
}

TEST_F(ListTest, CanBeHiddenAndShown) {
  EXPECT_TRUE(list().Visible());
  list().Visible(false);
  EXPECT_FALSE(IsWindowVisible(list().hwnd()));
  EXPECT_FALSE(list().Visible());
  list().Visible(true);
  EXPECT_TRUE(IsWindowVisible(list().hwnd()));
}

TEST_F(ListTest, ShowsImagesFromABitmap) {
  EXPECT_EQ(list().AddBitmap(nullptr, kWhite), -1);
  list().ImageList(16, 16);
  const auto strip = MemoryContext::Create(48, 16);
  EXPECT_EQ(list().AddBitmap(strip->Bitmap(), kWhite), 0);
  EXPECT_EQ(list().AddBitmap(strip->Bitmap(), kWhite), 3);
  EXPECT_EQ(ImageList_GetImageCount(list().ImageList()), 6);
  EXPECT_EQ(
      reinterpret_cast<HIMAGELIST>(SendMessageW(list().hwnd(), LVM_GETIMAGELIST, LVSIL_SMALL, 0)),
      list().ImageList());
  list().RowHeight(60);
  EXPECT_EQ(list().ImageList(), nullptr);
}

TEST_F(ListTest, ImagesAreTransparentInTheMaskColour) {
  list().ImageList(16, 16);
  const WindowDc screen(nullptr);
  const UniqueMemoryDc context(CreateCompatibleDC(screen.Get()));
  const UniqueBitmap strip(CreateCompatibleBitmap(screen.Get(), 32, 16));
  const RECT left = {0, 0, 16, 16};
  const RECT right = {16, 0, 32, 16};
  {
    const SelectedObject drawnOn(context.Get(), strip.Get());
    FillRect(context.Get(), &left, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    FillRect(context.Get(), &right, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
  }
  list().AddBitmap(strip.Get(), kWhite);
  const auto canvas = MemoryContext::Create(32, 16);
  const UniqueBrush ground(CreateSolidBrush(Rgb(1, 200, 3)));
  const RECT all = {0, 0, 32, 16};
  FillRect(canvas->Dc(), &all, ground.Get());
  ImageList_Draw(list().ImageList(), 0, canvas->Dc(), 0, 0, ILD_TRANSPARENT);
  ImageList_Draw(list().ImageList(), 1, canvas->Dc(), 16, 0, ILD_TRANSPARENT);
  EXPECT_EQ(PixelOf(canvas->Dc(), 8, 8), Rgb(1, 200, 3));
  EXPECT_EQ(PixelOf(canvas->Dc(), 24, 8), kBlack);
}

TEST_F(ListTest, ChecksAreKeptAndTold) {
  list().CheckBoxes(true);
  list().ListCount(10);
  list().Checked(3, true);
  list().Checked(7, true);
  list().Checked(99, true);
  EXPECT_TRUE(list().Checked(3));
  EXPECT_FALSE(list().Checked(4));
  EXPECT_FALSE(list().Checked(99));
  const auto nativeState = [&](WPARAM row) {
    return SendMessageW(list().hwnd(), LVM_GETITEMSTATE, row, LVIS_STATEIMAGEMASK);
  };
  EXPECT_EQ(nativeState(3), INDEXTOSTATEIMAGEMASK(2));
  EXPECT_EQ(nativeState(4), INDEXTOSTATEIMAGEMASK(1));
  list().Remove(4);
  EXPECT_TRUE(list().Checked(3));
  EXPECT_TRUE(list().Checked(6));
  EXPECT_FALSE(list().Checked(7));
  list().Remove(3);
  EXPECT_FALSE(list().Checked(3));
  EXPECT_TRUE(list().Checked(5));
  list().ListCount(5);
  list().ListCount(8);
  EXPECT_FALSE(list().Checked(5));
  list().Checked(1, true);
  list().Checked(1, false);
  EXPECT_FALSE(list().Checked(1));
  list().Checked(2, true);
  list().Clear();
  list().ListCount(8);
  EXPECT_FALSE(list().Checked(2));
}

TEST_F(ListTest, LeavesTheHostWhenItEnds) {
  const size_t blocks = LiveSubclassBlocks();
  const HWND window = container();
  made.reset();
  EXPECT_FALSE(IsWindow(window));
  EXPECT_EQ(LiveSubclassBlocks(), blocks - 2);
  EXPECT_FALSE(host.Resize);
  host.Move(0, 0, 50, 50);
}

TEST_F(ListTest, MovesToAnotherHost) {
  PictureBox second;
  PictureBoxArgs args;
  args.parent = form.hwnd();
  args.width = args.height = 40;
  second.Create(args);
  const HWND former = container();
  list().ListCount(5);
  list().Create(second);
  EXPECT_FALSE(IsWindow(former));
  EXPECT_EQ(GetParent(container()), second.hwnd());
  EXPECT_EQ(list().ListCount(), 0);
  made.reset();
}

TEST_F(ListTest, SurvivesTheEndOfItsWindows) {
  list().ListCount(5);
  form.Unload();
  EXPECT_EQ(list().hwnd(), nullptr);
  EXPECT_EQ(list().ListCount(), 0);
  EXPECT_EQ(list().Selected(), -1);
  EXPECT_EQ(list().Add(), -1);
  EXPECT_EQ(list().ColumnAdd(L"x", 10), -1);
  EXPECT_EQ(list().HitTest(1, 1), -1);
  EXPECT_EQ(list().TopItem(), -1);
  EXPECT_EQ(list().GetItemHeight(), 0);
  EXPECT_EQ(list().HeaderhWnd(), nullptr);
  list().SetSelectList(2);
  list().RowHeight(20);
  list().Block(true);
  EXPECT_FALSE(list().Block());
  list().Block(false);
  list().RedrawItem(0);
  list().RedrawVisibleItems();
  list().Clear();
}

TEST(ListWithoutHostTest, DoesNothing) {
  clsLictView list;
  EXPECT_EQ(list.ListCount(), 0);
  EXPECT_EQ(list.Selected(), -1);
  EXPECT_EQ(list.text(0), L"");
  EXPECT_FALSE(list.Visible());
  list.ListCount(4);
  list.CheckBoxes(true);
  list.AutoDraw(true);
  list.ImageList(16, 16);
  EXPECT_EQ(list.ImageList(), nullptr);
}

TEST(ListLeakTest, LeavesNothingBehind) {
  TestForm form;
  const size_t blocks = LiveSubclassBlocks();
  EXPECT_EQ(LeakedBy([&] {
              PictureBox host;
              host.Create({.parent = form.hwnd(), .width = 100, .height = 100});
              clsLictView list;
              list.Create(host);
              list.ColumnAdd(L"名稱", 80);
              list.OnData = [&](int, int, LVITEMW& cell) { list.GiveText(cell, L"文字"); };
              list.CheckBoxes(true);
              list.ImageList(16, 16);
              list.RowHeight(30);
              list.ListCount(10);
              list.SetSelectList(5);
              list.RedrawVisibleItems();
              list.ImageList(16, 16);
            }),
            ResourceCounts());
  EXPECT_EQ(LiveSubclassBlocks(), blocks);
}

}  // namespace
}  // namespace tellurvane

// How the list is painted, and how little it asks for.
#include "ListTestSupport.h"
#include "ui/Handle.h"
#include "ui/clsLictView.h"

namespace tellurvane {
namespace {

constexpr Color kRowColor = Rgb(12, 200, 34);

// Paints whole rows in one colour.
void PaintRows(NMLVCUSTOMDRAW& draw, LRESULT& result) {
  if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) {
    result = CDRF_NOTIFYITEMDRAW;
    return;
  }
  if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return;
  const UniqueBrush brush(CreateSolidBrush(kRowColor));
  FillRect(draw.nmcd.hdc, &draw.nmcd.rc, brush.Get());
  result = CDRF_SKIPDEFAULT;
}

class ListDrawTest : public ListTest {
 protected:
  ListDrawTest() { list().RowHeight(30); }

  Color OnScreen(int x, int y) {
    const WindowDc screen(list().hwnd());
    return PixelOf(screen.Get(), x, y);
  }
  Color MiddleOnScreen(int row) { return OnScreen(100, list().GetItemTop(row) + 15); }
  void Paint() {
    InvalidateRect(list().hwnd(), nullptr, FALSE);
    UpdateWindow(list().hwnd());
  }
};

TEST_F(ListDrawTest, MillionRowsAskForNoMoreThanTen) {
  list().ListCount(10);
  const int forTen = CellsAskedByPainting();
  EXPECT_GT(forTen, 0);
  list().ListCount(1'000'000);
  EXPECT_LE(CellsAskedByPainting(), forTen);
}

TEST_F(ListDrawTest, ScrollingThroughAMillionRowsAsksOnlyForThoseThatShow) {
  list().ListCount(1'000'000);
  const int page = CellsAskedByPainting();
  asked = 0;
  list().EnsureVisible(999'999);
  list().SetSelectList(500'000);
  list().SetSelectList(-1);
  Pump();
  EXPECT_LE(asked, 4 * page);
  asked = 0;
  constexpr int kSteps = 20;
  for (int i = 0; i < kSteps; ++i) {
    SendMessageW(list().hwnd(), WM_VSCROLL, SB_PAGEDOWN, 0);
    UpdateWindow(list().hwnd());
  }
  EXPECT_LE(asked, (kSteps + 1) * page);
}

TEST_F(ListDrawTest, ScrollingByOneRowAsksForLessThanAPage) {
  list().ListCount(1'000'000);
  Pump();
  const int page = CellsAskedByPainting();
  asked = 0;
  for (int i = 0; i < 10; ++i) {
    SendMessageW(list().hwnd(), WM_VSCROLL, SB_LINEDOWN, 0);
    UpdateWindow(list().hwnd());
  }
  EXPECT_LE(asked, 10 * page);
  EXPECT_EQ(list().TopItem(), 10);
}

TEST_F(ListDrawTest, NothingIsAskedForRowsThatDoNotShow) {
  list().ListCount(1'000'000);
  Pump();
  int last = 0;
  list().OnData = [&](int row, int, LVITEMW&) { last = std::max(last, row); };
  Paint();
  EXPECT_LE(last, list().BottomItem());
}

TEST_F(ListDrawTest, CustomDrawPaintsOnlyWhileAutoDrawIsSet) {
  int calls = 0;
  list().CustomDraw = [&](NMLVCUSTOMDRAW& draw, LRESULT& result) {
    ++calls;
    PaintRows(draw, result);
  };
  list().ListCount(2);
  Paint();
  EXPECT_FALSE(list().AutoDraw());
  EXPECT_EQ(calls, 0);
  EXPECT_NE(MiddleOnScreen(1), kRowColor);

  list().AutoDraw(true);
  Pump();
  EXPECT_GT(calls, 0);
  EXPECT_EQ(MiddleOnScreen(0), kRowColor);
  EXPECT_EQ(MiddleOnScreen(1), kRowColor);
  EXPECT_EQ(OnScreen(100, list().Bottom() + 5), GetSysColor(COLOR_WINDOW));

  list().AutoDraw(false);
  Pump();
  EXPECT_NE(MiddleOnScreen(1), kRowColor);
}

TEST_F(ListDrawTest, WithoutAutoDrawTheNativeListIsToldToDrawByItself) {
  list().CustomDraw = [](NMLVCUSTOMDRAW&, LRESULT& result) { result = CDRF_SKIPDEFAULT; };
  NMLVCUSTOMDRAW draw = {};
  draw.nmcd.dwDrawStage = CDDS_PREPAINT;
  EXPECT_EQ(Notify(static_cast<UINT>(-12), draw), CDRF_DODEFAULT);
  list().AutoDraw(true);
  EXPECT_EQ(Notify(static_cast<UINT>(-12), draw), CDRF_SKIPDEFAULT);
  list().CustomDraw = nullptr;
  EXPECT_EQ(Notify(static_cast<UINT>(-12), draw), CDRF_DODEFAULT);
}

TEST_F(ListDrawTest, CustomDrawGetsTheRecordItselfAndTheRowsRectangle) {
  list().RowHeight(82);
  list().ListCount(1);
  list().AutoDraw(true);
  RECT row = {};
  list().CustomDraw = [&](NMLVCUSTOMDRAW& draw, LRESULT& result) {
    if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT) row = draw.nmcd.rc;
    PaintRows(draw, result);
  };
  Paint();
  EXPECT_EQ(row.top, list().GetItemTop(0));
  EXPECT_EQ(row.bottom - row.top, 82);
}

TEST_F(ListDrawTest, BlockKeepsTheOldPictureUntilItEnds) {
  list().AutoDraw(true);
  list().ListCount(3);
  Pump();
  Paint();
  const Color before = MiddleOnScreen(1);
  list().Block(true);
  EXPECT_TRUE(list().Block());
  list().CustomDraw = PaintRows;
  list().RedrawItem(1);
  list().RedrawVisibleItems();
  Paint();
  EXPECT_EQ(MiddleOnScreen(1), before);
  list().Block(false);
  EXPECT_FALSE(list().Block());
  Pump();
  EXPECT_EQ(MiddleOnScreen(1), kRowColor);
}

TEST_F(ListDrawTest, RedrawItemPaintsThatRowAtOnceAndNoOther) {
  list().ListCount(1'000);
  Paint();
  std::vector<int> rows;
  list().OnData = [&](int row, int, LVITEMW&) { rows.push_back(row); };
  list().RedrawItem(2);
  EXPECT_FALSE(rows.empty());
  for (const int row : rows) EXPECT_EQ(row, 2);
  rows.clear();
  list().RedrawItem(900);
  list().RedrawItem(-1);
  EXPECT_TRUE(rows.empty());
  EXPECT_FALSE(GetUpdateRect(list().hwnd(), nullptr, FALSE));
}

TEST_F(ListDrawTest, RedrawVisibleItemsPaintsEachOfThem) {
  list().ListCount(1'000);
  list().EnsureVisible(500);
  Paint();
  std::set<int> rows;
  list().OnData = [&](int row, int, LVITEMW&) { rows.insert(row); };
  list().RedrawVisibleItems();
  EXPECT_EQ(*rows.begin(), list().TopItem());
  EXPECT_EQ(*rows.rbegin(), list().BottomItem());
}

TEST_F(ListDrawTest, ChangedRowIsPaintedFromEdgeToEdgeBesideTheColumnsToo) {
  for (const int count : {1, 3}) {
    list().AutoDraw(true);
    list().ListCount(count);
    list().CustomDraw = [&](NMLVCUSTOMDRAW& draw, LRESULT& result) {
      result = CDRF_NOTIFYITEMDRAW;
      if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return;
      const int row = static_cast<int>(draw.nmcd.dwItemSpec);
      const UniqueBrush brush(CreateSolidBrush(list().Selected() == row ? kRowColor : kBlack));
      const RECT strip = {0, draw.nmcd.rc.top, 300, draw.nmcd.rc.bottom};
      FillRect(draw.nmcd.hdc, &strip, brush.Get());
      result = CDRF_SKIPDEFAULT;
    };
    list().SetSelectList(-1);
    Paint();
    const int last = count - 1;
    for (const int selected : {last, -1, last}) {
      list().SetSelectList(selected);
      Pump();
      const Color expected = selected == last ? kRowColor : kBlack;
      for (const int x : {0, 1, 100, 250, 295}) {
        EXPECT_EQ(OnScreen(x, list().GetItemTop(last) + 15), expected) << x << " of " << count;
      }
    }
  }
}

TEST_F(ListDrawTest, AddSubPaintsTheRowWhenMessagesAreHandled) {
  list().ListCount(3);
  Paint();
  asked = 0;
  list().AddSub(1, 1);
  EXPECT_EQ(asked, 0);
  UpdateWindow(list().hwnd());
  EXPECT_GT(asked, 0);
  asked = 0;
  list().AddSub(9, 0);
  list().AddSub(1, 5);
  UpdateWindow(list().hwnd());
  EXPECT_EQ(asked, 0);
}

// Between two paintings the screen never shows the background where a row stands: the picture is
// made in memory.
TEST_F(ListDrawTest, RedrawingARowNeverShowsItErased) {
  list().AutoDraw(true);
  list().ListCount(3);
  list().CustomDraw = PaintRows;
  Pump();
  Paint();
  Color during = 0;
  list().CustomDraw = [&](NMLVCUSTOMDRAW& draw, LRESULT& result) {
    if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT) during = MiddleOnScreen(1);
    PaintRows(draw, result);
  };
  list().RedrawItem(1);
  EXPECT_EQ(during, kRowColor);
}

class ListEmptyTextTest : public ListTest {
 protected:
  ListEmptyTextTest() { list().LockColumn(true); }

  // Pixels below the header that are not the window's colour, as what is on the screen has them.
  int Ink() {
    Pump();
    RECT header = {};
    GetClientRect(list().HeaderhWnd(), &header);
    RECT client = {};
    GetClientRect(list().hwnd(), &client);
    const WindowDc screen(list().hwnd());
    const auto ground = static_cast<Color>(GetSysColor(COLOR_WINDOW));
    int ink = 0;
    for (int y = static_cast<int>(header.bottom); y < client.bottom; ++y) {
      for (int x = 0; x < client.right; ++x) ink += PixelOf(screen.Get(), x, y) != ground ? 1 : 0;
    }
    return ink;
  }
};

TEST_F(ListEmptyTextTest, IsShownWhileThereAreNoRows) {
  EXPECT_EQ(Ink(), 0);
  list().EmptyText(L"目前無法開啟");
  const int text = Ink();
  EXPECT_GT(text, 0);
  list().ListCount(1);
  list().OnData = nullptr;
  EXPECT_NE(Ink(), text);
  list().ListCount(0);
  EXPECT_EQ(Ink(), text);
  list().EmptyText(L"");
  EXPECT_EQ(Ink(), 0);
}

TEST_F(ListEmptyTextTest, LooksTheSameHoweverOftenItIsPainted) {
  list().EmptyText(L"目前無法開啟");
  const int text = Ink();
  EXPECT_GT(text, 0);
  for (const RECT& part : {RECT{0, 0, 300, 200}, RECT{100, 60, 160, 120}}) {
    InvalidateRect(list().hwnd(), &part, FALSE);
    EXPECT_EQ(Ink(), text);
  }
}

TEST_F(ListEmptyTextTest, ALongTextGetsMoreLinesAndNoneIsCut) {
  list().EmptyText(L"無法開啟");
  const int one = Ink();
  ASSERT_GT(one, 0);
  std::wstring many;
  for (int i = 0; i < 12; ++i) many += L"無法開啟";
  list().EmptyText(many);
  EXPECT_NEAR(Ink(), 12 * one, one);
}

}  // namespace
}  // namespace tellurvane

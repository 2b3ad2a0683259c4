// How the list is painted, and how few cells it needs for that.
#include <algorithm>

#include "ListTestSupport.h"
#include "ui/Handle.h"
#include "ui/clsLictView.h"

namespace tellurvane {
namespace {

constexpr Color kRowColor = Rgb(12, 200, 34);

class ListDrawTest : public ListTest {
 protected:
  // Paints each row from edge to edge: the selected one, or all of them, in kRowColor.
  void PaintRowsInColor(bool onlySelected = false) {
    list.AutoDraw(true);
    list.CustomDraw = [this, onlySelected](NMLVCUSTOMDRAW& draw, LRESULT& result) {
      result = CDRF_NOTIFYITEMDRAW;
      if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return;
      const bool isOther =
          onlySelected && list.Selected() != static_cast<int>(draw.nmcd.dwItemSpec);
      const UniqueBrush brush(CreateSolidBrush(isOther ? kBlack : kRowColor));
      const RECT row = {0, draw.nmcd.rc.top, 300, draw.nmcd.rc.bottom};
      FillRect(draw.nmcd.hdc, &row, brush.Get());
      result = CDRF_SKIPDEFAULT;
    };
  }

  Color OnScreen(int x, int y) {
    const WindowDc screen(list.hwnd());
    return PixelOf(screen.Get(), x, y);
  }
  Color MiddleOnScreen(int row) { return OnScreen(100, static_cast<int>(Middle(row).y)); }

  // The rows whose cells are asked for meanwhile.
  template <typename Action>
  std::set<int> RowsAskedBy(Action action) {
    std::set<int> rows;
    list.OnData = [&](int row, int, LVITEMW&) { rows.insert(row); };
    action();
    list.OnData = nullptr;
    return rows;
  }
};

TEST_F(ListDrawTest, AMillionRowsAskForNoMoreCellsThanTen) {
  const auto cellsAskedBy = [&](auto action) {
    asked = 0;
    action();
    return asked;
  };
  list.ListCount(10);
  Pump();
  const int page = cellsAskedBy([&] { Paint(); });
  EXPECT_GT(page, 0);
  list.ListCount(1'000'000);
  Pump();
  EXPECT_LE(cellsAskedBy([&] { Paint(); }), page);
  constexpr int kSteps = 20;
  for (const auto direction : {SB_LINEDOWN, SB_PAGEDOWN}) {
    EXPECT_LE(cellsAskedBy([&] {
                for (int i = 0; i < kSteps; ++i) {
                  Send(WM_VSCROLL, static_cast<WPARAM>(direction));
                  UpdateWindow(list.hwnd());
                }
              }),
              (kSteps + 1) * page);
  }
  EXPECT_LE(cellsAskedBy([&] {
              list.EnsureVisible(999'999);
              list.SetSelectList(500'000);
              list.SetSelectList(-1);
              Pump();
            }),
            4 * page);
}

TEST_F(ListDrawTest, CustomDrawIsLeftToTheNativeListWithoutAutoDraw) {
  PaintRowsInColor();
  list.AutoDraw(false);
  list.ListCount(2);
  Pump();
  EXPECT_NE(MiddleOnScreen(1), kRowColor);

  list.AutoDraw(true);
  Pump();
  EXPECT_EQ(MiddleOnScreen(0), kRowColor);
  EXPECT_EQ(MiddleOnScreen(1), kRowColor);
  EXPECT_EQ(OnScreen(100, list.Bottom() + 5), GetSysColor(COLOR_WINDOW));

  list.AutoDraw(false);
  Pump();
  EXPECT_NE(MiddleOnScreen(1), kRowColor);
}

TEST_F(ListDrawTest, BlockKeepsTheOldPictureUntilItEnds) {
  list.ListCount(3);
  Pump();
  const Color before = MiddleOnScreen(1);
  list.Block(true);
  PaintRowsInColor();
  list.RedrawItem(1);
  list.RedrawVisibleItems();
  Paint();
  EXPECT_EQ(MiddleOnScreen(1), before);
  list.Block(false);
  Pump();
  EXPECT_EQ(MiddleOnScreen(1), kRowColor);
}

TEST_F(ListDrawTest, RedrawsOneRowOrAllThatShowAtOnce) {
  list.ListCount(1'000);
  Paint();
  EXPECT_EQ(RowsAskedBy([&] { list.RedrawItem(2); }), std::set<int>{2});
  EXPECT_TRUE(RowsAskedBy([&] {
                list.RedrawItem(900);
                list.RedrawItem(-1);
              }).empty());
  EXPECT_FALSE(GetUpdateRect(list.hwnd(), nullptr, FALSE));

  EXPECT_TRUE(RowsAskedBy([&] { list.AddSub(1, 1); }).empty()) << "not at once";
  EXPECT_EQ(RowsAskedBy([&] { UpdateWindow(list.hwnd()); }), std::set<int>{1});

  list.EnsureVisible(500);
  Paint();
  const std::set<int> rows = RowsAskedBy([&] { list.RedrawVisibleItems(); });
  EXPECT_EQ(*rows.begin(), list.TopItem());
  EXPECT_EQ(*rows.rbegin(), list.BottomItem());
}

TEST_F(ListDrawTest, ASelectedRowIsPaintedBesideTheColumnsToo) {
  PaintRowsInColor(true);
  for (const int count : {1, 3}) {
    list.ListCount(count);
    list.SetSelectList(-1);
    Paint();
    const int last = count - 1;
    for (const int selected : {last, -1, last}) {
      list.SetSelectList(selected);
      Pump();
      for (const int x : {0, 1, 100, 250, 295}) {
        EXPECT_EQ(OnScreen(x, static_cast<int>(Middle(last).y)),
                  selected == last ? kRowColor : kBlack)
            << x << " of " << count;
      }
    }
  }
}

TEST_F(ListDrawTest, AnEmptyListIsFramedWhileItHasTheKeyboardAndItsFirstRowIsFocused) {
  constexpr Color kFrame = Rgb(0x4B, 0x00, 0x82);
  const auto isFramed = [&] {
    Pump();
    return OnScreen(0, list.Bottom()) == kFrame && OnScreen(299, 199) == kFrame;
  };
  EXPECT_FALSE(isFramed());
  list.SetFocus();
  EXPECT_TRUE(isFramed());
  form.SetFocus();
  EXPECT_FALSE(isFramed());
  list.SetFocus();
  list.ListCount(2);
  EXPECT_EQ(list.FocusedRow(), 0);
  EXPECT_EQ(list.Selected(), -1);
  EXPECT_FALSE(isFramed());
}

class ListEmptyTextTest : public ListTest {
 protected:
  // The number of pixels below the rows that differ from the window's colour.
  int Ink() {
    Pump();
    RECT client = {};
    GetClientRect(list.hwnd(), &client);
    const WindowDc screen(list.hwnd());
    const auto ground = static_cast<Color>(GetSysColor(COLOR_WINDOW));
    const std::vector<Color> pixels =
        PixelsIn(screen.Get(), {0, list.Bottom(), client.right, client.bottom});
    return static_cast<int>(pixels.size()) - static_cast<int>(std::ranges::count(pixels, ground));
  }
};

TEST_F(ListEmptyTextTest, IsShownWhileThereAreNoRows) {
  EXPECT_EQ(Ink(), 0);
  list.EmptyText(L"目前無法開啟");
  const int text = Ink();
  EXPECT_GT(text, 0);
  for (const RECT& part : {RECT{0, 0, 300, 200}, RECT{100, 60, 160, 120}}) {
    InvalidateRect(list.hwnd(), &part, FALSE);
    EXPECT_EQ(Ink(), text) << "after another painting";
  }
  list.ListCount(1);
  EXPECT_EQ(Ink(), 0);
  list.ListCount(0);
  EXPECT_EQ(Ink(), text);
  std::wstring twelve;
  for (int i = 0; i < 12; ++i) twelve += L"目前無法開啟";
  list.EmptyText(twelve);
  EXPECT_NEAR(Ink(), 12 * text, text) << "wrapped and not cut";
  list.EmptyText(L"");
  EXPECT_EQ(Ink(), 0);
}

}  // namespace
}  // namespace tellurvane

#include "ui/RowPainter.h"

#include <map>

#include "ListTestSupport.h"
#include "tests/support/ContrastScheme.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr Color kPaint = Rgb(12, 200, 34);
constexpr size_t kRows = 3;

class RowPainterTest : public ListTest {
 protected:
  RowPainterTest() {
    list.AutoDraw(true);
    list.CustomDraw = [this](NMLVCUSTOMDRAW& draw, LRESULT& result) {
      result = PaintListRow(list, kRows, draw, [this](size_t row, const RowPicture& picture) {
        painted[row] = picture;
        const UniqueBrush brush(CreateSolidBrush(kPaint));
        const RECT all = {0, 0, picture.width, picture.height};
        FillRect(picture.context, &all, brush.Get());
      });
    };
    list.ListCount(kRows);
  }

  Color OnScreen(int x, int y) {
    const WindowDc screen(list.hwnd());
    return PixelOf(screen.Get(), x, y);
  }

  std::map<size_t, RowPicture> painted;
};

TEST_F(RowPainterTest, PaintsEachRowOfTheOwnerFromEdgeToEdge) {
  list.ListCount(kRows + 1);
  list.SetSelectList(2);
  Pump();
  ASSERT_EQ(painted.size(), kRows);
  for (const auto& [row, picture] : painted) {
    EXPECT_EQ(picture.isSelected, row == 2) << row;
    EXPECT_EQ(picture.isOdd, row == 1) << row;
    EXPECT_EQ(picture.width, 300) << "wider than the columns";
    EXPECT_EQ(picture.height, 30) << row;
  }
  const int top = list.GetItemTop(0);
  const int end = list.GetItemTop(kRows);
  for (const int x : {0, 100, 299}) {
    for (const int y : {top, end - 1}) EXPECT_EQ(OnScreen(x, y), kPaint) << x << "," << y;
    for (const int y : {top - 1, end}) EXPECT_NE(OnScreen(x, y), kPaint) << x << "," << y;
  }
  list.ColumnWidth(0, 400);
  Send(LVM_SCROLL, 50, 0);
  Pump();
  EXPECT_EQ(painted[0].width, 480);
  EXPECT_EQ(OnScreen(0, top), kPaint) << "scrolled sideways";
}

TEST_F(RowPainterTest, FramesTheFocusedRowWhileTheListHasTheKeyboard) {
  constexpr Color kFrame = Rgb(0x4B, 0x00, 0x82);
  const auto framed = [&] {
    Pump();
    std::vector<int> rows;
    for (int row = 0; row < static_cast<int>(kRows); ++row) {
      const int top = list.GetItemTop(row);
      const int bottom = top + list.GetItemHeight() - 1;
      const bool hasFrame = OnScreen(0, top) == kFrame && OnScreen(299, bottom) == kFrame;
      if (hasFrame) rows.push_back(row);
    }
    return rows;
  };
  using Rows = std::vector<int>;
  EXPECT_EQ(framed(), Rows{});
  list.SetFocus();
  EXPECT_EQ(framed(), Rows{0});
  EXPECT_EQ(list.Selected(), -1) << "focused and not selected";
  EXPECT_EQ(list.FocusedRow(), 0);
  list.SetSelectList(2);
  EXPECT_EQ(framed(), Rows{2});
  form.SetFocus();
  EXPECT_EQ(framed(), Rows{});
  EXPECT_EQ(list.FocusedRow(), 2);
  list.SetFocus();
  EXPECT_EQ(framed(), Rows{2});
}

// Inside the row: on its edge it would look like the row beside it.
TEST_F(RowPainterTest, TheFrameCanBeSeenUnderHighContrast) {
  list.SetFocus();
  const ContrastScheme scheme(kBlackScheme, form.hwnd());
  const auto frame = [&](int row) {
    Paint();
    return OnScreen(2, list.GetItemTop(row) + 2);
  };
  EXPECT_EQ(frame(0), GetSysColor(COLOR_WINDOWTEXT));
  list.SetSelectList(1);
  EXPECT_EQ(frame(1), GetSysColor(COLOR_HIGHLIGHTTEXT));
}

}  // namespace
}  // namespace tellurvane

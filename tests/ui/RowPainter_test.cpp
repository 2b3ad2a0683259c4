#include "ui/RowPainter.h"

#include <map>

#include "ListTestSupport.h"
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

TEST_F(RowPainterTest, KnowsTheSelectedRowAndTheOddOnes) {
  list.SetSelectList(2);
  Pump();
  ASSERT_EQ(painted.size(), kRows);
  for (const auto& [row, picture] : painted) {
    EXPECT_EQ(picture.isSelected, row == 2) << row;
    EXPECT_EQ(picture.isOdd, row == 1) << row;
    EXPECT_EQ(picture.width, 300) << "wider than the columns";
    EXPECT_EQ(picture.height, 30) << row;
  }
}

TEST_F(RowPainterTest, PaintsARowFromEdgeToEdgeAndNothingElse) {
  Pump();
  const auto ground = static_cast<Color>(GetSysColor(COLOR_WINDOW));
  const int top = list.GetItemTop(0);
  for (const int x : {0, 100, 250, 299}) {
    EXPECT_EQ(OnScreen(x, top), kPaint) << x;
    EXPECT_EQ(OnScreen(x, list.Bottom() - 1), kPaint) << x;
    EXPECT_EQ(OnScreen(x, list.Bottom()), ground) << x;
    EXPECT_NE(OnScreen(x, top - 1), kPaint) << x;
  }
}

TEST_F(RowPainterTest, KeepsThePlaceOfAListThatIsScrolledSideways) {
  list.ColumnWidth(0, 400);
  Send(LVM_SCROLL, 50, 0);
  Pump();
  EXPECT_EQ(painted[0].width, 480);
  EXPECT_EQ(OnScreen(0, list.GetItemTop(0)), kPaint);
}

TEST_F(RowPainterTest, LeavesRowsThatTheOwnerDoesNotHaveToTheNativeList) {
  list.ListCount(kRows + 1);
  Pump();
  EXPECT_EQ(painted.size(), kRows);
  EXPECT_NE(OnScreen(200, list.GetItemTop(kRows)), kPaint);
}

}  // namespace
}  // namespace tellurvane

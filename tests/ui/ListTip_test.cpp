#include "ui/ListTip.h"

#include <chrono>
#include <map>

#include "ListTestSupport.h"
#include "tests/support/TipTestSupport.h"

namespace tellurvane {
namespace {

class ListTipTest : public ListTest {
 protected:
  ListTipTest() {
    list.ListCount(3);
    tip.Create(list, [this](int row) { return texts[row]; });
  }

  void PointAt(int row) {
    POINT place = Middle(row);
    ClientToScreen(list.hwnd(), &place);
    SetCursorPos(place.x, place.y);
  }
  // Moves the pointer back and forth: a movement that comes too early counts for nothing.
  bool Shows(int row, const std::wstring& text) {
    bool isShown = false;
    for (int attempt = 0; attempt < 5 && !isShown; ++attempt) {
      SetCursorPos(700, 700);
      Pump();
      PointAt(row);
      isShown = PumpUntil([&] { return TipOnScreen() == text; }, std::chrono::seconds(2));
    }
    return isShown;
  }
  // For longer than a tip takes to appear.
  static bool StaysAway() {
    return !PumpUntil([] { return !TipOnScreen().empty(); }, std::chrono::seconds(2));
  }

  std::map<int, std::wstring> texts = {{0, L"找不到檔案"}, {2, L"R&B"}};
  ListTip tip;
};

TEST_F(ListTipTest, ShowsTheTextOfTheRowUnderThePointer) {
  EXPECT_TRUE(Shows(0, L"找不到檔案"));
  // Straight from one row to another.
  PointAt(2);
  POINT pointer = {};
  GetCursorPos(&pointer);
  EXPECT_TRUE(PumpUntil([&] {
    RECT place = {};
    return TipOnScreen() == L"R&B" && GetWindowRect(VisibleTip(), &place) && place.top > pointer.y;
  })) << "not below the pointer";
  PointAt(1);
  EXPECT_TRUE(PumpUntil([] { return TipOnScreen().empty(); }));
  EXPECT_TRUE(StaysAway()) << "a row without a text";
  SetCursorPos(700, 700);
}

TEST_F(ListTipTest, FollowsATextThatChangesUnderThePointer) {
  ASSERT_TRUE(Shows(0, L"找不到檔案"));
  texts[0] = L"無法播放";
  tip.Refresh();
  EXPECT_TRUE(PumpUntil([] { return TipOnScreen() == L"無法播放"; }));
  texts[0] = L"";
  tip.Refresh();
  EXPECT_TRUE(PumpUntil([] { return TipOnScreen().empty(); }));
  texts[0] = L"無法啟動程式";
  tip.Refresh();
  EXPECT_TRUE(Shows(0, L"無法啟動程式"));
  // The row is gone.
  list.ListCount(0);
  tip.Refresh();
  EXPECT_TRUE(PumpUntil([] { return TipOnScreen().empty(); }));
  SetCursorPos(700, 700);
}

TEST_F(ListTipTest, GoesWhenTheListIsScrolled) {
  list.ListCount(20);
  texts[1] = L"";
  ASSERT_TRUE(Shows(0, L"找不到檔案"));
  Send(LVM_SCROLL, 0, list.GetItemHeight());
  tip.Refresh();
  EXPECT_TRUE(PumpUntil([] { return TipOnScreen().empty(); }));
  SetCursorPos(700, 700);
}

}  // namespace
}  // namespace tellurvane

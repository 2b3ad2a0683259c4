#include "ui/ListTip.h"

#include <chrono>
#include <map>
#include <memory>

#include "ListTestSupport.h"
#include "tests/support/FailingImport.h"
#include "tests/support/FormProbe.h"
#include "tests/support/TipTestSupport.h"

namespace tellurvane {
namespace {

class ListTipTest : public ListTest {
 protected:
  ListTipTest() {
    list.ListCount(3);
    tip->Create(list, [this](int row) { return texts[row]; });
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
  int TipWindows() const {
    int count = 0;
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, TOOLTIPS_CLASSW, nullptr)) != nullptr) {
      if (GetWindow(window, GW_OWNER) == GetAncestor(list.hwnd(), GA_ROOT)) ++count;
    }
    return count;
  }
  // For longer than a tip takes to appear.
  static bool StaysAway() {
    return !PumpUntil([] { return !TipOnScreen().empty(); }, std::chrono::seconds(2));
  }

  std::map<int, std::wstring> texts = {{0, L"找不到檔案"}, {2, L"R&B"}};
  std::unique_ptr<ListTip> tip = std::make_unique<ListTip>();
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

TEST_F(ListTipTest, HasAWindowOnlyAfterThePointerCame) {
  // Windows' list has one of its own.
  const int before = TipWindows();
  ListTip other;
  other.Create(list, [](int) { return std::wstring(L"找不到檔案"); });
  other.Refresh();
  ClickAt({60, 20});
  EXPECT_EQ(TipWindows(), before);
  SendMouse(list.hwnd(), WM_MOUSEMOVE, 60, 20, 0);
  EXPECT_EQ(TipWindows(), before + 1);
}

// A tip is no reason to end the program.
TEST_F(ListTipTest, DoesWithoutAWindowOrItsProcedure) {
  const int before = TipWindows();
  for (const char* const call : {"CreateWindowExW", "VirtualAlloc"}) {
    ListTip other;
    other.Create(list, [](int) { return std::wstring(L"找不到檔案"); });
    {
      FailingImport failing({call});
      failing.Fail(1);
      SendMouse(list.hwnd(), WM_MOUSEMOVE, 60, 20, 0);
      EXPECT_EQ(failing.Calls(), 1) << call;
    }
    SendMouse(list.hwnd(), WM_MOUSEMOVE, 61, 20, 0);
    ClickAt({61, 20});
    other.Refresh();
    EXPECT_EQ(TipWindows(), before) << call;
  }
}

TEST_F(ListTipTest, FollowsATextThatChangesUnderThePointer) {
  ASSERT_TRUE(Shows(0, L"找不到檔案"));
  texts[0] = L"無法播放";
  tip->Refresh();
  EXPECT_TRUE(PumpUntil([] { return TipOnScreen() == L"無法播放"; }));
  texts[0] = L"";
  tip->Refresh();
  EXPECT_TRUE(PumpUntil([] { return TipOnScreen().empty(); }));
  texts[0] = L"無法啟動程式";
  tip->Refresh();
  EXPECT_TRUE(Shows(0, L"無法啟動程式"));
  // The row is gone.
  list.ListCount(0);
  tip->Refresh();
  EXPECT_TRUE(PumpUntil([] { return TipOnScreen().empty(); }));
  SetCursorPos(700, 700);
}

TEST_F(ListTipTest, ClosesOnlyWithItsOwnerOrItsObject) {
  ASSERT_TRUE(Shows(0, L"找不到檔案"));
  const HWND window = VisibleTip();
  // Some programs send this to every window of the screen.
  SendMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_TRUE(IsWindow(window));
  EXPECT_TRUE(Shows(0, L"找不到檔案"));
  SetCursorPos(700, 700);
  tip.reset();
  EXPECT_FALSE(IsWindow(window));
  SendMouse(list.hwnd(), WM_MOUSEMOVE, 60, 20, 0);
}

// Wine's list has none of its own.
TEST_F(ListTipTest, TakesAwayTheListsOwnTooltip) {
  CaughtMessage change(list.hwnd(), LVM_SETTOOLTIPS);
  ListTip other;
  other.Create(list, [](int) { return std::wstring(); });
  EXPECT_EQ(change.Taken(), std::vector<WPARAM>{0});
}

TEST_F(ListTipTest, ForgetsAWindowThatIsGone) {
  ASSERT_TRUE(Shows(0, L"找不到檔案"));
  DestroyWindow(VisibleTip());
  SetCursorPos(700, 700);
  // Windows may give the handle to another window.
  FailingImport calls({"DestroyWindow"});
  calls.LetAllThrough();
  texts[0] = L"無法播放";
  tip->Refresh();
  tip.reset();
  EXPECT_EQ(calls.Calls(), 0);
}

TEST_F(ListTipTest, GoesWhenTheListIsScrolled) {
  list.ListCount(20);
  texts[1] = L"";
  ASSERT_TRUE(Shows(0, L"找不到檔案"));
  Send(LVM_SCROLL, 0, list.GetItemHeight());
  tip->Refresh();
  EXPECT_TRUE(PumpUntil([] { return TipOnScreen().empty(); }));
  SetCursorPos(700, 700);
}

}  // namespace
}  // namespace tellurvane

#include "ui/clsNotifyIcon.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <memory>

#include "tests/support/FailingImport.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/Density.h"

namespace tellurvane {
namespace {

HICON SharedIcon() { return LoadIconW(nullptr, IDI_WARNING); }

// A form with an icon, away from the corner where the tray's icons stand.
class IconForm : public Form {
 public:
  IconForm() {
    FormArgs args;
    args.caption = L"tray";
    args.icons.small = SharedIcon();
    args.widthTwips = 3000;
    args.heightTwips = 3000;
    Load(args);
    Move(TwipsFromPixels(600), TwipsFromPixels(500));
  }
};

class NotifyIconTest : public testing::Test {
 protected:
  void SetUp() override {
    icon->IconInit(form);
    icon->LButtonDown = [this] { events += 'L'; };
    icon->RButtonDown = [this] { events += 'R'; };
  }

  HWND Box() const { return FindWindowExW(form.hwnd(), nullptr, nullptr, L"NotifyIcon"); }

  // The taskbar's own record of the icon, which it finds by window and number.
  NOTIFYICONDATAW Record() const {
    NOTIFYICONDATAW record = {};
    record.cbSize = sizeof(record);
    record.hWnd = Box();
    record.uID = static_cast<UINT>(reinterpret_cast<UINT_PTR>(SharedIcon()));
    return record;
  }
  // The taskbar refuses to change what is not there.
  bool IsInTray() const {
    NOTIFYICONDATAW record = Record();
    return Shell_NotifyIconW(NIM_MODIFY, &record) != 0;
  }
  void LoseIcon() const {
    NOTIFYICONDATAW record = Record();
    ASSERT_TRUE(Shell_NotifyIconW(NIM_DELETE, &record));
    ASSERT_FALSE(IsInTray());
  }
  void RestartTaskbar() const {
    SendMessageW(form.hwnd(), RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
  }

  // As the taskbar does.
  void Tell(UINT message) const {
    SendMessageW(Box(), WM_MOUSEMOVE, Record().uID, static_cast<LPARAM>(message));
  }

  IconForm form;
  std::unique_ptr<clsNotifyIcon> icon = std::make_unique<clsNotifyIcon>();
  std::string events;
};

TEST_F(NotifyIconTest, AddsAHiddenBoxToItsForm) {
  ASSERT_NE(Box(), nullptr);
  EXPECT_EQ(GetParent(Box()), form.hwnd());
  EXPECT_FALSE(GetWindowLongPtrW(Box(), GWL_STYLE) & WS_VISIBLE);
}

TEST_F(NotifyIconTest, RaisesTheTwoButtonsAndNothingElse) {
  Tell(WM_LBUTTONDOWN);
  EXPECT_EQ(events, "L");
  Tell(WM_RBUTTONDOWN);
  EXPECT_EQ(events, "LR");
  for (UINT message = 0; message < 0x420; ++message) {
    if (message != WM_LBUTTONDOWN && message != WM_RBUTTONDOWN) Tell(message);
  }
  EXPECT_EQ(events, "LR");
}

TEST_F(NotifyIconTest, NeedsNoHandlers) {
  icon->LButtonDown = nullptr;
  icon->RButtonDown = nullptr;
  Tell(WM_LBUTTONDOWN);
  Tell(WM_RBUTTONDOWN);
  EXPECT_EQ(events, "");
}

TEST_F(NotifyIconTest, ItsHandlerMayEndIt) {
  icon->RButtonDown = [&] { icon.reset(); };
  icon->IconAdd();
  Tell(WM_RBUTTONDOWN);
  EXPECT_EQ(icon, nullptr);
  EXPECT_EQ(Box(), nullptr);
}

TEST_F(NotifyIconTest, StandsInTheTrayBetweenAddAndDelete) {
  EXPECT_FALSE(IsInTray());
  icon->IconAdd();
  EXPECT_TRUE(IsInTray());
  icon->IconDelete();
  EXPECT_FALSE(IsInTray());
  icon->IconAdd();
  EXPECT_TRUE(IsInTray());
}

TEST_F(NotifyIconTest, SettingATipAddsNoIcon) {
  icon->IconTip(L"Tellurvane");
  EXPECT_FALSE(IsInTray());
}

TEST_F(NotifyIconTest, LeavesTheTrayWhenItEnds) {
  icon->IconAdd();
  // By this record the taskbar would still know the icon for a while, though its window is gone.
  NOTIFYICONDATAW record = Record();
  icon.reset();
  EXPECT_FALSE(Shell_NotifyIconW(NIM_MODIFY, &record));
}

TEST_F(NotifyIconTest, LeavesTheTrayWhileItsFormIsStillThere) {
  icon->IconAdd();
  NOTIFYICONDATAW record = Record();
  form.Unload();
  EXPECT_FALSE(Shell_NotifyIconW(NIM_MODIFY, &record));
  icon->IconDelete();
}

TEST_F(NotifyIconTest, AllIconsCanBeTakenAwayAtOnce) {
  IconForm otherForm;
  clsNotifyIcon other;
  other.IconInit(otherForm);
  icon->IconAdd();
  other.IconAdd();
  clsNotifyIcon::DeleteAll();
  EXPECT_FALSE(IsInTray());
  EXPECT_FALSE(other.IsInTray());
}

TEST_F(NotifyIconTest, TellsWhetherTheTaskbarHasTakenIt) {
  EXPECT_FALSE(icon->IsInTray());
  EXPECT_FALSE(icon->IsMissing());
  EXPECT_TRUE(icon->IconAdd());
  EXPECT_TRUE(icon->IsInTray());
  EXPECT_TRUE(icon->IconAdd()) << "it is there already";
  icon->IconDelete();
  EXPECT_FALSE(icon->IsInTray());

  FailingImport taskbar({"Shell_NotifyIconW"});
  taskbar.Fail(1, INT_MAX);
  EXPECT_FALSE(icon->IconAdd());
  EXPECT_FALSE(icon->IsInTray());
  EXPECT_TRUE(icon->IsMissing());
  // Adding fails by its time-out, though the taskbar has taken the icon.
  taskbar.LetAllThrough();
  ASSERT_TRUE(icon->IconAdd());
  taskbar.Fail(1);
  EXPECT_TRUE(icon->IconAdd());
  EXPECT_FALSE(icon->IsMissing());
}

TEST_F(NotifyIconTest, ComesBackAfterTheTaskbarRestarts) {
  icon->IconAdd();
  LoseIcon();
  RestartTaskbar();
  EXPECT_TRUE(IsInTray());
}

TEST_F(NotifyIconTest, ComesBackOnlyWhileItIsWanted) {
  RestartTaskbar();
  EXPECT_FALSE(IsInTray());
  icon->IconAdd();
  icon->IconDelete();
  RestartTaskbar();
  EXPECT_FALSE(IsInTray());
}

TEST(NotifyIconFormTest, AFormWithoutAnIconGetsThePlatforms) {
  TestForm form;
  clsNotifyIcon icon;
  icon.IconInit(form);
  icon.IconAdd();
  NOTIFYICONDATAW record = {};
  record.cbSize = sizeof(record);
  record.hWnd = FindWindowExW(form.hwnd(), nullptr, nullptr, L"NotifyIcon");
  record.uID = static_cast<UINT>(reinterpret_cast<UINT_PTR>(LoadIconW(nullptr, IDI_APPLICATION)));
  EXPECT_TRUE(Shell_NotifyIconW(NIM_MODIFY, &record));
}

// Where the desktop shows the icon, and the mouse on it.
class NotifyIconOnScreenTest : public NotifyIconTest {
 protected:
  void SetUp() override {
    NotifyIconTest::SetUp();
    icon->IconTip(L"Tellurvane 排程");
    icon->IconAdd();
    form.Show();
  }
  ~NotifyIconOnScreenTest() override { SetCursorPos(700, 700); }

  // The desktop without a taskbar keeps the icons in a window of its own.
  static HWND IconWindow() {
    const HWND tray = FindWindowW(nullptr, L"Wine System Tray");
    return tray == nullptr ? nullptr : GetWindow(tray, GW_CHILD);
  }

  static bool PointAtIcon() {
    RECT place = {};
    if (!PumpUntil(
            [&] { return IsWindowVisible(IconWindow()) && GetWindowRect(IconWindow(), &place); })) {
      return false;
    }
    return SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2) != 0;
  }

  static void ClickWith(DWORD down, DWORD up) {
    std::array<INPUT, 2> inputs = {};
    inputs[0].type = inputs[1].type = INPUT_MOUSE;
    inputs[0].mi.dwFlags = down;
    inputs[1].mi.dwFlags = up;
    SendInput(2, inputs.data(), sizeof(INPUT));
  }

  // Whether the desktop shows this text for the mouse on the icon. The mouse is brought there
  // again and again: a movement before the icon was ready counts for nothing.
  static bool ShowsTip(const std::wstring& text) {
    for (int attempt = 0; attempt < 5; ++attempt) {
      SetCursorPos(700, 700);
      if (!PointAtIcon()) return false;
      if (PumpUntil([&] { return TipOnScreen() == text; }, std::chrono::seconds(2))) return true;
    }
    return false;
  }

  static std::wstring TipOnScreen() {
    for (HWND tip = nullptr;
         (tip = FindWindowExW(nullptr, tip, L"tooltips_class32", nullptr)) != nullptr;) {
      if (!IsWindowVisible(tip)) continue;
      std::array<wchar_t, 200> text = {};
      SendMessageTimeoutW(tip, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                          SMTO_NORMAL, 1'000, nullptr);
      return text.data();
    }
    return {};
  }
};

TEST_F(NotifyIconOnScreenTest, HearsRealClicks) {
  // A click before the icon was ready counts for nothing, as above.
  for (int attempt = 0; attempt < 5 && events.empty(); ++attempt) {
    SetCursorPos(700, 700);
    ASSERT_TRUE(PointAtIcon());
    ClickWith(MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
    PumpUntil([&] { return !events.empty(); }, std::chrono::seconds(3));
  }
  EXPECT_EQ(events, "L");
  ClickWith(MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
  EXPECT_TRUE(PumpUntil([&] { return events == "LR"; })) << events;
}

TEST_F(NotifyIconOnScreenTest, AnEmptyTipLeavesThePreviousOne) {
  icon->IconTip(L"");
  EXPECT_TRUE(ShowsTip(L"Tellurvane 排程")) << TipOnScreen().size();
}

TEST_F(NotifyIconOnScreenTest, ATipIsCutToTheRecordsLength) {
  icon->IconTip(std::wstring(127, L'長') + L"過");
  EXPECT_TRUE(ShowsTip(std::wstring(127, L'長'))) << TipOnScreen().size();
}

TEST_F(NotifyIconOnScreenTest, AShorterTipLeavesNothingOfTheLongerOne) {
  icon->IconTip(L"短");
  EXPECT_TRUE(ShowsTip(L"短")) << TipOnScreen().size();
}

TEST(NotifyIconLeakTest, LeavesNothingBehind) {
  IconForm form;
  EXPECT_EQ(LeakedBy([&] {
              clsNotifyIcon icon;
              icon.IconInit(form);
              icon.IconTip(L"提示");
              icon.IconAdd();
              icon.IconDelete();
            }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane

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

// Away from the corner of the tray's icons.
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

HWND BoxOf(const Form& form) { return FindWindowExW(form.hwnd(), nullptr, nullptr, L"NotifyIcon"); }

class NotifyIconTest : public testing::Test {
 protected:
  void SetUp() override {
    icon->IconInit(form);
    icon->LButtonDown = [this] { events += 'L'; };
    icon->RButtonDown = [this] { events += 'R'; };
  }

  HWND Box() const { return BoxOf(form); }

  // The taskbar finds an icon by window and number.
  NOTIFYICONDATAW Record() const {
    NOTIFYICONDATAW record = {};
    record.cbSize = sizeof(record);
    record.hWnd = Box();
    record.uID = static_cast<UINT>(reinterpret_cast<UINT_PTR>(SharedIcon()));
    return record;
  }
  // The taskbar changes no icon that it does not have.
  bool IsInTray() const {
    NOTIFYICONDATAW record = Record();
    return Shell_NotifyIconW(NIM_MODIFY, &record) != 0;
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

TEST_F(NotifyIconTest, IsInTheTrayBetweenAddAndDelete) {
  ASSERT_NE(Box(), nullptr);
  EXPECT_FALSE(GetWindowLongPtrW(Box(), GWL_STYLE) & WS_VISIBLE);
  icon->IconTip(L"Tellurvane");
  EXPECT_FALSE(IsInTray());
  for (int i = 0; i < 2; ++i) {
    icon->IconAdd();
    EXPECT_TRUE(IsInTray());
    icon->IconDelete();
    EXPECT_FALSE(IsInTray());
  }
}

TEST_F(NotifyIconTest, LeavesTheTrayWithItsFormAndWithItsObject) {
  // By this record the taskbar would know the icon for a while, though its window is gone.
  NOTIFYICONDATAW record = Record();
  icon->IconAdd();
  form.Unload();
  EXPECT_FALSE(Shell_NotifyIconW(NIM_MODIFY, &record));
  IconForm other;
  icon = std::make_unique<clsNotifyIcon>();
  icon->IconInit(other);
  icon->IconAdd();
  record.hWnd = BoxOf(other);
  ASSERT_TRUE(Shell_NotifyIconW(NIM_MODIFY, &record));
  icon.reset();
  EXPECT_FALSE(Shell_NotifyIconW(NIM_MODIFY, &record));
}

TEST_F(NotifyIconTest, ReportsTheTwoButtonsAndNothingElse) {
  Tell(WM_LBUTTONDOWN);
  EXPECT_EQ(events, "L");
  Tell(WM_RBUTTONDOWN);
  EXPECT_EQ(events, "LR");
  for (UINT message = 0; message < 0x420; ++message) {
    if (message != WM_LBUTTONDOWN && message != WM_RBUTTONDOWN) Tell(message);
  }
  EXPECT_EQ(events, "LR");
}

TEST_F(NotifyIconTest, DeleteAllTakesAllIconsAway) {
  IconForm otherForm;
  clsNotifyIcon other;
  other.IconInit(otherForm);
  icon->IconAdd();
  other.IconAdd();
  clsNotifyIcon::DeleteAll();
  EXPECT_FALSE(IsInTray());
  EXPECT_FALSE(other.IsInTray());
}

TEST_F(NotifyIconTest, ReportsWhetherTheTaskbarHasIt) {
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

TEST_F(NotifyIconTest, ComesBackAfterTheTaskbarRestartsWhileItIsWanted) {
  RestartTaskbar();
  EXPECT_FALSE(IsInTray());
  icon->IconAdd();
  NOTIFYICONDATAW record = Record();
  ASSERT_TRUE(Shell_NotifyIconW(NIM_DELETE, &record));
  ASSERT_FALSE(IsInTray());
  RestartTaskbar();
  EXPECT_TRUE(IsInTray());
  icon->IconDelete();
  RestartTaskbar();
  EXPECT_FALSE(IsInTray());
}

// The icon as the desktop shows it. A desktop without a taskbar has a window for the icons.
class NotifyIconOnScreenTest : public NotifyIconTest {
 protected:
  void SetUp() override {
    NotifyIconTest::SetUp();
    icon->IconTip(L"Tellurvane 排程");
    icon->IconAdd();
    form.Show();
  }
  ~NotifyIconOnScreenTest() override { SetCursorPos(700, 700); }

  // Again and again: a movement before the icon is ready counts for nothing.
  static bool PointAtIconUntil(
      const std::function<bool()>& condition, const std::function<void()>& act = [] {}) {
    for (int attempt = 0; attempt < 5; ++attempt) {
      SetCursorPos(700, 700);
      RECT place = {};
      const auto isShown = [&] {
        const HWND tray = FindWindowW(nullptr, L"Wine System Tray");
        const HWND window = tray == nullptr ? nullptr : GetWindow(tray, GW_CHILD);
        return IsWindowVisible(window) && GetWindowRect(window, &place);
      };
      if (!PumpUntil(isShown)) return false;
      SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2);
      act();
      if (PumpUntil(condition, std::chrono::seconds(2))) return true;
    }
    return false;
  }

  static void ClickWith(DWORD down, DWORD up) {
    std::array<INPUT, 2> inputs = {};
    inputs[0].type = inputs[1].type = INPUT_MOUSE;
    inputs[0].mi.dwFlags = down;
    inputs[1].mi.dwFlags = up;
    SendInput(2, inputs.data(), sizeof(INPUT));
  }

  static bool ShowsTip(const std::wstring& text) {
    return PointAtIconUntil([&] { return TipOnScreen() == text; });
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

TEST_F(NotifyIconOnScreenTest, ReportsRealClicks) {
  EXPECT_TRUE(PointAtIconUntil([&] { return events == "L"; },
                               [] { ClickWith(MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP); }));
  EXPECT_TRUE(PointAtIconUntil([&] { return events == "LR"; },
                               [] { ClickWith(MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP); }))
      << events;
}

TEST_F(NotifyIconOnScreenTest, ShowsItsLatestTip) {
  icon->IconTip(L"");
  EXPECT_TRUE(ShowsTip(L"Tellurvane 排程")) << "an empty tip changes nothing";
  icon->IconTip(std::wstring(127, L'長') + L"過");
  EXPECT_TRUE(ShowsTip(std::wstring(127, L'長'))) << TipOnScreen().size();
  icon->IconTip(L"短");
  EXPECT_TRUE(ShowsTip(L"短")) << TipOnScreen().size();
}

}  // namespace
}  // namespace tellurvane

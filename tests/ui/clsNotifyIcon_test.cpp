#include "ui/clsNotifyIcon.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <utility>
#include <vector>

#include "tests/support/FailingImport.h"
#include "tests/support/TipTestSupport.h"
#include "tests/support/WindowTestSupport.h"
#include "tests/support/Wine.h"
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
    args.className = L"NotifyIconTest";
    args.widthTwips = 3000;
    args.heightTwips = 3000;
    Load(args);
    SetClassLongPtrW(hwnd(), GCLP_HICONSM, reinterpret_cast<LONG_PTR>(SharedIcon()));
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

TEST_F(NotifyIconTest, IsInTheTrayBetweenAddAndDelete) {
  EXPECT_FALSE(icon->IsMissing());
  icon->IconTip(L"Tellurvane");
  EXPECT_FALSE(IsInTray() || icon->IsInTray());
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(icon->IconAdd());
    EXPECT_TRUE(IsInTray() && icon->IsInTray());
    EXPECT_TRUE(icon->IconAdd()) << "it is there already";
    icon->IconDelete();
    EXPECT_FALSE(IsInTray() || icon->IsInTray());
  }

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
  // The taskbar may take the icon although both calls fail.
  icon->IconDelete();
  taskbar.Fail(1, INT_MAX);
  icon->IconAdd();
  taskbar.LetAllThrough();
  for (int i = 0; i < 2; ++i) {
    icon->IconDelete();
    EXPECT_EQ(taskbar.Calls(), 1) << "removed once";
  }
}

std::vector<DWORD> codes;
BOOL canAdd = FALSE;

BOOL WINAPI RecordCode(DWORD code, NOTIFYICONDATAW*) {
  codes.push_back(code);
  return code != NIM_ADD || canAdd;
}

TEST_F(NotifyIconTest, IsAddedOrChangedBeforeItsVersionIsSet) {
  FailingImport taskbar({"Shell_NotifyIconW"});
  taskbar.Replace(RecordCode);
  for (const auto& [adds, expected] :
       {std::pair{TRUE, std::vector<DWORD>{0, 4}}, {FALSE, {0, 1, 4}}}) {
    canAdd = adds;
    codes.clear();
    EXPECT_TRUE(icon->IconAdd());
    EXPECT_EQ(codes, expected);
  }
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

TEST_F(NotifyIconTest, ShowsItsLatestTip) {
  SKIP_UNLESS_WINE("the icon is looked for in the window that Wine has in place of a taskbar");
  icon->IconTip(L"Tellurvane 排程");
  icon->IconAdd();
  form.Show();
  icon->IconTip(L"");
  EXPECT_TRUE(ShowsTrayTip(L"Tellurvane 排程")) << "an empty tip changes nothing";
  icon->IconTip(std::wstring(127, L'長') + L"過");
  EXPECT_TRUE(ShowsTrayTip(std::wstring(127, L'長')));
  icon->IconTip(L"短");
  EXPECT_TRUE(ShowsTrayTip(L"短"));
}

}  // namespace
}  // namespace tellurvane

// The main window and its tray icon: hiding, coming back, and the menu.
#include <gmock/gmock.h>

#include <climits>
#include <functional>
#include <string>

#include "tests/mainwin/FrmMainFixture.h"
#include "tests/support/FailingImport.h"
#include "tests/support/MenuTestSupport.h"
#include "tests/support/OtherWindow.h"
#include "tests/support/TipTestSupport.h"
#include "tests/support/Wine.h"
#include "ui/Density.h"
#include "ui/Timer.h"

namespace tellurvane {
namespace {

using testing::SizeIs;

// Like the editor.
class DialogOf : public Form {
 public:
  explicit DialogOf(HWND owner) {
    Load({.caption = L"dialog",
          .border = FormBorder::kFixedDialog,
          .widthTwips = 3'000,
          .heightTwips = 1'500,
          .owner = owner});
  }
};

class FrmMainTrayTest : public FrmMainTest {
 protected:
  HWND Clock() const { return FindWindowW(nullptr, L"FrmTime"); }
  // Like the taskbar.
  void SendToIcon(UINT message) const {
    const HWND box = FindWindowExW(window->hwnd(), nullptr, nullptr, L"NotifyIcon");
    SendMessageW(box, WM_MOUSEMOVE, 0, static_cast<LPARAM>(message));
  }
  bool IsInTaskbar() const {
    return (GetWindowLongPtrW(window->hwnd(), GWL_EXSTYLE) & WS_EX_APPWINDOW) != 0;
  }
  void Close() const { SendMessageW(window->hwnd(), WM_CLOSE, 0, 0); }
  void Minimise() const { SendMessageW(window->hwnd(), WM_SYSCOMMAND, SC_MINIMIZE, 0); }

  void InTrayMenu(const std::function<void()>& act) {
    InOpenMenu([this] { SendToIcon(WM_RBUTTONDOWN); }, act);
  }
  // Entries count from 1.
  void ChooseInTrayMenu(int entry) {
    ChooseInMenu([this] { SendToIcon(WM_RBUTTONDOWN); }, window->hwnd(), entry);
    Pump();
  }

  // At least so many ticks of the window's timers.
  static void LetSecondsPass(int seconds) {
    int ticks = 0;
    Timer timer;
    timer.Tick = [&] { ++ticks; };
    timer.Enabled(true);
    EXPECT_TRUE(PumpUntil([&] { return ticks > seconds; }, std::chrono::seconds(30)));
  }
};

TEST_F(FrmMainTrayTest, HidesOnlyOnceTheTaskbarHasTakenTheIcon) {
  Open();
  FailingImport taskbar({"Shell_NotifyIconW"});
  taskbar.Fail(1, INT_MAX);
  Close();
  const int calls = taskbar.Calls();
  EXPECT_GT(calls, 0);
  EXPECT_TRUE(PumpUntil([&] { return taskbar.Calls() > calls; })) << "not tried again";
  EXPECT_TRUE(window->Visible());
  EXPECT_TRUE(IsInTaskbar());
  taskbar.LetAllThrough();
  EXPECT_TRUE(PumpUntil([&] { return !window->Visible(); })) << "not tried again";
  EXPECT_FALSE(IsInTaskbar());
  // A new taskbar that is busy gets the icon later.
  taskbar.Fail(1, INT_MAX);
  SendMessageW(window->hwnd(), RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
  taskbar.LetAllThrough();
  EXPECT_TRUE(PumpUntil([&] { return taskbar.Calls() > 0; }));
  EXPECT_FALSE(window->Visible());
}

TEST_F(FrmMainTrayTest, ATaskbarThatHangsIsAskedAgainAfterHalfAMinute) {
  std::uint64_t now = 0;
  std::uint64_t answersIn = 1'001;
  milliseconds = [&] { return now += answersIn; };
  Open();
  FailingImport taskbar({"Shell_NotifyIconW"});
  taskbar.Fail(1, INT_MAX);
  Close();
  EXPECT_TRUE(PumpUntil([&] { return taskbar.Calls() == 2; })) << "not tried again";
  answersIn = 0;
  now += 29'999;
  LetSecondsPass(2);
  EXPECT_EQ(taskbar.Calls(), 2);
  now += 1;
  EXPECT_TRUE(PumpUntil([&] { return taskbar.Calls() > 2; }));
  EXPECT_TRUE(window->Visible());
}

TEST_F(FrmMainTrayTest, DoesNotHideLaterIfTheUserBringsItBack) {
  const std::function<void()> ways[] = {[this] { ShowWindow(window->hwnd(), SW_RESTORE); },
                                        [this] { ChooseInTrayMenu(1); }};
  for (const auto& bringBack : ways) {
    Open();
    FailingImport taskbar({"Shell_NotifyIconW"});
    taskbar.Fail(1, INT_MAX);
    Close();
    bringBack();
    taskbar.LetAllThrough();
    LetSecondsPass(1);
    EXPECT_EQ(taskbar.Calls(), 0);
    EXPECT_TRUE(window->Visible());
    EXPECT_TRUE(IsInTaskbar());
  }
}

TEST_F(FrmMainTrayTest, TheIconNamesFailedTasksWhileTheWindowIsHidden) {
  SKIP_UNLESS_WINE("the icon is looked for in the window that Wine has in place of a taskbar");
  // On a busy machine the taskbar would count as slow, and get no new tip for half a minute.
  milliseconds = [] { return 1'000'000; };
  Tasks({{kApplication, L"no-such-program"}, {kLocalMusic, L"missing.mp3"}});
  Open();
  // Away from the tray's window.
  window->Move(TwipsFromPixels(800), TwipsFromPixels(400));
  Select(0);
  window->RunSelectedTask();
  window->FormMin();
  EXPECT_TRUE(ShowsTrayTip(L"Tellurvane：1 個排程失敗"));
  Select(1);
  window->RunSelectedTask();
  EXPECT_TRUE(ShowsTrayTip(L"Tellurvane：2 個排程失敗"));
  // The window is visible, and its icon stays.
  ChooseInTrayMenu(1);
  ASSERT_TRUE(window->Visible());
  EXPECT_TRUE(ShowsTrayTip(L"Tellurvane"));
  window->FormMin();
  for (TaskRecord& task : general->tasks) task.MediaType = kReminderNote;
  for (const int row : {0, 1}) {
    Select(row);
    window->RunSelectedTask();
  }
  EXPECT_TRUE(ShowsTrayTip(L"Tellurvane"));
}

TEST_F(FrmMainTrayTest, TheIconHasItsTipFromTheBeginning) {
  SKIP_UNLESS_WINE("the icon is looked for in the window that Wine has in place of a taskbar");
  Tasks({{kApplication, L"no-such-program"}});
  Open();
  // The first call of a delay-loaded function is not counted like the others.
  window->FormMin();
  window->FormMin();
  Select(0);
  window->RunSelectedTask();
  FailingImport taskbar({"Shell_NotifyIconW"});
  // The icon is added and its version set.
  taskbar.Fail(3, INT_MAX);
  window->FormMin();
  EXPECT_TRUE(ShowsTrayTip(L"Tellurvane：1 個排程失敗"));
}

TEST_F(FrmMainTrayTest, ATipThatTheTaskbarDidNotTakeIsShownLater) {
  SKIP_UNLESS_WINE("the icon is looked for in the window that Wine has in place of a taskbar");
  Tasks({{kApplication, L"no-such-program"}});
  Open();
  Select(0);
  window->FormMin();
  FailingImport taskbar({"Shell_NotifyIconW"});
  taskbar.Fail(1, INT_MAX);
  std::uint64_t now = GetTickCount64();
  // A slow taskbar.
  milliseconds = [&] { return now + 1'001 * static_cast<std::uint64_t>(taskbar.Calls()); };
  window->RunSelectedTask();
  EXPECT_TRUE(PumpUntil([&] { return taskbar.Calls() == 1; }));
  LetSecondsPass(2);
  EXPECT_EQ(taskbar.Calls(), 1) << "asked again too soon";
  now += 30'000;
  EXPECT_TRUE(PumpUntil([&] { return taskbar.Calls() == 2; }));
  now += 100'000;
  taskbar.LetAllThrough();
  EXPECT_TRUE(ShowsTrayTip(L"Tellurvane：1 個排程失敗"));
  taskbar.LetAllThrough();
  LetSecondsPass(2);
  EXPECT_EQ(taskbar.Calls(), 0) << "it is asked only for a new text";
}

TEST_F(FrmMainTrayTest, EnterRunsNothingWhileTheWindowIsHidden) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}});
  Open();
  Select(0);
  // Unlike the close box this does not minimise the window.
  SendToIcon(WM_LBUTTONDOWN);
  ASSERT_FALSE(window->Visible());
  // Like the tray menu.
  SetForegroundWindow(window->hwnd());
  SetFocus(list);
  ASSERT_EQ(GetFocus(), list);
  Taken();
  PostMessageW(list, WM_KEYDOWN, VK_RETURN, 1);
  Pump();
  EXPECT_EQ(Taken().size(), 0U);
}

TEST_F(FrmMainTrayTest, TheFirstEntryBringsACoveredOrMinimisedWindowToTheFront) {
  for (const bool isMinimised : {false, true}) {
    Open();
    if (isMinimised) Minimise();
    OtherWindow other;
    ChooseInTrayMenu(1);
    EXPECT_FALSE(IsIconic(window->hwnd()));
    EXPECT_TRUE(PumpUntil([&] { return GetForegroundWindow() == window->hwnd(); }));
    const HWND focus = GetFocus();
    EXPECT_TRUE(focus == window->hwnd() || IsChild(window->hwnd(), focus));
  }
}

TEST_F(FrmMainTrayTest, HidesWhenItIsMinimisedWithoutATaskbarButton) {
  Open();
  Minimise();
  EXPECT_TRUE(window->Visible()) << "it has a taskbar button";
  window->FormMin();
  ChooseInTrayMenu(1);
  ASSERT_TRUE(window->Visible());
  ASSERT_FALSE(IsInTaskbar());
  // As while a dialog is open.
  window->Enabled(false);
  Minimise();
  EXPECT_TRUE(window->Visible());
  EXPECT_FALSE(IsIconic(window->hwnd()));
  window->Enabled(true);
  Minimise();
  EXPECT_FALSE(window->Visible());
  // Another program sends no command.
  ChooseInTrayMenu(1);
  ASSERT_TRUE(window->Visible());
  ShowWindow(window->hwnd(), SW_MINIMIZE);
  EXPECT_TRUE(PumpUntil([&] { return !window->Visible(); }));
}

TEST_F(FrmMainTrayTest, TheIconBringsAnOpenDialogToTheFront) {
  Open();
  OtherWindow other;
  DialogOf dialog(window->hwnd());
  Timer user;
  user.Interval(20);
  user.Tick = [&] {
    user.Enabled(false);
    other.ComeToFront();
    HWND inFront = nullptr;
    InTrayMenu([&] {
      inFront = GetForegroundWindow();
      EndMenu();
    });
    EXPECT_EQ(inFront, dialog.hwnd()) << "for the menu";
    EXPECT_EQ(GetForegroundWindow(), other.hwnd());
    SendToIcon(WM_LBUTTONDOWN);
    EXPECT_TRUE(window->Visible());
    EXPECT_TRUE(PumpUntil([&] { return GetForegroundWindow() == dialog.hwnd(); }));
    dialog.Unload();
  };
  user.Enabled(true);
  dialog.ShowModal();
  EXPECT_TRUE(window->Visible());
}

TEST_F(FrmMainTrayTest, HiddenWindowAndClockAreInTheForegroundOnlyForTheirMenus) {
  Open();
  Close();
  OtherWindow other;
  CaughtMessage afterwards(window->hwnd(), WM_NULL);
  HWND inFront = nullptr;
  InTrayMenu([&] {
    inFront = GetForegroundWindow();
    EndMenu();
  });
  EXPECT_EQ(inFront, window->hwnd());
  EXPECT_FALSE(window->Visible());
  EXPECT_EQ(GetForegroundWindow(), other.hwnd());
  Pump();
  EXPECT_THAT(afterwards.Taken(), SizeIs(1));
  ChooseInTrayMenu(2);
  EXPECT_TRUE(IsWindowVisible(Clock()));
  EXPECT_EQ(GetForegroundWindow(), other.hwnd()) << "also after a command";
  InOpenMenu([this] { SendMouse(Clock(), WM_RBUTTONDOWN, 36, 36, MK_RBUTTON); },
             [&] {
               inFront = GetForegroundWindow();
               PostMessageW(inFront, WM_KEYDOWN, VK_ESCAPE, 0);
             });
  EXPECT_EQ(inFront, Clock());
  EXPECT_EQ(GetForegroundWindow(), other.hwnd());
  OtherWindow clicked;
  other.ComeToFront();
  InTrayMenu([&] {
    SetForegroundWindow(clicked.hwnd());
    EndMenu();
  });
  Pump();
  EXPECT_EQ(GetForegroundWindow(), clicked.hwnd());
}

}  // namespace
}  // namespace tellurvane

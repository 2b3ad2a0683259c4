// The main window and its tray icon: hiding, coming back, the menu, and what keeps the window.
#include <gmock/gmock.h>

#include <climits>
#include <functional>
#include <string>

#include "tests/mainwin/FrmMainFixture.h"
#include "tests/support/FailingImport.h"
#include "ui/Timer.h"

namespace tellurvane {
namespace {

using testing::SizeIs;

// The X server tells of the keyboard a moment after a window was shown, and Wine then makes that
// window the foreground again. Half a second is long enough for it.
void LetFocusSettle() {
  bool isOver = false;
  Timer timer;
  timer.Interval(500);
  timer.Tick = [&] { isOver = true; };
  timer.Enabled(true);
  EXPECT_TRUE(PumpUntil([&] { return isOver; }));
}

// A window in the foreground that is none of the program's own.
class OtherWindow : public TestForm {
 public:
  OtherWindow() : TestForm(800, 600) { ComeToFront(); }

  void ComeToFront() {
    LetFocusSettle();
    SetForegroundWindow(hwnd());
    LetFocusSettle();
    EXPECT_TRUE(PumpUntil([&] { return GetForegroundWindow() == hwnd(); }));
  }
};

// A dialog of the window's, as the editor is one.
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
  // As the taskbar does.
  void TellIcon(UINT message) const {
    const HWND box = FindWindowExW(window->hwnd(), nullptr, nullptr, L"NotifyIcon");
    SendMessageW(box, WM_MOUSEMOVE, 0, static_cast<LPARAM>(message));
  }
  bool IsInTaskbar() const {
    return (GetWindowLongPtrW(window->hwnd(), GWL_EXSTYLE) & WS_EX_APPWINDOW) != 0;
  }
  void Close() const { SendMessageW(window->hwnd(), WM_CLOSE, 0, 0); }
  void Minimise() const { SendMessageW(window->hwnd(), WM_SYSCOMMAND, SC_MINIMIZE, 0); }

  // Does something inside the menu's own loop, which it has to end. `open` opens the menu.
  static void InMenu(const std::function<void()>& open, const std::function<void()>& act) {
    Timer timer;
    timer.Interval(20);
    timer.Tick = [&] {
      if (!IsWindowVisible(FindWindowW(L"#32768", nullptr))) return;
      timer.Enabled(false);
      act();
    };
    Timer limit;
    limit.Interval(8'000);
    limit.Tick = [&] {
      ADD_FAILURE() << "the menu stayed open";
      EndMenu();
    };
    timer.Enabled(true);
    limit.Enabled(true);
    open();
    EXPECT_FALSE(timer.Enabled()) << "no menu came up";
  }
  void InTrayMenu(const std::function<void()>& act) {
    InMenu([this] { TellIcon(WM_RBUTTONDOWN); }, act);
  }
  // Entries are counted from 1.
  void ChooseInTrayMenu(int entry) {
    InTrayMenu([&] {
      for (int i = 0; i < entry; ++i) PostMessageW(window->hwnd(), WM_KEYDOWN, VK_DOWN, 0);
      PostMessageW(window->hwnd(), WM_KEYDOWN, VK_RETURN, 0);
    });
    Pump();
  }

  // Long enough for so many ticks of the window's own timers.
  static void LetSecondsPass(int seconds) {
    int ticks = 0;
    Timer timer;
    timer.Tick = [&] { ++ticks; };
    timer.Enabled(true);
    EXPECT_TRUE(PumpUntil([&] { return ticks > seconds; }, std::chrono::seconds(30)));
  }
};

TEST_F(FrmMainTrayTest, NoCloseMessageEndsTheWindowThroughItsHiddenOwner) {
  Open();
  const HWND owner = GetWindow(window->hwnd(), GW_OWNER);
  ASSERT_NE(owner, nullptr);
  SendMessageW(owner, WM_CLOSE, 0, 0);
  EXPECT_TRUE(IsWindow(owner));
  EXPECT_TRUE(window->IsLoaded());
  EXPECT_TRUE(window->Visible());
}

TEST_F(FrmMainTrayTest, ACloseMessageToAHiddenWindowShowsNothing) {
  Open();
  Close();
  CaughtMessage shown(window->hwnd(), WM_SHOWWINDOW);
  Close();
  EXPECT_THAT(shown.Taken(), SizeIs(0));
  EXPECT_FALSE(window->Visible());
}

TEST_F(FrmMainTrayTest, HidesOnlyOnceTheTaskbarHasTakenTheIcon) {
  Open();
  FailingImport taskbar({"Shell_NotifyIconW"});
  taskbar.Fail(1, INT_MAX);
  Close();
  EXPECT_GT(taskbar.Calls(), 0);
  EXPECT_TRUE(window->Visible());
  EXPECT_TRUE(IsInTaskbar());
  // Still refused at the next tick.
  const int calls = taskbar.Calls();
  EXPECT_TRUE(PumpUntil([&] { return taskbar.Calls() > calls; })) << "not tried again";
  EXPECT_TRUE(window->Visible());
  taskbar.LetAllThrough();
  EXPECT_TRUE(PumpUntil([&] { return !window->Visible(); })) << "not tried again";
  EXPECT_FALSE(IsInTaskbar());
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

TEST_F(FrmMainTrayTest, AWindowThatIsBroughtBackBeforeTheIconIsThereStays) {
  Open();
  FailingImport taskbar({"Shell_NotifyIconW"});
  taskbar.Fail(1, INT_MAX);
  Close();
  ShowWindow(window->hwnd(), SW_RESTORE);
  taskbar.LetAllThrough();
  LetSecondsPass(2);
  EXPECT_EQ(taskbar.Calls(), 0);
  EXPECT_TRUE(window->Visible());
  EXPECT_TRUE(IsInTaskbar());
}

TEST_F(FrmMainTrayTest, AWindowThatIsBroughtToTheFrontMeanwhileStays) {
  Open();
  FailingImport taskbar({"Shell_NotifyIconW"});
  taskbar.Fail(1, INT_MAX);
  TellIcon(WM_LBUTTONDOWN);
  ASSERT_TRUE(window->Visible()) << "the taskbar did not take the icon";
  ChooseInTrayMenu(1);
  taskbar.LetAllThrough();
  LetSecondsPass(2);
  EXPECT_TRUE(window->Visible());
}

TEST_F(FrmMainTrayTest, IsNotMinimisedFromUnderADialog) {
  Open();
  Close();
  ChooseInTrayMenu(1);
  ASSERT_TRUE(window->Visible());
  window->Enabled(false);
  Minimise();
  EXPECT_TRUE(window->Visible());
  EXPECT_FALSE(IsIconic(window->hwnd()));
  window->Enabled(true);
  Minimise();
  EXPECT_FALSE(window->Visible());
}

TEST_F(FrmMainTrayTest, EnterRunsNothingWhileTheWindowIsHidden) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}});
  Open();
  Select(0);
  // Unlike the close box this does not minimise it too.
  TellIcon(WM_LBUTTONDOWN);
  ASSERT_FALSE(window->Visible());
  // As for the tray icon's menu.
  SetForegroundWindow(window->hwnd());
  SetFocus(list);
  ASSERT_EQ(GetFocus(), list);
  Taken();
  SendMessageW(window->hwnd(), WM_COMMAND, IDOK, 0);
  EXPECT_EQ(Taken().size(), 0U);
}

TEST_F(FrmMainTrayTest, AnIconThatTheNewTaskbarDidNotTakeIsAddedAgain) {
  Open();
  Close();
  FailingImport taskbar({"Shell_NotifyIconW"});
  taskbar.Fail(1, INT_MAX);
  SendMessageW(window->hwnd(), RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
  taskbar.LetAllThrough();
  EXPECT_TRUE(PumpUntil([&] { return taskbar.Calls() > 0; }));
  EXPECT_FALSE(window->Visible());
}

TEST_F(FrmMainTrayTest, TheFirstEntryBringsACoveredWindowToTheFront) {
  Open();
  OtherWindow other;
  ChooseInTrayMenu(1);
  EXPECT_TRUE(PumpUntil([&] { return GetForegroundWindow() == window->hwnd(); }));
  const HWND focus = GetFocus();
  EXPECT_TRUE(focus == window->hwnd() || IsChild(window->hwnd(), focus));
}

TEST_F(FrmMainTrayTest, TheFirstEntryRestoresAMinimisedWindow) {
  Open();
  Minimise();
  ASSERT_TRUE(IsIconic(window->hwnd()));
  OtherWindow other;
  ChooseInTrayMenu(1);
  EXPECT_FALSE(IsIconic(window->hwnd()));
  EXPECT_TRUE(PumpUntil([&] { return GetForegroundWindow() == window->hwnd(); }));
}

TEST_F(FrmMainTrayTest, AWindowShownByTheMenuGoesBehindItsIconWhenItIsMinimised) {
  Open();
  Minimise();
  EXPECT_TRUE(window->Visible()) << "it has a taskbar button";
  window->FormMin();
  ChooseInTrayMenu(1);
  ASSERT_TRUE(window->Visible());
  ASSERT_FALSE(IsInTaskbar());
  Minimise();
  EXPECT_FALSE(window->Visible());
  // And by another program, which sends no command.
  ChooseInTrayMenu(1);
  ASSERT_TRUE(window->Visible());
  ShowWindow(window->hwnd(), SW_MINIMIZE);
  EXPECT_TRUE(PumpUntil([&] { return !window->Visible(); }));
}

TEST_F(FrmMainTrayTest, AClickOnTheIconDoesNotHideTheWindowUnderADialogButRaisesThat) {
  Open();
  OtherWindow other;
  DialogOf dialog(window->hwnd());
  Timer user;
  user.Interval(20);
  user.Tick = [&] {
    user.Enabled(false);
    other.ComeToFront();
    TellIcon(WM_LBUTTONDOWN);
    EXPECT_TRUE(window->Visible());
    EXPECT_TRUE(PumpUntil([&] { return GetForegroundWindow() == dialog.hwnd(); }));
    dialog.Unload();
  };
  user.Enabled(true);
  dialog.ShowModal();
  EXPECT_TRUE(window->Visible());
}

TEST_F(FrmMainTrayTest, TheHiddenWindowIsInTheForegroundForItsMenuAndGivesItBack) {
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
}

TEST_F(FrmMainTrayTest, ADialogIsInTheForegroundForTheMenu) {
  Open();
  OtherWindow other;
  DialogOf dialog(window->hwnd());
  HWND inFront = nullptr;
  Timer user;
  user.Interval(20);
  user.Tick = [&] {
    user.Enabled(false);
    other.ComeToFront();
    InTrayMenu([&] {
      inFront = GetForegroundWindow();
      EndMenu();
    });
    EXPECT_EQ(GetForegroundWindow(), other.hwnd());
    dialog.Unload();
  };
  user.Enabled(true);
  const HWND expected = dialog.hwnd();
  dialog.ShowModal();
  EXPECT_EQ(inFront, expected);
}

TEST_F(FrmMainTrayTest, WhoeverWasClickedInsteadOfTheMenuKeepsTheForeground) {
  Open();
  Close();
  OtherWindow before;
  OtherWindow clicked;
  before.ComeToFront();
  InTrayMenu([&] {
    SetForegroundWindow(clicked.hwnd());
    EndMenu();
  });
  Pump();
  EXPECT_EQ(GetForegroundWindow(), clicked.hwnd());
}

TEST_F(FrmMainTrayTest, ARightPressActivatesTheClockForTheMenuAndADismissedOneGivesItBack) {
  WriteBytes(folder.File(L"Setting.ini"), WholeSettings{.timeForm = L"1"}.Bytes());
  Open();
  ASSERT_NE(Clock(), nullptr);
  OtherWindow other;
  HWND inFront = nullptr;
  InMenu([this] { SendMouse(Clock(), WM_RBUTTONDOWN, 36, 36, MK_RBUTTON); },
         [&] {
           inFront = GetForegroundWindow();
           PostMessageW(inFront, WM_KEYDOWN, VK_ESCAPE, 0);
         });
  EXPECT_EQ(inFront, Clock());
  EXPECT_EQ(GetForegroundWindow(), other.hwnd());
}

TEST_F(FrmMainTrayTest, TheProgramThatHadTheForegroundHasItAfterTheClockIsSwitched) {
  Open();
  Close();
  OtherWindow other;
  ChooseInTrayMenu(2);
  ASSERT_NE(Clock(), nullptr);
  EXPECT_TRUE(IsWindowVisible(Clock()));
  EXPECT_EQ(GetForegroundWindow(), other.hwnd());
}

}  // namespace
}  // namespace tellurvane

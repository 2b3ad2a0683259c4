// The keyboard's way from the main window through the notes and the clock.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/mainwin/FrmMainKeysFixture.h"
#include "tests/support/OtherWindow.h"

namespace tellurvane {
namespace {

class FrmMainTourTest : public FrmMainKeysTest {
 protected:
  void SetUp() override {
    WriteBytes(folder.File(L"Setting.ini"), WholeSettings{.timeForm = L"1"}.Bytes());
    Tasks({{kReminderNote, L"a"}, {kReminderNote, L"b"}});
    Open();
    ShowNote(0);
    ShowNote(1);
  }
  void ShowNote(int row) {
    Select(row);
    window->RunSelectedTask();
    Pump();
  }
  std::string InFront() const {
    const HWND front = GetForegroundWindow();
    if (front == window->hwnd()) return "main";
    const std::wstring name = WindowText(front);
    if (name == L"FrmTime") return "clock";
    return name == L"frmNotes" ? "note " + std::string(1, static_cast<char>(ClassOf(front).back()))
                               : "something else";
  }
  void Tour(const std::vector<std::string>& stops) {
    for (const std::string& stop : stops) {
      Key(VK_F6);
      EXPECT_EQ(InFront(), stop);
    }
  }
  // Like a click: the window with the keyboard is known only before it.
  void ClickOn(HWND note) const {
    LetFocusSettle();
    SendMessageW(note, WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(note),
                 MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN));
    SetForegroundWindow(note);
    LetFocusSettle();
    EXPECT_EQ(GetForegroundWindow(), note);
  }
  static HWND Note(const wchar_t* number) {
    return FindWindowW((std::wstring(L"frmNotes") + number).c_str(), nullptr);
  }
};

TEST_F(FrmMainTourTest, F6GoesThroughTheNotesAndTheClockAndBackToTheWindow) {
  EXPECT_EQ(InFront(), "main") << "no note takes the keyboard";
  Tour({"note 1", "note 2", "clock", "main", "note 1"});
  ShowNote(0);
  EXPECT_EQ(InFront(), "note 1");
  Tour({"note 2", "note 3", "clock", "main"});
  EXPECT_EQ(Focused(), "list");
}

TEST_F(FrmMainTourTest, F6PassesOverAHiddenWindowAndAHiddenClock) {
  ShowWindow(FindWindowW(nullptr, L"FrmTime"), SW_HIDE);
  Tour({"note 1", "note 2", "main", "note 1"});
  ShowWindow(FindWindowW(nullptr, L"FrmTime"), SW_SHOWNA);
  window->Hide();
  LetFocusSettle();
  Tour({"note 2", "clock", "note 1"});
}

TEST_F(FrmMainTourTest, EscAndEnterCloseTheNoteAndGiveTheKeyboardBack) {
  Tour({"note 1", "note 2"});
  Key(VK_ESCAPE);
  EXPECT_EQ(InFront(), "main") << "not the note that was passed";
  EXPECT_EQ(Focused(), "list");
  EXPECT_EQ(Note(L"2"), nullptr);
  Tour({"note 1"});
  Key(VK_RETURN);
  EXPECT_EQ(InFront(), "main");
  EXPECT_EQ(Note(L"1"), nullptr);
  Tour({"clock"});
  Key(VK_ESCAPE);
  EXPECT_EQ(InFront(), "main");
  EXPECT_NE(FindWindowW(nullptr, L"FrmTime"), nullptr) << "Esc leaves the clock open";
}

TEST_F(FrmMainTourTest, AClickedNoteGivesTheKeyboardBackToTheWindowThatHadIt) {
  // With a frame: the window manager gives the keyboard to no other window.
  Form other;
  other.Load({.caption = L"other", .widthTwips = 3'000, .heightTwips = 1'500});
  other.Show();
  LetFocusSettle();
  SetForegroundWindow(other.hwnd());
  LetFocusSettle();
  ClickOn(Note(L"1"));
  ClickOn(Note(L"2"));
  EXPECT_EQ(InFront(), "note 2");
  Key(VK_ESCAPE);
  EXPECT_EQ(Note(L"2"), nullptr);
  EXPECT_TRUE(PumpUntil([&] { return GetForegroundWindow() == other.hwnd(); })) << InFront();
  ClickOn(Note(L"1"));
  other.Hide();
  Key(VK_ESCAPE);
  EXPECT_EQ(InFront(), "main") << "the other window is gone";
}

TEST_F(FrmMainTourTest, TheMenuKeyOpensTheClocksMenuAndHidingItGivesTheKeyboardBack) {
  Tour({"note 1", "note 2", "clock"});
  const HWND clock = GetForegroundWindow();
  ChooseInMenu([&] { SendMessageW(clock, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(clock), -1); },
               clock, 2);
  EXPECT_FALSE(IsWindowVisible(clock));
  EXPECT_EQ(InFront(), "main");
  EXPECT_EQ(general->settings.TimeForm, 0);
}

TEST_F(FrmMainTourTest, F6WithNothingToGoToStaysInTheWindow) {
  for (const wchar_t* const number : {L"1", L"2"}) SendMessageW(Note(number), WM_CLOSE, 0, 0);
  ShowWindow(FindWindowW(nullptr, L"FrmTime"), SW_HIDE);
  Tour({"main", "main"});
  EXPECT_EQ(Focused(), "list");
}

TEST_F(FrmMainTourTest, F6GoesThroughTheNotesAndBackToAnOpenEditor) {
  ActingForm user;
  user.ActLater([&] {
    const HWND editor = GetLastActivePopup(window->hwnd());
    ASSERT_NE(editor, window->hwnd());
    LetFocusSettle();
    ClickOn(Note(L"2"));
    Tour({"clock"});
    Key(VK_F6);
    EXPECT_EQ(GetForegroundWindow(), editor) << "the window itself waits";
    EndDialogWindow(editor);
  });
  Press(kNew);
}

// Keys may still be on their way when the user goes to another program.
TEST_F(FrmMainTourTest, AClockThatIsNoLongerInFrontGivesNoKeyboardAway) {
  Tour({"note 1", "note 2", "clock"});
  const HWND clock = GetForegroundWindow();
  OtherWindow other;
  PostMessageW(clock, WM_KEYDOWN, VK_ESCAPE, 1);
  Pump();
  EXPECT_EQ(GetForegroundWindow(), other.hwnd());
}

// The end of an active clock would activate a note, which draws its frame with GDI+.
TEST_F(FrmMainTourTest, LeavingFromTheClockActivatesTheWindowBeforeTheEndOfGdiPlus) {
  std::string active;
  window->SetReleaseProcess(
      [&] { active = GetActiveWindow() == window->hwnd() ? "main" : "other"; });
  Tour({"note 1", "note 2", "clock"});
  Press(kLeave);
  Pump();
  EXPECT_FALSE(window->IsLoaded());
  EXPECT_EQ(active, "main");
}

}  // namespace
}  // namespace tellurvane

// The main window by keyboard alone.
#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/mainwin/FrmMainKeysFixture.h"

namespace tellurvane {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(FrmMainKeysTest, AtTheStartTheListHasTheKeyboardAndItsFirstRowTheFocus) {
  Tasks({{kReminderNote, L"a"}, {kReminderNote, L"b"}});
  Open();
  EXPECT_EQ(Focused(), "list");
  EXPECT_EQ(RowThatIs(LVNI_FOCUSED), 0);
  EXPECT_EQ(RowThatIs(LVNI_SELECTED), -1);
}

TEST_F(FrmMainKeysTest, TabGoesThroughToolbarListVolumeAndPositionAndRound) {
  Open();
  const auto order = [this] {
    std::string names = Focused();
    for (int i = 0; i < 4; ++i) {
      Key(VK_TAB);
      names += " " + Focused();
    }
    return names;
  };
  EXPECT_EQ(order(), "list volume toolbar list volume") << "nothing to set a position in";
  EnableWindow(PositionSlider(), TRUE);
  SetFocus(list);
  EXPECT_EQ(order(), "list volume position toolbar list");
}

TEST_F(FrmMainKeysTest, EnterF2AndSpaceTakeTheSelectedRowElseTheFocusedOne) {
  struct Row {
    const char* what;
    int selected, focused;
    size_t taken;
  };
  for (const auto& [what, selected, focused, taken] :
       {Row{"at the start", -1, 0, 0}, Row{"no selection", -1, 2, 2}, Row{"selected", 1, 1, 1},
        Row{"focus elsewhere", 1, 2, 1}}) {
    const auto open = [&, selected = selected, focused = focused] {
      Tasks({{kInternetRadio, L"http://a/"},
             {kInternetRadio, L"http://b/"},
             {kInternetRadio, L"http://c/"}});
      Open();
      if (selected >= 0) Select(selected);
      Focus(focused);
    };
    open();
    Key(VK_RETURN);
    for (size_t row = 0; row < 3; ++row) EXPECT_EQ(HasRun(row), row == taken) << what << row;
    EXPECT_EQ(RowThatIs(LVNI_SELECTED), static_cast<int>(taken)) << what << ": continuous play";
    open();
    Key(VK_SPACE);
    for (size_t row = 0; row < 3; ++row) {
      EXPECT_EQ(general->tasks[row].Enabled, row != taken) << what << row;
    }
    open();
    EXPECT_EQ(EditedBy(VK_F2, list), L"task " + std::to_wstring(taken)) << what;
  }
}

TEST_F(FrmMainKeysTest, WithoutARowTheyDoNothing) {
  Open();
  Taken();
  for (const UINT key : {VK_RETURN, VK_SPACE}) Key(key);
  EXPECT_EQ(EditedBy(VK_F2, list), L"");
  EXPECT_THAT(Taken(), IsEmpty());
  EXPECT_TRUE(general->tasks.empty());
  EXPECT_EQ(EditedBy(VK_INSERT, list), L"新的排程專案");
}

TEST_F(FrmMainKeysTest, OutsideTheListEnterAndSpaceAreTheControlsAndTheOtherKeysWork) {
  Tasks({{kInternetRadio, L"http://a/"}});
  Open();
  Taken();
  SetFocus(VolumeSlider());
  for (const UINT key : {VK_RETURN, VK_SPACE}) Key(key);
  EXPECT_THAT(Taken(), IsEmpty());
  EXPECT_TRUE(general->tasks[0].Enabled);
  EXPECT_EQ(EditedBy(VK_INSERT, VolumeSlider()), L"新的排程專案");
  EXPECT_EQ(Focused(), "volume") << "back where it was";
}

TEST_F(FrmMainKeysTest, AKeyThatIsHeldDownActsOnce) {
  Tasks({{kInternetRadio, L"http://a/"}});
  Open();
  Taken();
  constexpr LPARAM kRepeated = 0x4000'0001;
  Key(VK_SPACE);
  for (const UINT key : {VK_SPACE, VK_RETURN, VK_INSERT}) Key(key, WM_KEYDOWN, kRepeated);
  EXPECT_FALSE(general->tasks[0].Enabled);
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(FrmMainKeysTest, EachStopKeyStopsWhatPlaysAndElseDoesNothing) {
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"Ctrl+S", [this] { ControlAnd('S'); }},
      {"media stop", [this] { Key(VK_MEDIA_STOP); }},
      {"application command", [this] {
         SendMessageW(list, WM_APPCOMMAND, reinterpret_cast<WPARAM>(list),
                      MAKELPARAM(0, APPCOMMAND_MEDIA_STOP));
       }}};
  for (const auto& [way, stop] : ways) {
    Tasks({{kInternetRadio, L"http://a/"}});
    Open();
    Taken();
    stop();
    EXPECT_THAT(Taken(), IsEmpty()) << way;
    Key(VK_RETURN);
    ASSERT_TRUE(IsOn(kStop));
    Taken();
    SendMessageW(list, WM_APPCOMMAND, reinterpret_cast<WPARAM>(list),
                 MAKELPARAM(0, APPCOMMAND_MEDIA_PLAY_PAUSE));
    EXPECT_TRUE(IsOn(kStop)) << "another command";
    stop();
    EXPECT_THAT(Taken(), Contains(L"stop")) << way;
    EXPECT_FALSE(IsOn(kStop)) << way;
  }
}

TEST_F(FrmMainKeysTest, TheMenuKeyTakesTheFramedRow) {
  Tasks({{kInternetRadio, L"http://a/"}, {kInternetRadio, L"http://b/"}});
  Open();
  Focus(1);
  int selected = -1;
  InOpenMenu([&] { SendMessageW(list, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list), -1); },
             [&] {
               selected = RowThatIs(LVNI_SELECTED);
               EndMenu();
             });
  EXPECT_EQ(selected, 1);
}

TEST_F(FrmMainKeysTest, AMenuActsOnTheTaskItNamesThoughAnotherIsSelectedMeanwhile) {
  Tasks({{kInternetRadio, L"http://a/"}, {kInternetRadio, L"http://b/"}});
  Open();
  Select(0);
  InOpenMenu([&] { SendMessageW(list, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list), -1); },
             [&] {
               Select(1);
               // The last entry switches the task.
               for (const UINT key : {VK_UP, VK_RETURN}) {
                 PostMessageW(window->hwnd(), WM_KEYDOWN, key, 0);
               }
             });
  EXPECT_FALSE(general->tasks[0].Enabled);
  EXPECT_TRUE(general->tasks[1].Enabled);
}

TEST_F(FrmMainKeysTest, F10AndTheToolbarsOwnKeyOpenTheOptionsBelowTheirButton) {
  if (GetSystemMetrics(SM_MENUDROPALIGNMENT) != 0) GTEST_SKIP() << "menus drop to the left here";
  Open();
  RECT button = {};
  SendMessageW(toolbar, TB_GETRECT, kOptions, reinterpret_cast<LPARAM>(&button));
  MapWindowPoints(toolbar, nullptr, reinterpret_cast<POINT*>(&button), 2);
  const auto menuAfter = [](const std::function<void()>& open) {
    RECT place = {};
    InOpenMenu(open, [&] {
      place = OnScreen(FindWindowW(L"#32768", nullptr));
      EndMenu();
    });
    return std::pair(place.left, place.top);
  };
  SetCursorPos(300, 300);
  const std::pair below(button.left, button.bottom);
  EXPECT_EQ(menuAfter([&] { Key(VK_F10, WM_SYSKEYDOWN); }), below);
  SetFocus(toolbar);
  EXPECT_EQ(menuAfter([&] {
              Post(VK_END);
              Post(VK_LEFT);
              Key(VK_RETURN);
            }),
            below);
  EXPECT_EQ(menuAfter([&] { Press(kOptions); }), (std::pair<LONG, LONG>(300, 300))) << "the mouse";
  EXPECT_EQ(Focused(), "toolbar");
}

TEST_F(FrmMainKeysTest, EachToolTipNamesItsKey) {
  Open();
  const std::wstring tips[] = {L"新 增 (Insert)", L"播 放 (Enter)", L"停 止 (Ctrl+S)",
                               L"設 定 (F10)", L"離 開 (Ctrl+Q)"};
  UINT_PTR id = 0;
  for (const std::wstring& tip : tips) {
    NMTTDISPINFOA request = {};
    request.hdr.code = TTN_GETDISPINFOA;
    request.hdr.idFrom = ++id;
    SendMessageW(GetParent(toolbar), WM_NOTIFY, id, reinterpret_cast<LPARAM>(&request));
    char expected[64] = {};
    WideCharToMultiByte(CP_ACP, 0, tip.c_str(), -1, expected, sizeof(expected), nullptr, nullptr);
    EXPECT_STREQ(request.lpszText, expected);
  }
}

TEST_F(FrmMainKeysTest, CtrlQLeaves) {
  Open();
  ControlAnd('Q');
  EXPECT_FALSE(window->IsLoaded());
}

TEST_F(FrmMainKeysTest, ASliderThatIsDisabledGivesTheKeyboardToTheList) {
  Tasks({{kLocalMusic, folder.File(L"Setting.ini")}});
  Open();
  player.duration = 10;
  for (const bool byRun : {false, true}) {
    Key(VK_RETURN);
    ASSERT_TRUE(PumpUntil([&] { return IsWindowEnabled(PositionSlider()) != FALSE; }));
    SetFocus(PositionSlider());
    // A run stops the music while the list is disabled.
    if (byRun) {
      window->RunSelectedTask();
    } else {
      Press(kStop);
    }
    EXPECT_EQ(Focused(), "list") << byRun;
  }
}

// On a German or Polish keyboard the right Alt key types a letter: it is Ctrl and Alt together.
TEST_F(FrmMainKeysTest, AltGrWithQOrSDoesNothing) {
  Tasks({{kInternetRadio, L"http://a/"}});
  Open();
  Key(VK_RETURN);
  ASSERT_TRUE(IsOn(kStop));
  const HeldKeys held({VK_CONTROL, VK_MENU});
  for (const UINT key : {'Q', 'S'}) Key(key);
  EXPECT_TRUE(window->IsLoaded());
  EXPECT_TRUE(IsOn(kStop));
}

// A player may handle messages while it starts. The editor opens then by its buttons too.
TEST_F(FrmMainKeysTest, DuringARunOnlyTheKeysOfTheEditorWork) {
  Tasks({{kInternetRadio, L"http://a/"}});
  Open();
  bool wasDisabled = false;
  player.whilePlaying = [&] {
    wasDisabled = IsWindowEnabled(Area()) == FALSE;
    const size_t calls = player.calls.size();
    for (const UINT key : {VK_RETURN, VK_SPACE}) EXPECT_EQ(EditedBy(key, nullptr), L"");
    EXPECT_TRUE(general->tasks[0].Enabled);
    EXPECT_THAT(player.calls, SizeIs(calls));
    EXPECT_EQ(EditedBy(VK_F2, nullptr), L"task 0");
    EXPECT_EQ(EditedBy(VK_INSERT, nullptr), L"新的排程專案");
  };
  Key(VK_RETURN);
  EXPECT_TRUE(wasDisabled);
}

}  // namespace
}  // namespace tellurvane

#include "mainwin/FrmMain.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/mainwin/FrmMainFixture.h"
#include "ui/Density.h"
#include "ui/clsProgress.h"

namespace tellurvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

RECT InParent(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&rect), 2);
  return rect;
}

TEST_F(FrmMainTest, OpensWithEverythingInItsPlace) {
  Open();
  EXPECT_EQ(WindowText(window->hwnd()), L"Tellurvane");
  EXPECT_EQ(PixelsFromTwips(window->Width()), PixelsFromTwips(5'320));
  EXPECT_EQ(PixelsFromTwips(window->Height()), PixelsFromTwips(5'000));
  const int width = window->ScaleWidth();
  const int height = window->ScaleHeight();

  const RECT area = InParent(Area());
  EXPECT_EQ(area.left, 0);
  EXPECT_EQ(area.right, width);
  EXPECT_EQ(area.bottom - area.top, height - 49);
  EXPECT_EQ(area.bottom, height);
  EXPECT_EQ(InParent(GetParent(toolbar)).left, 5);
  EXPECT_LE(InParent(GetParent(toolbar)).bottom, 28);
}

TEST_F(FrmMainTest, PutsTheSlidersBesideEachOther) {
  Open();
  std::vector<RECT> sliders;
  for (HWND child = GetWindow(window->hwnd(), GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    if (InParent(child).top == 28) sliders.push_back(InParent(child));
  }
  ASSERT_EQ(sliders.size(), 2U);
  std::ranges::sort(sliders, {}, &RECT::left);
  EXPECT_EQ(sliders[0].right - sliders[0].left, 70);
  EXPECT_EQ(sliders[1].left, sliders[0].right + 8);
  EXPECT_GT(sliders[1].right, window->ScaleWidth() - 20);
  EXPECT_LE(sliders[1].bottom, 49);
}

TEST_F(FrmMainTest, IsShownInsideTheScreenWhereverItWasHidden) {
  Open();
  window->Hide();
  SetWindowPos(window->hwnd(), nullptr, -3'000, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  window->Open();
  EXPECT_EQ(OnScreen(window->hwnd()).left, 0);
  EXPECT_EQ(OnScreen(window->hwnd()).top, 40);
}

TEST_F(FrmMainTest, CannotBeResized) {
  Open();
  SetWindowPos(window->hwnd(), nullptr, 0, 0, 700, 600, SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_TRUE(PumpUntil([&] {
    return PixelsFromTwips(window->Width()) == PixelsFromTwips(5'320) &&
           PixelsFromTwips(window->Height()) == PixelsFromTwips(5'000);
  }));
}

TEST_F(FrmMainTest, HasFiveButtonsOfWhichStopCannotBePressed) {
  Open();
  EXPECT_EQ(SendMessageW(toolbar, TB_BUTTONCOUNT, 0, 0), 5);
  for (const Button button : {kNew, kPlay, kOptions, kLeave}) EXPECT_TRUE(IsOn(button)) << button;
  EXPECT_FALSE(IsOn(kStop));
}

TEST_F(FrmMainTest, GivesThePlayerTheSavedVolume) {
  Open();
  EXPECT_THAT(Taken(), ElementsAre(L"volume 37"));
  EXPECT_NE(SettingsText().find(L"SavedVolume=37\r\n"), std::wstring::npos);
}

// A slider alone, as large as the box, with a text of the test's.
std::vector<Color> WithText(HWND box, double value, bool isEnabled, const std::wstring& text) {
  const DrawnWindow& drawn = ObjectOf(box);
  const TestForm form(400, 100);
  PictureBox host;
  host.Create({.parent = form.hwnd(),
               .width = drawn.ScaleWidth(),
               .height = drawn.ScaleHeight(),
               .backColor = Rgb(0xF4, 0xF1, 0xFA)});
  clsProgress slider;
  slider.TargetPictureBox(host);
  slider.PostRender = [&](bool) { slider.PrintText(text, 0x979797); };
  slider.Create();
  slider.Max(100);
  slider.Value(value);
  slider.Enabled(isEnabled);
  Pump();
  return Shown(host.hwnd());
}

TEST_F(FrmMainTest, ThePositionShowsTwoDecimalsAtTheStartAndTheVolumeNone) {
  Open();
  std::vector<HWND> sliders;
  for (HWND child = GetWindow(window->hwnd(), GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    if (InParent(child).top == 28) sliders.push_back(child);
  }
  ASSERT_EQ(sliders.size(), 2U);
  std::ranges::sort(sliders, {}, [](HWND slider) { return InParent(slider).left; });
  EXPECT_EQ(Shown(sliders[0]), WithText(sliders[0], 37, true, L"37 %"));
  EXPECT_EQ(Shown(sliders[1]), WithText(sliders[1], 0, false, L"0.00 %"));
  // Neither would do for the other.
  EXPECT_NE(Shown(sliders[0]), WithText(sliders[0], 37, true, L"37.00 %"));
  EXPECT_NE(Shown(sliders[1]), WithText(sliders[1], 0, false, L"0 %"));
}

TEST_F(FrmMainTest, WritesTheVolumeRoundedToTheEvenNumber) {
  Open();
  HWND slider = GetWindow(window->hwnd(), GW_CHILD);
  while (InParent(slider).left != 5 || InParent(slider).top != 28) {
    slider = GetWindow(slider, GW_HWNDNEXT);
    ASSERT_NE(slider, nullptr);
  }
  // So wide that two pixels are one percent, and one a half.
  MoveWindow(slider, 5, 28, 200, 19, TRUE);
  const auto click = [&](int x) {
    Taken();
    SendMessageW(slider, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, 9));
    SendMessageW(slider, WM_LBUTTONUP, 0, MAKELPARAM(x, 9));
    Pump();
  };
  click(75);
  EXPECT_THAT(Taken(), Contains(L"volume 38"));
  EXPECT_NE(SettingsText().find(L"SavedVolume=38\r\n"), std::wstring::npos);
  click(73);
  EXPECT_THAT(Taken(), Contains(L"volume 36"));
  EXPECT_NE(SettingsText().find(L"SavedVolume=36\r\n"), std::wstring::npos);
}

TEST_F(FrmMainTest, ShowsARowForEachTask) {
  Tasks({{kReminderNote, L"a"}, {kReminderNote, L"b"}, {kReminderNote, L"c"}});
  Open();
  EXPECT_EQ(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0), 3);
  const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
  std::wstring title(32, L'\0');
  HDITEMW item = {};
  item.mask = HDI_TEXT;
  item.pszText = title.data();
  item.cchTextMax = static_cast<int>(title.size());
  SendMessageW(header, HDM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  EXPECT_STREQ(title.c_str(), L"專案名稱");
}

TEST_F(FrmMainTest, RunsTheFirstRowLikeAnyOther) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}, {kReminderNote, L"b"}});
  Open();
  Taken();
  Select(0);
  Press(kPlay);
  EXPECT_THAT(Taken(), ElementsAre(L"close", L"stop", L"url http://example.invalid/", L"play"));
  EXPECT_TRUE(general->radioFlag);
  EXPECT_NE(general->tasks[0].LastRun, 0);
  EXPECT_FALSE(IsOn(kPlay));
  EXPECT_TRUE(IsOn(kStop));

  Press(kStop);
  EXPECT_THAT(Taken(), ElementsAre(L"close", L"stop"));
  EXPECT_TRUE(general->radioFlag) << "stopping leaves it";
  EXPECT_TRUE(IsOn(kPlay));
  EXPECT_FALSE(IsOn(kStop));
}

TEST_F(FrmMainTest, RunsNothingWithoutASelection) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}});
  Open();
  Taken();
  Press(kPlay);
  window->RunSelectedTask();
  EXPECT_THAT(Taken(), IsEmpty());
  EXPECT_EQ(general->tasks[0].LastRun, 0);
}

TEST_F(FrmMainTest, RunsNothingInAnEmptyList) {
  Open();
  Taken();
  Press(kPlay);
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(FrmMainTest, StartsATaskOnceThoughItIsAskedForAgainMeanwhile) {
  Tasks({{kLocalMusic, folder.File(L"Setting.ini")}});
  Open();
  Taken();
  Select(0);
  player.whilePlaying = [&] {
    EXPECT_FALSE(IsWindowEnabled(Area())) << "out of the user's reach";
    window->RunSelectedTask();
    Press(kPlay);
  };
  window->RunSelectedTask();
  EXPECT_EQ(std::ranges::count(Taken(), std::wstring(L"play")), 1);
  EXPECT_TRUE(IsWindowEnabled(Area()));
}

TEST_F(FrmMainTest, FollowsMusicOnceItIsOpenAndWaitsForNothing) {
  Tasks({{kLocalMusic, folder.File(L"Setting.ini")}});
  Open();
  Select(0);
  player.isOpening = true;
  window->RunSelectedTask();
  const auto isSliderEnabled = [&] {
    HWND slider = GetWindow(window->hwnd(), GW_CHILD);
    while (InParent(slider).top != 28 || InParent(slider).left == 5) {
      slider = GetWindow(slider, GW_HWNDNEXT);
    }
    return IsWindowEnabled(slider) != FALSE;
  };
  EXPECT_FALSE(isSliderEnabled());
  EXPECT_TRUE(IsWindowEnabled(Area())) << "the list can be used meanwhile";
  EXPECT_TRUE(IsOn(kStop));
  player.isOpening = false;
  player.duration = 12;
  EXPECT_TRUE(PumpUntil(isSliderEnabled));
  player.position = 12;
  EXPECT_TRUE(PumpUntil([&] { return !isSliderEnabled(); })) << "and notices its end";

  // Stopped while it is opening it stays so.
  player.isOpening = true;
  window->RunSelectedTask();
  Press(kStop);
  player.isOpening = false;
  player.position = 3;
  EXPECT_FALSE(PumpUntil(isSliderEnabled, std::chrono::milliseconds(500)));
}

TEST_F(FrmMainTest, ASoundOfLessThanASecondPlayedAgainAndAgainKeepsNoTaskFromRunning) {
  Tasks({{kLocalMusic, folder.File(L"Setting.ini")}, {kApplication, L"no such program"}});
  Open();
  general->settings.SongLoop = 1;
  general->tasks[1].NextRun = SerialFromSeconds(SecondsFromSerial(Now()) + 1);
  Select(0);
  player.duration = 1;
  const auto url = L"url " + folder.File(L"Setting.ini");
  ULONGLONG started = 0;
  player.whilePlaying = [&] { started = GetTickCount64(); };
  window->RunSelectedTask();
  EXPECT_TRUE(PumpUntil([&] {
    player.hasEnded = GetTickCount64() - started > 600;
    return general->tasks[1].LastRun != 0;
  }));
  EXPECT_GT(std::ranges::count(Taken(), url), 1) << "the sound was played again";
}

TEST_F(FrmMainTest, DoesNotPlayAMissingFileAndRecordsTheRun) {
  Tasks({{kLocalMusic, folder.File(L"missing.mp3")}});
  Open();
  Taken();
  Select(0);
  window->RunSelectedTask();
  EXPECT_THAT(Taken(), testing::Not(Contains(L"play")));
  EXPECT_NE(general->tasks[0].LastRun, 0);
}

TEST_F(FrmMainTest, GoesBehindItsTrayIconWhenItIsClosed) {
  Open();
  SendMessageW(window->hwnd(), WM_CLOSE, 0, 0);
  EXPECT_TRUE(window->IsLoaded());
  EXPECT_FALSE(window->Visible());
  EXPECT_EQ(GetWindowLongPtrW(window->hwnd(), GWL_EXSTYLE) & WS_EX_APPWINDOW, 0);
  window->FormMin();
  EXPECT_TRUE(window->Visible());
  EXPECT_FALSE(IsIconic(window->hwnd()));
  EXPECT_NE(GetWindowLongPtrW(window->hwnd(), GWL_EXSTYLE) & WS_EX_APPWINDOW, 0);
}

TEST_F(FrmMainTest, LeavesInOrder) {
  Tasks({{kReminderNote, L"a"}});
  Open();
  Taken();
  std::vector<std::wstring> order;
  window->SetReleaseProcess([&] {
    order.emplace_back(L"release");
    EXPECT_TRUE(IsWindow(window->hwnd()));
    EXPECT_FALSE(IsWindow(list)) << "what the window is made of goes first";
  });
  DeleteFileW(folder.File(L"JobList.dbs").c_str());
  general->settings.FilesPath = L"D:\\New\\";
  // What comes after a click is still the toolbar's.
  const HWND bar = toolbar;
  Press(kLeave);
  EXPECT_TRUE(IsWindow(bar)) << "destroyed inside its own click";
  EXPECT_THAT(order, IsEmpty());
  ASSERT_TRUE(PumpUntil([&] { return !window->IsLoaded(); }));
  EXPECT_THAT(order, ElementsAre(L"release"));
  EXPECT_FALSE(window->IsLoaded());
  EXPECT_THAT(Taken(), ElementsAre(L"close", L"stop"));
  EXPECT_GT(ReadBytes(folder.File(L"JobList.dbs")).size(), 2U);
  EXPECT_NE(SettingsText().find(L"FilesPath=D:\\New\\\r\n"), std::wstring::npos);
  MSG message = {};
  EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 0U);
}

TEST_F(FrmMainTest, SavesWhenTheSessionEndsAndStaysOutOfTheWay) {
  Tasks({{kReminderNote, L"a"}});
  Open();
  DeleteFileW(folder.File(L"JobList.dbs").c_str());
  general->settings.FilesPath = L"D:\\New\\";
  EXPECT_TRUE(SendMessageW(window->hwnd(), WM_QUERYENDSESSION, 0, 0));
  SendMessageW(window->hwnd(), WM_ENDSESSION, FALSE, 0);
  EXPECT_EQ(GetFileAttributesW(folder.File(L"JobList.dbs").c_str()), INVALID_FILE_ATTRIBUTES)
      << "another program refused: the session goes on";
  SendMessageW(window->hwnd(), WM_ENDSESSION, TRUE, 0);
  EXPECT_GT(ReadBytes(folder.File(L"JobList.dbs")).size(), 2U);
  EXPECT_NE(SettingsText().find(L"FilesPath=D:\\New\\\r\n"), std::wstring::npos);
  EXPECT_TRUE(window->Visible());
}

TEST_F(FrmMainTest, LeavesNothingBehindWhenItIsHiddenAndShown) {
  Open();
  EXPECT_EQ(LeakedBy([&] {
              window->FormMin();
              window->FormMin();
            }),
            ResourceCounts());
}

TEST_F(FrmMainTest, LeavesNothingBehindWhenATaskRuns) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}});
  Open();
  Select(0);
  EXPECT_EQ(LeakedBy([&] { window->RunSelectedTask(); }), ResourceCounts());
}

}  // namespace
}  // namespace tellurvane

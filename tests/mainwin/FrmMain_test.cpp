#include "mainwin/FrmMain.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

#include "tests/mainwin/FrmMainFixture.h"
#include "tests/support/FailingImport.h"
#include "tests/support/GdiPlusSession.h"
#include "tests/support/MenuTestSupport.h"
#include "tests/ui/Canvas.h"
#include "ui/Density.h"
#include "ui/ModTheme.h"
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

// The lowest box of the list's area.
HWND StripIn(HWND area) {
  return ChildWindowFromPoint(area, {5, ObjectOf(area).ScaleHeight() - 3});
}

TEST_F(FrmMainTest, HasItsSizeAndItsPartsInTheirPlaces) {
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
  EXPECT_EQ(SendMessageW(toolbar, TB_BUTTONCOUNT, 0, 0), 5);
  int image = 0;
  for (const wchar_t* const caption : {L"新 增", L"播 放", L"停 止", L"設 定", L"離 開"}) {
    TBBUTTON button = {};
    SendMessageW(toolbar, TB_GETBUTTON, static_cast<WPARAM>(image),
                 reinterpret_cast<LPARAM>(&button));
    EXPECT_EQ(button.iBitmap, image++);
    wchar_t text[16] = {};
    SendMessageW(toolbar, TB_GETBUTTONTEXTW, static_cast<WPARAM>(button.idCommand),
                 reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(text, caption);
  }
  const LONG_PTR edges = WS_EX_STATICEDGE | WS_EX_CLIENTEDGE | WS_EX_WINDOWEDGE;
  EXPECT_EQ(GetWindowLongPtrW(StripIn(Area()), GWL_EXSTYLE) & edges, WS_EX_STATICEDGE);

  const RECT volume = InParent(VolumeSlider());
  const RECT position = InParent(PositionSlider());
  EXPECT_EQ(volume.top, 28);
  EXPECT_EQ(volume.right - volume.left, 70);
  EXPECT_EQ(position.top, 28);
  EXPECT_EQ(position.left, volume.right + 8);
  EXPECT_GT(position.right, width - 20);
  EXPECT_LE(position.bottom, 49);

  const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
  wchar_t title[32] = {};
  HDITEMW item = {};
  item.mask = HDI_TEXT;
  item.pszText = title;
  item.cchTextMax = 32;
  SendMessageW(header, HDM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  EXPECT_STREQ(title, L"專案名稱");
}

TEST_F(FrmMainTest, KeepsItsSizeAndIsShownInsideTheScreen) {
  Open();
  SetWindowPos(window->hwnd(), nullptr, 0, 0, 700, 600, SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_TRUE(PumpUntil([&] {
    return PixelsFromTwips(window->Width()) == PixelsFromTwips(5'320) &&
           PixelsFromTwips(window->Height()) == PixelsFromTwips(5'000);
  }));
  SKIP_UNLESS_ONE_SCREEN();
  window->Hide();
  SetWindowPos(window->hwnd(), nullptr, -3'000, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  window->Open();
  EXPECT_EQ(OnScreen(window->hwnd()).left, 0);
  EXPECT_EQ(OnScreen(window->hwnd()).top, 40);
}

// The pixels of a slider of the box's size with this text.
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

TEST_F(FrmMainTest, ThePositionHasTwoDecimalsAndTheVolumeNone) {
  Open();
  const HWND volume = VolumeSlider();
  EXPECT_EQ(Shown(volume), WithText(volume, 37, true, L"37 %"));
  EXPECT_NE(Shown(volume), WithText(volume, 37, true, L"37.00 %"));
  const HWND position = PositionSlider();
  EXPECT_EQ(Shown(position), WithText(position, 0, false, L"0.00 %"));
  EXPECT_NE(Shown(position), WithText(position, 0, false, L"0 %"));
}

TEST_F(FrmMainTest, TheStripIsBoldAndBlueWithAWheatGlow) {
  const GdiPlusSession gdiPlus;
  player.state = kBufferingState;
  player.status = L"abc";
  Open();
  const HWND strip = StripIn(Area());
  const Canvas expected(ObjectOf(strip).ScaleWidth(), ObjectOf(strip).ScaleHeight(),
                        Rgb(0xFB, 0xFA, 0xFE));
  ModTheme::Text(expected.Dc(), L"abc", 2, 1, {0xFF0000FF, 0xFFF5DEB3, 0xFFFFFFFF},
                 {L"Arial Unicode MS", 12, ModTheme::kBold});
  EXPECT_GT(expected.FindInk().pixels, 50);
  EXPECT_EQ(Shown(strip), expected.Pixels());
}

TEST_F(FrmMainTest, AnOptionIsSwitchedAlsoWhereNothingCanBeWritten) {
  Open();
  const auto choose = [&](int entry) {
    ChooseInMenu([&] { Press(kOptions); }, window->hwnd(), entry);
  };
  {
    FailingImport machine({"RegOpenKeyExW", ERROR_ACCESS_DENIED});
    FailingImport user({"RegSetKeyValueW", ERROR_ACCESS_DENIED});
    machine.Fail(1, INT_MAX);
    user.Fail(1, INT_MAX);
    choose(2);
    EXPECT_EQ(user.Calls(), 1);
  }
  EXPECT_EQ(general->settings.StartPlay, 1);
  EXPECT_TRUE(HasSetting(L"StartPlay=1"));
  FailingImport file({"WritePrivateProfileStringW"});
  file.Fail(1, INT_MAX);
  choose(1);
  EXPECT_EQ(general->settings.SongLoop, 1);
  EXPECT_TRUE(HasSetting(L"SongLoop=0"));
}

TEST_F(FrmMainTest, RunsAndStopsTheFirstRow) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}, {kReminderNote, L"b"}});
  Open();
  EXPECT_TRUE(IsOn(kPlay));
  EXPECT_FALSE(IsOn(kStop));
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

TEST_F(FrmMainTest, OnlyALeftDoubleClickRunsTheSelectedTask) {
  Tasks({{kInternetRadio, L"http://a/"}});
  Open();
  Select(0);
  const auto callsAfter = [&](UINT code) {
    Taken();
    NMITEMACTIVATE click = {};
    click.hdr.hwndFrom = list;
    click.hdr.code = code;
    SendMessageW(GetParent(list), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&click));
    return Taken();
  };
  EXPECT_THAT(callsAfter(NM_RDBLCLK), IsEmpty());
  EXPECT_THAT(callsAfter(NM_DBLCLK), ElementsAre(L"close", L"stop", L"url http://a/", L"play"));
}

TEST_F(FrmMainTest, StartsNoSecondTaskWhileOneStarts) {
  Tasks({{kLocalMusic, folder.File(L"Setting.ini")}});
  Open();
  Taken();
  Select(0);
  player.whilePlaying = [&] {
    EXPECT_FALSE(IsWindowEnabled(Area()));
    window->RunSelectedTask();
    Press(kPlay);
  };
  window->RunSelectedTask();
  EXPECT_EQ(std::ranges::count(Taken(), std::wstring(L"play")), 1);
  EXPECT_TRUE(IsWindowEnabled(Area()));
}

TEST_F(FrmMainTest, ContinuousPlayRunsTheSelectedTaskAndOthersFallDueMeanwhile) {
  const std::wstring song = folder.File(L"Setting.ini");
  Tasks({{kLocalMusic, song}, {kApplication, L"no such program"}});
  Open();
  player.duration = 1;
  for (const int off : {2, -1}) {
    general->settings.SongLoop = off;
    Select(0);
    window->RunSelectedTask();
    Taken();
    player.hasEnded = true;
    EXPECT_TRUE(PumpUntil([&] { return IsOn(kPlay); })) << off;
    EXPECT_THAT(Taken(), ElementsAre(L"close", L"stop")) << off;
  }
  general->settings.SongLoop = 1;
  ULONGLONG started = 0;
  player.whilePlaying = [&] { started = GetTickCount64(); };
  Select(0);
  window->RunSelectedTask();
  Taken();
  Select(-1);
  player.hasEnded = true;
  const int reads = player.positionReads;
  EXPECT_TRUE(PumpUntil([&] { return player.positionReads > reads + 2; }));
  EXPECT_THAT(Taken(), IsEmpty()) << "nothing is selected";
  Select(0);
  EXPECT_TRUE(PumpUntil([&] { return !player.calls.empty(); }));
  EXPECT_THAT(Taken(), Contains(L"url " + song));
  // A sound of less than a second is played again and again.
  general->tasks[1].NextRun = SerialFromSeconds(SecondsFromSerial(Now()) + 1);
  EXPECT_TRUE(PumpUntil([&] {
    player.hasEnded = GetTickCount64() - started > 600;
    return general->tasks[1].LastRun != 0;
  }));
  EXPECT_GT(std::ranges::count(Taken(), L"url " + song), 1);
}

TEST_F(FrmMainTest, LeavesInOrder) {
  WriteBytes(folder.File(L"Setting.ini"), WholeSettings{.timeForm = L"1"}.Bytes());
  Tasks({{kReminderNote, L"a"}});
  Open();
  for (auto& icon : general->icons) icon = std::make_unique<ClsIcon>();
  general->settings.FilesPath = L"D:\\New\\";
  DeleteFileW(folder.File(L"JobList.dbs").c_str());
  const HWND clock = FindWindowW(nullptr, L"FrmTime");
  Taken();
  std::vector<std::wstring> order;
  player.whileStopping = [&] {
    order.emplace_back(L"stop");
    EXPECT_EQ(GetFileAttributesW(folder.File(L"JobList.dbs").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_FALSE(HasSetting(L"FilesPath=D:\\New\\"));
  };
  window->SetReleaseProcess([&] {
    order.emplace_back(L"release");
    EXPECT_TRUE(IsWindow(window->hwnd()));
    EXPECT_FALSE(IsWindow(list));
    EXPECT_THAT(Taken(), ElementsAre(L"close", L"stop"));
    EXPECT_GT(ReadBytes(folder.File(L"JobList.dbs")).size(), 2U);
    EXPECT_TRUE(HasSetting(L"FilesPath=D:\\New\\"));
    EXPECT_THAT(general->icons, testing::Each(testing::IsNull()));
    EXPECT_TRUE(IsWindowVisible(clock)) << "it is unloaded last";
  });
  const HWND bar = toolbar;
  Press(kLeave);
  EXPECT_TRUE(IsWindow(bar)) << "destroyed inside its own click";
  EXPECT_THAT(order, IsEmpty());
  ASSERT_TRUE(PumpUntil([&] { return !window->IsLoaded(); }));
  EXPECT_THAT(order, ElementsAre(L"stop", L"release"));
  EXPECT_FALSE(IsWindow(clock));
  MSG message = {};
  EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 0U);
}

TEST_F(FrmMainTest, SavesWhenTheSessionEnds) {
  Tasks({{kReminderNote, L"a"}});
  Open();
  DeleteFileW(folder.File(L"JobList.dbs").c_str());
  general->settings.FilesPath = L"D:\\New\\";
  EXPECT_TRUE(SendMessageW(window->hwnd(), WM_QUERYENDSESSION, 0, 0));
  SendMessageW(window->hwnd(), WM_ENDSESSION, FALSE, 0);
  EXPECT_EQ(GetFileAttributesW(folder.File(L"JobList.dbs").c_str()), INVALID_FILE_ATTRIBUTES)
      << "the session goes on";
  SendMessageW(window->hwnd(), WM_ENDSESSION, TRUE, 0);
  EXPECT_GT(ReadBytes(folder.File(L"JobList.dbs")).size(), 2U);
  EXPECT_TRUE(HasSetting(L"FilesPath=D:\\New\\"));
  EXPECT_TRUE(window->Visible());
}

TEST_F(FrmMainTest, LeaksNothing) {
  Tasks({{kInternetRadio, L"http://example.invalid/"}});
  Open();
  Select(0);
  EXPECT_EQ(LeakedBy([&] {
              window->RunSelectedTask();
              window->FormMin();
              window->FormMin();
            }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane

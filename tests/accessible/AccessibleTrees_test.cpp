// Every window as a screen reader sees it.
#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>

#include <array>
#include <optional>
#include <string>

#include "base/LocaleDates.h"
#include "base/PictureFormat.h"
#include "notes/frmNotes.h"
#include "notes/frmNotesEdit.h"
#include "tests/clock/ClockFixture.h"
#include "tests/mainwin/FrmMainFixture.h"
#include "tests/radio/RadioFixture.h"
#include "tests/scheduler/EditorFixture.h"
#include "tests/support/AccessibleSupport.h"
#include "tests/support/ActingForm.h"
#include "tests/support/GdiPlusSession.h"
#include "tests/support/Wine.h"

namespace tellurvane {
namespace {

using testing::AllOf;
using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

// Screen readers get objects through COM, which the entry routine starts.
class Apartment : public testing::Environment {
 public:
  void SetUp() override { apartment_.emplace(); }
  void TearDown() override { apartment_.reset(); }

 private:
  std::optional<ComApartment> apartment_;
};
const auto* const apartment = testing::AddGlobalTestEnvironment(new Apartment);

class MainWindowTreeTest : public FrmMainTest {
 protected:
  HWND StatusStrip() const { return GetWindow(GetParent(GetParent(list)), GW_HWNDPREV); }

  GdiPlusSession gdiPlus;
};

TEST_F(MainWindowTreeTest, TheMainWindow) {
  SKIP_UNLESS_WINE("Windows knows the roles of its own controls, Wine calls them client");
  player.state = kStoppedState;
  player.status = L"已停止";
  Open();
  EXPECT_EQ(AccessibleTree(window->hwnd()), R"(TellurvaneForm Tellurvane
  ToolbarWindow32 工具列
  status bar 已停止
  SysListView32 排程任務
  slider 音量 = 37 %
  slider 播放位置 = 0.00 %
)");
}

TEST_F(MainWindowTreeTest, TheStatusStripReportsThePlayersWordsAndNotTheTime) {
  player.state = kPlayingState;
  player.status = L"正在播放";
  player.positionText = L"00:01";
  Open();
  const HWND strip = StatusStrip();
  HeardEvents heard;
  player.positionText = L"00:02";
  window->Open();
  EXPECT_THAT(heard.Of(strip), IsEmpty());
  EXPECT_THAT(NameOf(*AccessibleOf(strip).Get()), StartsWith(L"00:02 / "));
  player.status = L"正在緩衝";
  window->Open();
  EXPECT_THAT(heard.Of(strip), ElementsAre("name"));
  player.state = kUndefinedState;
  const DateSerial before = Now();
  window->Open();
  const auto strips = [](DateSerial moment) {
    const DateFormat format = UserDateFormat();
    return FormatMoment(L"yyyy 年 mm 月 dd 日 - AMPM hh 時", moment,
                        {format.amDesignator, format.pmDesignator});
  };
  EXPECT_THAT(NameOf(*AccessibleOf(strip).Get()),
              AnyOf(StartsWith(strips(before)), StartsWith(strips(Now()))));
  EXPECT_THAT(heard.Of(strip), ElementsAre("name"));
  window->Open();
  EXPECT_THAT(heard.Of(strip), IsEmpty());
  player.state = kBufferingState;
  player.status = L"已完成 12 %";
  window->Open();
  EXPECT_THAT(heard.Of(strip), ElementsAre("name"));
  player.status = L"已完成 13 %";
  window->Open();
  EXPECT_THAT(heard.Of(strip), IsEmpty()) << "not each percent";
}

std::wstring RowText(HWND list, int row) {
  std::array<wchar_t, 1'024> text = {};
  LVITEMW item = {};
  item.pszText = text.data();
  item.cchTextMax = static_cast<int>(text.size());
  SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  return text.data();
}

TEST_F(MainWindowTreeTest, ARowSaysWhatItsTaskDoesAndReportsAChange) {
  Tasks({{kInternetRadio, L"http://a"}, {kLocalMusic, L"b.mp3"}});
  Open();
  Pump();
  EXPECT_THAT(RowText(list, 0), StartsWith(L"task 0，網路電台，已啟動，尚未執行，下次執行 "));
  EXPECT_THAT(RowText(list, 1), StartsWith(L"task 1，本地音樂，已啟動，尚未執行，下次執行 "));
  HeardEvents heard;
  Select(0);
  window->RunSelectedTask();
  player.state = kPlayingState;
  window->Open();
  EXPECT_THAT(RowText(list, 0), StartsWith(L"task 0，網路電台，正在播放，已啟動，最後執行 "));
  EXPECT_THAT(heard.Of(list), Contains("name 1"));
}

TEST_F(MainWindowTreeTest, ARowReportsThatItIsSwitched) {
  Tasks({{kInternetRadio, L"http://a"}, {kLocalMusic, L"b.mp3"}});
  Open();
  HeardEvents heard;
  PostMessageW(list, WM_KEYDOWN, VK_SPACE, 1);
  Pump();
  EXPECT_THAT(RowText(list, 0), StartsWith(L"task 0，網路電台，已關閉，"));
  EXPECT_THAT(heard.Of(list), Contains("name 1"));
}

TEST_F(MainWindowTreeTest, RowsReportEachStartAndTheStop) {
  Tasks({{kInternetRadio, L"http://a"}, {kInternetRadio, L"http://b"}});
  player.state = kPlayingState;
  Open();
  const auto start = [this](int row) {
    Select(row);
    window->RunSelectedTask();
  };
  start(0);
  HeardEvents heard;
  window->Open();
  EXPECT_THAT(heard.Of(list), IsEmpty()) << "nothing has changed";
  Press(kStop);
  EXPECT_THAT(heard.Of(list), Contains("name 1"));
  start(1);
  EXPECT_THAT(heard.Of(list), Contains("name 2"));
  start(0);
  EXPECT_THAT(heard.Of(list), AllOf(Contains("name 1"), Contains("name 2")));
}

TEST_F(MainWindowTreeTest, AScreenReaderSetsTheVolume) {
  Open();
  const auto volume = AccessibleOf(VolumeSlider());
  EXPECT_EQ(volume->put_accValue(Self(), Bstr(L"50 %").Get()), S_OK);
  EXPECT_THAT(Taken(), Contains(L"volume 50"));
  EXPECT_EQ(ValueOf(*volume.Get()), L"50 %");
}

TEST_F(EditorFixture, TheEditor) {
  SKIP_UNLESS_WINE("Windows knows the roles of its own controls, Wine calls them client");
  tasks = {Task(L"a"), Task(L"b")};
  Play(0, [&] {
    EXPECT_EQ(AccessibleTree(window), R"(TellurvaneForm 新增 / 編輯排程專案
  SysListView32 排程專案
  Button 新增
  Button 編輯
  Button 移除
  Static 專案名稱
  text 專案名稱 = a
  Static 媒體類型
  ComboBox 媒體類型
  Static 提醒文字
  RichEdit20W 提醒文字
  Button 選擇來源
  Static 執行日期
  SysDateTimePick32 執行日期
  SysDateTimePick32 執行時間
  Static 排程類型
  ComboBox 排程類型
  text 分鐘執行一次 = 5
  Static 分鐘執行一次
  Button 儲存後立即啟動音樂排程
  Button 儲存專案
  Button 放棄編輯
  Button 關閉
  Button 取消
)");
    Choose(cboMediaType, kLocalMusic);
    Choose(cboTimeType, 1);
    EXPECT_EQ(NameOf(*AccessibleOf(txtSrc).Get()), L"來源音樂");
    EXPECT_EQ(NameOf(*AccessibleOf(txtInterval).Get()), L"小時執行一次");
  });
}

TEST_F(RadioFixture, TheRadioDirectory) {
  SKIP_UNLESS_WINE("Windows knows the roles of its own controls, Wine calls them client");
  Play([&] {
    EXPECT_EQ(AccessibleTree(window), R"(TellurvaneForm Radio List
  ComboBox 電台目錄
  Button 依類型搜尋
  ComboBox 類型
  Button 依關鍵字搜尋
  text 關鍵字
  Button 搜 尋
  SysListView32 電台
  Button 新 增
  Button 關 閉
)");
  });
}

TEST(NoteEditorTreeTest, TheNoteEditor) {
  SKIP_UNLESS_WINE("Windows knows the roles of its own controls, Wine calls them client");
  ActingForm owner;
  frmNotesEdit editor(L"喝水", [](const std::wstring&) {});
  owner.ActLater([&] {
    EXPECT_EQ(AccessibleTree(editor.hwnd()), R"(TellurvaneForm Tellurvane
  Static 撰寫時請勿超過 8 行，每行限制字數為 21 字
  RichEdit20W 撰寫時請勿超過 8 行，每行限制字數為 21 字
  Static 1 行，最長 2 字
  Button 確 定
  Button 關 閉
)");
    PostMessageW(editor.hwnd(), WM_CLOSE, 0, 0);
  });
  editor.Open(owner.hwnd());
}

class NoteTreeTest : public testing::Test {
 protected:
  NoteTreeTest() { note.Prepare(L"喝水\\r\\n休息", L"2026/11/21 上午 09:05:07", {}); }

  GdiPlusSession gdiPlus;
  frmNotes note{1, [](unsigned) {}};
};

TEST_F(NoteTreeTest, ANoteIsAnAlert) {
  HeardEvents heard;
  note.ShowNote();
  EXPECT_THAT(heard.Of(note.hwnd()), ElementsAre("alert"));
  EXPECT_EQ(NameOf(*AccessibleOf(note.hwnd()).Get()), L"喝水\r\n休息，2026/11/21 上午 09:05:07");
  EXPECT_EQ(RoleOf(*AccessibleOf(note.hwnd()).Get()), ROLE_SYSTEM_ALERT);
  const HWND image = InsideOf(note.hwnd(), L"TellurvanePictureBox").at(0);
  EXPECT_EQ(AccessibleTree(image), "button 關閉\n");
}

TEST_F(NoteTreeTest, AScreenReaderClosesANote) {
  note.ShowNote();
  const auto object = AccessibleOf(note.hwnd());
  EXPECT_EQ(object->accDoDefaultAction(Self()), S_OK);
  EXPECT_TRUE(note.IsLoaded()) << "not while the screen reader waits";
  EXPECT_TRUE(PumpUntil([&] { return !note.IsLoaded(); }));
  Bstr name;
  EXPECT_EQ(object->get_accName(Self(), name.Receive()), CO_E_OBJNOTCONNECTED);
}

TEST_F(FrmTimeTest, TheClock) {
  ShowAt(kMorning);
  EXPECT_EQ(AccessibleTree(clock->hwnd()), "clock 時鐘 = 09 時 05 分 07 秒\n");
}

}  // namespace
}  // namespace tellurvane

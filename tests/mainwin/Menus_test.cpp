#include "mainwin/Menus.h"

#include <gmock/gmock.h>

namespace tellurvane {
namespace {

using testing::ElementsAre;

constexpr unsigned kChecked = 8;
constexpr unsigned kSeparator = 2048;

Settings With(std::int32_t clock, std::int32_t songLoop = 0, std::int32_t startPlay = 0) {
  Settings settings;
  settings.TimeForm = clock;
  settings.SongLoop = songLoop;
  settings.StartPlay = startPlay;
  return settings;
}

TEST(OptionsMenu, NamesTheActionsAndChecksEachOptionThatIsExactlyOne) {
  EXPECT_THAT(OptionsMenu({}), ElementsAre(MenuEntry{L"開啟連續播放音樂", 0, 1},
                                           MenuEntry{L"開啟 Windows 啟動後自動執行", 0, 2},
                                           MenuEntry{L"顯示小時鐘", 0, 3}));
  EXPECT_THAT(OptionsMenu(With(1, 1, 1)),
              ElementsAre(MenuEntry{L"關閉連續播放音樂", kChecked, 1},
                          MenuEntry{L"關閉 Windows 啟動後自動執行", kChecked, 2},
                          MenuEntry{L"隱藏小時鐘", kChecked, 3}));
  EXPECT_EQ(OptionsMenu(With(2, -1, 7)), OptionsMenu({}));
}

TEST(TrayMenu, FollowsTheClock) {
  EXPECT_THAT(TrayMenu({}),
              ElementsAre(MenuEntry{L"顯示主畫面", 0, 1}, MenuEntry{L"顯示小時鐘", 0, 2},
                          MenuEntry{L"離開本軟體", 0, 3}));
  EXPECT_THAT(TrayMenu(With(1)),
              ElementsAre(MenuEntry{L"顯示主畫面", 0, 1}, MenuEntry{L"隱藏小時鐘", kChecked, 2},
                          MenuEntry{L"離開本軟體", 0, 3}));
}

TEST(TrayTip, NamesTheNumberOfFailedTasks) {
  EXPECT_EQ(TrayTip(L"Tellurvane", 0), L"Tellurvane");
  EXPECT_EQ(TrayTip(L"Tellurvane", 1), L"Tellurvane：1 個排程失敗");
  EXPECT_EQ(TrayTip(L"Tellurvane", 12), L"Tellurvane：12 個排程失敗");
}

TEST(TaskMenu, NamesTheTaskAndTheActions) {
  EXPECT_THAT(TaskMenu(L"休息", true),
              ElementsAre(MenuEntry{L"執行「休息」排程任務", 0, 1},
                          MenuEntry{L"編輯「休息」排程設定", 0, 2}, MenuEntry{L"", kSeparator, 0},
                          MenuEntry{L"關閉「休息」排程任務", 0, 3}));
  EXPECT_EQ(TaskMenu(L"休息", false).back(), (MenuEntry{L"啟動「休息」排程任務", 0, 3}));
  EXPECT_EQ(TaskMenu(L"R&B & 爵士", true).front().text, L"執行「R&&B && 爵士」排程任務");
  EXPECT_THAT(NoTaskMenu(), ElementsAre(MenuEntry{L"建立新的排程任務", 0, 1}));
}

}  // namespace
}  // namespace tellurvane

#include "mainwin/Menus.h"

#include "base/Text.h"

namespace tellurvane {
namespace {

// MF_CHECKED and MF_SEPARATOR. Portable code does not include the platform's headers.
constexpr unsigned kChecked = 8;
constexpr unsigned kSeparator = 2048;

MenuEntry Switch(bool isOn, const wchar_t* textWhenOff, const wchar_t* textWhenOn, unsigned id) {
  return {isOn ? textWhenOn : textWhenOff, isOn ? kChecked : 0, id};
}

MenuEntry ClockSwitch(const Settings& settings, unsigned id) {
  return Switch(IsOn(settings.TimeForm), L"顯示小時鐘", L"隱藏小時鐘", id);
}

// In a menu one ampersand marks an access key, two show one.
std::wstring Literal(const std::wstring& name) { return Replaced(name, L"&", L"&&"); }

}  // namespace

std::vector<MenuEntry> OptionsMenu(const Settings& settings) {
  return {
      Switch(IsOn(settings.SongLoop), L"開啟連續播放音樂", L"關閉連續播放音樂", kSwitchSongLoop),
      Switch(IsOn(settings.StartPlay), L"開啟 Windows 啟動後自動執行",
             L"關閉 Windows 啟動後自動執行", kSwitchStartPlay),
      ClockSwitch(settings, kSwitchClock)};
}

std::vector<MenuEntry> TrayMenu(const Settings& settings) {
  return {{L"顯示主畫面", 0, kShowMainWindow},
          ClockSwitch(settings, kSwitchClockFromTray),
          {L"離開本軟體", 0, kLeave}};
}

std::wstring TrayTip(const std::wstring& title, int failedTasks) {
  if (failedTasks == 0) return title;
  return title + L"：" + std::to_wstring(failedTasks) + L" 個排程失敗";
}

std::vector<MenuEntry> TaskMenu(const std::wstring& name, bool isEnabled) {
  const std::wstring quoted = L"「" + Literal(name) + L"」";
  return {{L"執行" + quoted + L"排程任務", 0, kRunTask},
          {L"編輯" + quoted + L"排程設定", 0, kEditTask},
          {L"", kSeparator, 0},
          {(isEnabled ? L"關閉" : L"啟動") + quoted + L"排程任務", 0, kSwitchTask}};
}

std::vector<MenuEntry> NoTaskMenu() { return {{L"建立新的排程任務", 0, kNewTask}}; }

}  // namespace tellurvane

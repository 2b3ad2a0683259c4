// What stands in the program's menus.
#pragma once

#include <string>
#include <vector>

#include "app/SettingsFile.h"

namespace tellurvane {

struct MenuEntry {
  std::wstring text;
  unsigned flags = 0;  // MF_CHECKED and MF_SEPARATOR, or 0
  unsigned id = 0;

  bool operator==(const MenuEntry&) const = default;
};

enum OptionsCommand : unsigned { kSwitchSongLoop = 1, kSwitchStartPlay = 2, kSwitchClock = 3 };
// Behind the toolbar's "設 定". The texts say what choosing will do, the marks how it is now.
std::vector<MenuEntry> OptionsMenu(const Settings& settings);

enum TrayCommand : unsigned { kShowMainWindow = 1, kSwitchClockFromTray = 2, kLeave = 3 };
std::vector<MenuEntry> TrayMenu(const Settings& settings);

enum TaskCommand : unsigned { kRunTask = 1, kEditTask = 2, kSwitchTask = 3 };
enum EmptyListCommand : unsigned { kNewTask = 1 };
// The task list's own menu: for a task by its name, or without one.
std::vector<MenuEntry> TaskMenu(const std::wstring& name, bool isEnabled);
std::vector<MenuEntry> NoTaskMenu();

}  // namespace tellurvane

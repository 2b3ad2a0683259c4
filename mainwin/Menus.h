// The entries of the program's menus, and the tip of the tray icon.
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
// For the toolbar's "設 定". A text names what the entry will do; a check mark shows the state now.
std::vector<MenuEntry> OptionsMenu(const Settings& settings);

enum TrayCommand : unsigned { kShowMainWindow = 1, kSwitchClockFromTray = 2, kLeave = 3 };
std::vector<MenuEntry> TrayMenu(const Settings& settings);
// The title, with the number of failed tasks if there are any.
std::wstring TrayTip(const std::wstring& title, int failedTasks);

enum TaskCommand : unsigned { kRunTask = 1, kEditTask = 2, kSwitchTask = 3 };
enum EmptyListCommand : unsigned { kNewTask = 1 };
// The task list's context menu, for a task and for an empty place.
std::vector<MenuEntry> TaskMenu(const std::wstring& name, bool isEnabled);
std::vector<MenuEntry> NoTaskMenu();

}  // namespace tellurvane

// The main window's menus.
#include "app/Autostart.h"
#include "mainwin/FrmMain.h"
#include "mainwin/Menus.h"
#include "mainwin/PopupMenus.h"
#include "ui/clsPopupMenu.h"

namespace tellurvane {

UINT ShowPopupMenu(HWND owner, const std::vector<MenuEntry>& entries,
                   std::optional<UINT> defaultItem, std::optional<POINT> place) {
  clsPopupMenu menu;
  for (const MenuEntry& entry : entries) menu.AddMenuItem(entry.text, entry.flags, entry.id);
  if (defaultItem) menu.SetMenuDefItem(*defaultItem);
  return place ? menu.TrackMenu(owner, *place) : menu.TrackMenu(owner);
}

void FrmMain::ListView_Click(std::optional<POINT> place) {
  const std::optional<size_t> row = rows_.SelectedRow();
  if (!row || *row >= general_.tasks.size()) {
    if (ShowPopupMenu(hwnd(), NoTaskMenu(), {}, place) == kNewTask) OpenEditor({});
    return;
  }
  const TaskRecord& task = general_.tasks[*row];
  switch (ShowPopupMenu(hwnd(), TaskMenu(task.Name, task.Enabled), {}, place)) {
    case kRunTask:
      runner_.RunNow(row);
      break;
    case kEditTask:
      OpenEditor(row);
      break;
    case kSwitchTask:
      runner_.SwitchEnabled(row);
      break;
    default:
      break;
  }
}

void FrmMain::OptionsMenuClick(std::optional<POINT> place) {
  switch (ShowPopupMenu(hwnd(), OptionsMenu(general_.settings), 0, place)) {
    case kSwitchSongLoop:
      SwitchSongLoop();
      break;
    case kSwitchStartPlay:
      SwitchStartPlay();
      break;
    case kSwitchClock:
      SwitchClock();
      break;
    default:
      break;
  }
}

void FrmMain::SwitchSongLoop() {
  general_.settings.SongLoop = Switched(general_.settings.SongLoop);
  (void)general_.settingsFile.Write(L"SongLoop", general_.settings.SongLoop);
}

void FrmMain::SwitchStartPlay() {
  general_.settings.StartPlay = Switched(general_.settings.StartPlay);
  // The setting changes also where the user may not write the registry.
  (void)(IsOn(general_.settings.StartPlay) ? WriteRunValue(ExecutablePath()) : DeleteRunValue());
  (void)general_.settingsFile.Write(L"StartPlay", general_.settings.StartPlay);
}

void FrmMain::SwitchClock() {
  general_.settings.TimeForm = Switched(general_.settings.TimeForm);
  if (IsOn(general_.settings.TimeForm)) {
    clock_.ShowClock();
  } else {
    clock_.HideClock();
  }
  (void)general_.settingsFile.Write(L"TimeForm", general_.settings.TimeForm);
}

void FrmMain::Leave() {
  // The editor asks before it drops changes; the user may stay.
  if (editor_ != nullptr && !editor_->Unload()) return;
  quitFlag_ = true;
  Unload();
}

}  // namespace tellurvane

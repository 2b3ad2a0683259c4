// The entry routine.
#include <windows.h>

#include "app/FatalReport.h"
#include "app/ModGeneral.h"
#include "mainwin/FrmMain.h"
#include "mainwin/WindowsMediaPlayer.h"
#include "ui/Boundary.h"
#include "ui/Com.h"
#include "ui/MessageLoop.h"
#include "ui/UserPreferences.h"

namespace tellurvane {
namespace {

int Main() {
  // Load no library from the executable's folder.
  SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
  SetFatalHandler(ReportFatal);
  // Fetching a page or fading a note blocks the only thread. Windows would offer the user to end
  // the program.
  DisableProcessWindowsGhosting();

  const std::wstring folder = ApplicationFolder();
  SetCurrentDirectoryW(folder.c_str());
  if (!ClaimInstance()) return 0;
  if (!StartGdiplus()) return 0;
  SetUserPreferences(SystemPreferences());

  ModGeneral general(folder);
  general.LoadIcons();
  const ComApartment apartment;
  WindowsMediaPlayer player;
  FrmMain mainWindow(general, player);
  mainWindow.SetReleaseProcess([] {
    StopGdiplus();
    ReleaseInstance();
  });
  mainWindow.Create();
  mainWindow.Open();
  return RunMessageLoop();
}

}  // namespace
}  // namespace tellurvane

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  return tellurvane::GuardBoundary(tellurvane::Main);
}

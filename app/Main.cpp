// The entry routine.
#include <windows.h>

#include "app/FatalReport.h"
#include "app/ModGeneral.h"
#include "mainwin/FrmMain.h"
#include "mainwin/WindowsMediaPlayer.h"
#include "ui/Boundary.h"
#include "ui/Com.h"
#include "ui/MessageLoop.h"

namespace tellurvane {
namespace {

int Main() {
  // Nothing beside the executable is ever loaded as a library.
  SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
  SetFatalHandler(ReportFatal);
  // A page that is fetched or a note that fades keeps the one thread busy. Windows would put a
  // ghost over the windows then, and invite the user to end the program.
  DisableProcessWindowsGhosting();

  const std::wstring folder = ApplicationFolder();
  SetCurrentDirectoryW(folder.c_str());
  if (!ClaimInstance()) return 0;
  if (!StartGdiplus()) return 0;

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

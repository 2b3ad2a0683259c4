// The entry routine.
#include <windows.h>

#include <memory>

#include "app/FatalReport.h"
#include "app/ModGeneral.h"
#include "mainwin/FrmMain.h"
#include "ui/Boundary.h"

namespace tellurvane {
namespace {

int RunMessageLoop() {
  MSG message = {};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return static_cast<int>(message.wParam);
}

int Main() {
  // Nothing beside the executable is ever loaded as a library.
  SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
  SetFatalHandler(ReportFatal);

  const std::wstring folder = ApplicationFolder();
  SetCurrentDirectoryW(folder.c_str());
  if (!ClaimInstance()) return 0;
  if (!StartGdiplus()) return 0;

  ModGeneral general(folder);
  FrmMain mainWindow(general);
  mainWindow.SetReleaseProcess([] {
    StopGdiplus();
    ReleaseInstance();
  });
  mainWindow.Load();
  mainWindow.Show();
  return RunMessageLoop();
}

}  // namespace
}  // namespace tellurvane

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  return tellurvane::GuardBoundary(tellurvane::Main);
}

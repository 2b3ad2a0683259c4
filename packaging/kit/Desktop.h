// What the tests change on the user's desktop.
#pragma once

#include <windows.h>

#include <map>

namespace tellurvane {

// During its life all programs may bring their windows to the front. One object at a time.
class Desktop {
 public:
  Desktop();
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;
  ~Desktop();

  // A test of high contrast that is ended leaves its own colours behind.
  void RestoreColors() const;

 private:
  void Restore() const;
  static BOOL WINAPI RestoreAtTheEnd(DWORD event);

  std::map<int, COLORREF> colors_;
  DWORD foregroundLock_ = 0;
};

// Windows of the tests have to be above the console.
class MinimisedConsole {
 public:
  MinimisedConsole() { Show(SW_MINIMIZE); }
  MinimisedConsole(const MinimisedConsole&) = delete;
  MinimisedConsole& operator=(const MinimisedConsole&) = delete;
  ~MinimisedConsole() { Show(SW_RESTORE); }

 private:
  static void Show(int command) {
    if (const HWND console = GetConsoleWindow()) ShowWindow(console, command);
  }
};

}  // namespace tellurvane

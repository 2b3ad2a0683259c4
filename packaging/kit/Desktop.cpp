#include "packaging/kit/Desktop.h"

#include <atomic>

namespace tellurvane {
namespace {

std::atomic<const Desktop*> present = nullptr;

// The system takes the number in place of a pointer. It is not saved in the user's profile.
void SetForegroundLock(DWORD milliseconds) {
  SystemParametersInfoW(SPI_SETFOREGROUNDLOCKTIMEOUT, 0, ULongToPtr(milliseconds), 0);
}

}  // namespace

Desktop::Desktop() {
  for (int index = 0; index <= COLOR_MENUBAR; ++index) colors_[index] = GetSysColor(index);
  SystemParametersInfoW(SPI_GETFOREGROUNDLOCKTIMEOUT, 0, &foregroundLock_, 0);
  present = this;
  SetConsoleCtrlHandler(RestoreAtTheEnd, TRUE);
  SetForegroundLock(0);
}

Desktop::~Desktop() {
  SetConsoleCtrlHandler(RestoreAtTheEnd, FALSE);
  present = nullptr;
  Restore();
}

void Desktop::RestoreColors() const {
  for (const auto& [index, color] : colors_) {
    if (GetSysColor(index) != color) SetSysColors(1, &index, &color);
  }
}

void Desktop::Restore() const {
  RestoreColors();
  SetForegroundLock(foregroundLock_);
}

// Runs in a thread of its own when the user closes the console or presses Ctrl+C. The process ends
// after it, without destructors.
BOOL WINAPI Desktop::RestoreAtTheEnd(DWORD /*event*/) {
  const Desktop* const desktop = present;
  if (desktop != nullptr) desktop->Restore();
  return FALSE;
}

}  // namespace tellurvane

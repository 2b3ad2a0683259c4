#include "mainwin/QuietWait.h"

#include <windows.h>

#include <algorithm>

#include "ui/Timer.h"

namespace tellurvane {
namespace {

// Whoever waits for a condition that no message announces asks this often.
constexpr ULONGLONG kAskMilliseconds = 10;

// Whether a window of this program is inside.
bool IsOurs(HWND window) {
  const HINSTANCE module = GetModuleHandleW(nullptr);
  for (HWND at = window; at != nullptr; at = GetAncestor(at, GA_PARENT)) {
    if (reinterpret_cast<HINSTANCE>(GetClassLongPtrW(at, GCLP_HMODULE)) == module) return true;
  }
  return false;
}

bool IsKeptOut(const MSG& message) {
  const UINT id = message.message;
  const bool isInput = (id >= WM_KEYFIRST && id <= WM_KEYLAST) ||
                       (id >= WM_MOUSEFIRST && id <= WM_MOUSELAST) ||
                       (id >= WM_NCMOUSEMOVE && id <= WM_NCXBUTTONDBLCLK);
  // Our timers tick again: a tick that is thrown away is only late.
  return isInput || Timer::IsTick(message) || (id == WM_TIMER && IsOurs(message.hwnd));
}

// Whoever waits for a release that is thrown away must not wait on.
void LetGo(const MSG& message) {
  switch (message.message) {
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP:
    case WM_NCLBUTTONUP:
      ReleaseCapture();
      break;
    default:
      break;
  }
}

// False when the program is to end.
bool HandleWhatMay() {
  MSG message = {};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return false;
    }
    if (IsKeptOut(message)) {
      LetGo(message);
      continue;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return true;
}

}  // namespace

bool AwaitQuietly(const std::function<bool()>& condition, unsigned milliseconds) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  for (;;) {
    if (condition()) return true;
    const ULONGLONG now = GetTickCount64();
    if (now >= end || !HandleWhatMay()) return false;
    MsgWaitForMultipleObjects(
        0, nullptr, FALSE, static_cast<DWORD>(std::min(end - now, kAskMilliseconds)), QS_ALLINPUT);
  }
}

}  // namespace tellurvane

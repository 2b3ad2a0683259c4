// Tooltips on the screen, of this program and of the taskbar.
#pragma once

#include <windows.h>

#include <array>
#include <chrono>
#include <string>

#include "tests/support/WindowTestSupport.h"

namespace tellurvane {

// The place of the tray icon. Wine has a window for the icons if there is no taskbar.
inline bool FindIconOnScreen(RECT& place) {
  const HWND tray = FindWindowW(nullptr, L"Wine System Tray");
  const HWND window = tray == nullptr ? nullptr : GetWindow(tray, GW_CHILD);
  return IsWindowVisible(window) && GetWindowRect(window, &place);
}

// The desktop and the taskbar show tips too while the pointer rests there.
enum class TipsOf { kThisProgram, kTheScreen };

inline HWND VisibleTip(TipsOf tips = TipsOf::kThisProgram) {
  const auto counts = [tips](HWND tip) {
    DWORD process = 0;
    GetWindowThreadProcessId(tip, &process);
    return IsWindowVisible(tip) && (tips == TipsOf::kTheScreen || process == GetCurrentProcessId());
  };
  HWND tip = nullptr;
  do {
    tip = FindWindowExW(nullptr, tip, L"tooltips_class32", nullptr);
  } while (tip != nullptr && !counts(tip));
  return tip;
}

// Empty while no tooltip is visible.
inline std::wstring TipOnScreen(TipsOf tips = TipsOf::kThisProgram) {
  std::array<wchar_t, 200> text = {};
  SendMessageTimeoutW(VisibleTip(tips), WM_GETTEXT, text.size(),
                      reinterpret_cast<LPARAM>(text.data()), SMTO_NORMAL, 1'000, nullptr);
  return text.data();
}

// The tip of the icon under the pointer. Tries several times: a movement before the icon is ready
// has no effect.
inline bool ShowsTrayTip(const std::wstring& text) {
  bool isShown = false;
  for (int attempt = 0; attempt < 5 && !isShown; ++attempt) {
    SetCursorPos(700, 700);
    RECT place = {};
    if (!PumpUntil([&] { return FindIconOnScreen(place); })) break;
    SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    isShown =
        PumpUntil([&] { return TipOnScreen(TipsOf::kTheScreen) == text; }, std::chrono::seconds(2));
  }
  SetCursorPos(700, 700);
  return isShown;
}

}  // namespace tellurvane

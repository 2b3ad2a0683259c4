// The main window and its tray icon: going behind it, coming back, and its menu.
#include "mainwin/FrmMain.h"
#include "mainwin/Menus.h"
#include "mainwin/PopupMenus.h"

namespace tellurvane {
namespace {

constexpr std::uint64_t kSlowMilliseconds = 1'000;
constexpr std::uint64_t kPauseMilliseconds = 30'000;

bool IsOwnedBy(HWND window, HWND owner) {
  while (window != nullptr && window != owner) window = GetWindow(window, GW_OWNER);
  return window == owner;
}

// What Windows puts over a window without a caption, a tooltip say, is no dialog.
bool IsOpenDialog(HWND window) {
  const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
  return (style & WS_CAPTION) == WS_CAPTION && IsWindowVisible(window) && IsWindowEnabled(window);
}

struct DialogSearch {
  HWND owner;
  HWND found;
};

// The windows come from the topmost to the lowest one.
BOOL CALLBACK FindDialog(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<DialogSearch*>(parameter);
  if (window == search.owner || !IsOpenDialog(window) || !IsOwnedBy(window, search.owner)) {
    return TRUE;
  }
  search.found = window;
  return FALSE;
}

}  // namespace

// The icon is not in the tray before the window hides.
void FrmMain::CreateTrayIcon() {
  clsIcon_.LButtonDown = [this] { clsIcon_LButtonDown(); };
  clsIcon_.RButtonDown = [this] { clsIcon_RButtonDown(); };
  clsIcon_.IconInit(*this);
  clsIcon_.IconTip(kApplicationTitle);
}

// A dialog that is open is not hidden together with the window that it belongs to.
void FrmMain::clsIcon_LButtonDown() {
  if (Enabled()) {
    FormMin();
  } else {
    ComeToFront();
  }
}

void FrmMain::FormMin() {
  if (Visible()) {
    HideToTray();
    return;
  }
  ShowInTaskbar(true);
  Open();
  SetForegroundWindow(hwnd());
  clsIcon_.IconDelete();
}

// Not without the icon: nothing would be left that brings the window back. The taskbar may be too
// busy to take it, and is then asked again each second.
void FrmMain::HideToTray() {
  isHidePending_ = !clsIcon_.IconAdd();
  if (isHidePending_) return;
  Hide();
  ShowInTaskbar(false);
}

void FrmMain::RetryTrayIcon() {
  // A dialog that was opened meanwhile is a reason to stay.
  isHidePending_ = isHidePending_ && Enabled();
  const std::uint64_t start = milliseconds_();
  if (start < nextIconTry_) return;
  if (!isHidePending_ && clsIcon_.IsMissing()) (void)clsIcon_.IconAdd();
  // Minimised by another program, without a taskbar button: Windows leaves a stub of such a window
  // above the taskbar.
  const bool isStub = Visible() && IsIconic(hwnd()) && Enabled() && clsIcon_.IsInTray();
  if (isHidePending_ || isStub) HideToTray();
  // A taskbar that hangs answers after seconds: asked each second, it would stop this program too.
  const std::uint64_t end = milliseconds_();
  if (end - start > kSlowMilliseconds) nextIconTry_ = end + kPauseMilliseconds;
}

// The user has brought the window back before the taskbar took the icon. Without a taskbar button
// the icon is still wanted.
void FrmMain::CancelPendingHide() {
  if (!isHidePending_) return;
  isHidePending_ = false;
  const bool isInTaskbar = (GetWindowLongPtrW(hwnd(), GWL_EXSTYLE) & WS_EX_APPWINDOW) != 0;
  if (isInTaskbar) clsIcon_.IconDelete();
}

// The window has an owner, and so a taskbar button only as long as it asks for one.
void FrmMain::ShowInTaskbar(bool show) {
  const LONG_PTR style = GetWindowLongPtrW(hwnd(), GWL_EXSTYLE);
  SetWindowLongPtrW(hwnd(), GWL_EXSTYLE,
                    show ? style | WS_EX_APPWINDOW : style & ~LONG_PTR{WS_EX_APPWINDOW});
}

// The topmost dialog, which has to be closed before the window can be used; without one the window.
HWND FrmMain::FrontWindow() const {
  DialogSearch search = {hwnd(), nullptr};
  EnumThreadWindows(GetCurrentThreadId(), FindDialog, reinterpret_cast<LPARAM>(&search));
  return search.found != nullptr ? search.found : hwnd();
}

void FrmMain::ComeToFront() {
  CancelPendingHide();
  if (!Visible() || IsIconic(hwnd())) Open();
  const HWND front = FrontWindow();
  // Above all others for a moment: where Windows refuses the foreground, and under Wine, where
  // another window manager decides, the window is at least seen.
  for (const HWND place : {HWND_TOPMOST, HWND_NOTOPMOST}) {
    SetWindowPos(front, place, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }
  SetForegroundWindow(front);
}

// A menu closes by a click beside it and by Esc only while its owner is in the foreground, even
// where that is hidden. The empty message makes the menu close the next time too, as the platform
// asks.
void FrmMain::IconMenuClick(HWND owner) {
  const HWND before = GetForegroundWindow();
  SetForegroundWindow(owner);
  const UINT chosen = ShowPopupMenu(owner, TrayMenu(general_.settings), 0);
  PostMessageW(owner, WM_NULL, 0, 0);
  // A window that was clicked instead of the menu has the foreground already.
  const bool isKept = chosen == kShowMainWindow || chosen == kLeave;
  // What the click on the icon came from, the overflow of the tray say, may be gone by now.
  const bool canGiveBack = before != nullptr && IsWindowVisible(before);
  if (!isKept && canGiveBack && GetForegroundWindow() == owner) SetForegroundWindow(before);
  switch (chosen) {
    case kShowMainWindow:
      // Deliberately without the rest of the way back: the tray icon stays, and no taskbar button.
      ComeToFront();
      break;
    case kSwitchClockFromTray:
      SwitchClock();
      break;
    case kLeave:
      Leave();
      break;
    default:
      break;
  }
}

}  // namespace tellurvane

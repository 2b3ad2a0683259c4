// The main window and its tray icon: hiding, coming back, and the menu.
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

// A dialog has a caption; a tooltip, for example, has none.
bool IsOpenDialog(HWND window) {
  const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
  return (style & WS_CAPTION) == WS_CAPTION && IsWindowVisible(window) && IsWindowEnabled(window);
}

struct DialogSearch {
  HWND owner;
  HWND found;
};

// Called from the topmost window to the lowest.
BOOL CALLBACK FindDialog(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<DialogSearch*>(parameter);
  if (window == search.owner || !IsOpenDialog(window) || !IsOwnedBy(window, search.owner)) {
    return TRUE;
  }
  search.found = window;
  return FALSE;
}

}  // namespace

// The icon is added when the window hides.
void FrmMain::CreateTrayIcon() {
  clsIcon_.LButtonDown = [this] { clsIcon_LButtonDown(); };
  clsIcon_.RButtonDown = [this] { clsIcon_RButtonDown(); };
  clsIcon_.IconInit(*this);
  ShowTrayTip(kApplicationTitle);
}

// An open dialog is not hidden with its window: it comes to the front.
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

// Without the icon nothing would bring the window back. If the taskbar is too busy to take it,
// RetryTrayIcon tries again.
void FrmMain::HideToTray() {
  // First: the taskbar may be too slow for a second request.
  ShowTrayTip(TrayTip(kApplicationTitle, rows_.FailedCount()));
  isHidePending_ = !clsIcon_.IconAdd();
  if (isHidePending_) return;
  Hide();
  ShowInTaskbar(false);
}

// The taskbar is asked only for a new text.
void FrmMain::UpdateTrayTip() {
  const std::wstring tip = TrayTip(kApplicationTitle, Visible() ? 0 : rows_.FailedCount());
  if (tip != trayTip_) AskTaskbar([&] { ShowTrayTip(tip); });
}

void FrmMain::ShowTrayTip(const std::wstring& tip) {
  if (clsIcon_.IconTip(tip)) trayTip_ = tip;
}

void FrmMain::RetryTrayIcon() {
  // Do not hide the window of a dialog that was opened since.
  isHidePending_ = isHidePending_ && Enabled();
  AskTaskbar([this] {
    if (!isHidePending_ && clsIcon_.IsMissing()) (void)clsIcon_.IconAdd();
    // Another program minimised the window while it has no taskbar button: Windows shows a stub of
    // it above the taskbar.
    const bool isStub = Visible() && IsIconic(hwnd()) && Enabled() && clsIcon_.IsInTray();
    if (isHidePending_ || isStub) HideToTray();
  });
}

// A taskbar that hangs answers after seconds. Asked each second, it would block this program too.
void FrmMain::AskTaskbar(const std::function<void()>& ask) {
  const std::uint64_t start = milliseconds_();
  if (start < nextIconTry_) return;
  ask();
  const std::uint64_t end = milliseconds_();
  if (end - start > kSlowMilliseconds) nextIconTry_ = end + kPauseMilliseconds;
}

// The user brought the window back before the taskbar took the icon. A window without a taskbar
// button still needs the icon.
void FrmMain::CancelPendingHide() {
  if (!isHidePending_) return;
  isHidePending_ = false;
  const bool isInTaskbar = (GetWindowLongPtrW(hwnd(), GWL_EXSTYLE) & WS_EX_APPWINDOW) != 0;
  if (isInTaskbar) clsIcon_.IconDelete();
}

// An owned window has a taskbar button only with this style.
void FrmMain::ShowInTaskbar(bool show) {
  const LONG_PTR style = GetWindowLongPtrW(hwnd(), GWL_EXSTYLE);
  SetWindowLongPtrW(hwnd(), GWL_EXSTYLE,
                    show ? style | WS_EX_APPWINDOW : style & ~LONG_PTR{WS_EX_APPWINDOW});
}

// The topmost open dialog, else the window.
HWND FrmMain::FrontWindow() const {
  DialogSearch search = {hwnd(), nullptr};
  EnumThreadWindows(GetCurrentThreadId(), FindDialog, reinterpret_cast<LPARAM>(&search));
  return search.found != nullptr ? search.found : hwnd();
}

void FrmMain::ComeToFront() {
  CancelPendingHide();
  if (!Visible() || IsIconic(hwnd())) Open();
  const HWND front = FrontWindow();
  // Topmost for a moment: if Windows does not give it the foreground, it is at least visible.
  for (const HWND place : {HWND_TOPMOST, HWND_NOTOPMOST}) {
    SetWindowPos(front, place, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }
  SetForegroundWindow(front);
}

// A click elsewhere and Esc close a menu only while its owner, even a hidden one, is in the
// foreground. The platform asks for the empty message: without it the next menu would not close.
void FrmMain::IconMenuClick(HWND owner, std::optional<POINT> place) {
  const HWND before = GetForegroundWindow();
  SetForegroundWindow(owner);
  const UINT chosen = ShowPopupMenu(owner, TrayMenu(general_.settings), 0, place);
  PostMessageW(owner, WM_NULL, 0, 0);
  const bool isKept = chosen == kShowMainWindow || chosen == kLeave;
  // The window before may be closed by now, such as the tray's overflow.
  const bool canGiveBack = before != nullptr && IsWindowVisible(before);
  // If the user clicked another window, that one has the foreground already.
  if (!isKept && canGiveBack && GetForegroundWindow() == owner) SetForegroundWindow(before);
  switch (chosen) {
    case kShowMainWindow:
      // Deliberately not FormMin: the tray icon stays, and there is no taskbar button.
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

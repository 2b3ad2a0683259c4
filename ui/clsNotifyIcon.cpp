#include "ui/clsNotifyIcon.h"

#include <algorithm>
#include <set>

#include "ui/Event.h"

namespace tellurvane {
namespace {

HICON IconOf(const Form& form) {
  const ULONG_PTR icon = GetClassLongPtrW(form.hwnd(), GCLP_HICONSM);
  // Without a picture the icon could not be seen.
  return icon != 0 ? reinterpret_cast<HICON>(icon) : LoadIconW(nullptr, IDI_APPLICATION);
}

std::set<clsNotifyIcon*>& AllIcons() {
  static std::set<clsNotifyIcon*> icons;
  return icons;
}

// The taskbar sends this to all top-level windows when it has started.
UINT TaskbarCreatedMessage() {
  static const UINT message = RegisterWindowMessageW(L"TaskbarCreated");
  return message;
}

}  // namespace

clsNotifyIcon::~clsNotifyIcon() {
  AllIcons().erase(this);
  IconDelete();
}

void clsNotifyIcon::DeleteAll() noexcept {
  for (clsNotifyIcon* const icon : AllIcons()) icon->IconDelete();
}

void clsNotifyIcon::IconInit(Form& form) {
  AllIcons().insert(this);
  box_.MouseMove = [this](const MouseEvent& event) { Decode(event); };
  box_.Create({.parent = form.hwnd(), .isVisible = false});
  SetWindowTextW(box_.hwnd(), L"NotifyIcon");

  record_ = {};
  // Not 936, the size in 32-bit programs: with 64-bit handles no version has it.
  record_.cbSize = sizeof(record_);
  record_.hWnd = box_.hwnd();
  record_.hIcon = IconOf(form);
  record_.uID = static_cast<UINT>(reinterpret_cast<UINT_PTR>(record_.hIcon));
  record_.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
  record_.uCallbackMessage = WM_MOUSEMOVE;
  // The version stays 0: the callback's lParam is then the number of the message and nothing else.

  // Broadcasts reach the form, not its box. An elevated program has to allow those of the taskbar.
  ChangeWindowMessageFilterEx(form.hwnd(), TaskbarCreatedMessage(), MSGFLT_ALLOW, nullptr);
  subclass_.Subclass(form.hwnd(), *this, 0);
  subclass_.AddMessage(form.hwnd(), TaskbarCreatedMessage(), kBeforePrevious);
  subclass_.AddMessage(form.hwnd(), WM_DESTROY, kBeforePrevious);
}

bool clsNotifyIcon::IconTip(const std::wstring& text) {
  if (text.empty()) return true;
  const size_t length = std::min(text.size(), std::size(record_.szTip) - 1);
  std::copy_n(text.begin(), length, record_.szTip);
  record_.szTip[length] = L'\0';
  return !isInTray_ || Shell_NotifyIconW(NIM_MODIFY, &record_);
}

bool clsNotifyIcon::IconAdd() {
  isWanted_ = true;
  // An icon that is there already can only be changed. It may be there although adding it failed:
  // the taskbar added it after the call's time-out.
  isInTray_ = Shell_NotifyIconW(NIM_ADD, &record_) || Shell_NotifyIconW(NIM_MODIFY, &record_);
  if (isInTray_) Shell_NotifyIconW(NIM_SETVERSION, &record_);
  return isInTray_;
}

void clsNotifyIcon::IconDelete() {
  if (!isWanted_) return;
  isWanted_ = false;
  isInTray_ = false;
  Shell_NotifyIconW(NIM_DELETE, &record_);
}

// The message number is in the place of a mouse event's column.
void clsNotifyIcon::Decode(const MouseEvent& event) const {
  if (event.x == WM_LBUTTONDOWN) {
    Raise(LButtonDown);
  } else if (event.x == WM_RBUTTONDOWN) {
    Raise(RButtonDown);
  }
}

void clsNotifyIcon::WndProc(bool /*before*/, bool& /*handled*/, LRESULT& /*result*/,
                            HWND /*window*/, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/,
                            LONG_PTR& /*userParam*/) {
  // While the form still has its windows: the taskbar removes only an icon of a live window.
  if (message == WM_DESTROY) {
    IconDelete();
  } else if (isWanted_) {
    (void)IconAdd();
  }
}

}  // namespace tellurvane

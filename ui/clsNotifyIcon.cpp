#include "ui/clsNotifyIcon.h"

#include <algorithm>
#include <set>

#include "ui/Event.h"

namespace tellurvane {
namespace {

HICON IconOf(const Form& form) {
  for (const auto size : {WPARAM{ICON_SMALL}, WPARAM{ICON_BIG}}) {
    const LRESULT icon = SendMessageW(form.hwnd(), WM_GETICON, size, 0);
    if (icon != 0) return reinterpret_cast<HICON>(icon);
  }
  // Without a picture the icon could neither be seen nor clicked.
  return LoadIconW(nullptr, IDI_APPLICATION);
}

std::set<clsNotifyIcon*>& AllIcons() {
  static std::set<clsNotifyIcon*> icons;
  return icons;
}

// What the taskbar tells all top-level windows when it has started.
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
  // The structure as this platform defines it. The size that 32-bit programs of old wrote here,
  // 936, is that of no version of the structure with 64-bit handles.
  record_.cbSize = sizeof(record_);
  record_.hWnd = box_.hwnd();
  record_.hIcon = IconOf(form);
  record_.uID = static_cast<UINT>(reinterpret_cast<UINT_PTR>(record_.hIcon));
  record_.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
  record_.uCallbackMessage = WM_MOUSEMOVE;
  // The version stays 0: the callback's lParam is then the number of the message and nothing else.

  // The box is a child and hears no broadcasts; its form does. An elevated program hears those of
  // the plain taskbar only where it allows them.
  ChangeWindowMessageFilterEx(form.hwnd(), TaskbarCreatedMessage(), MSGFLT_ALLOW, nullptr);
  subclass_.Subclass(form.hwnd(), *this, 0);
  subclass_.AddMessage(form.hwnd(), TaskbarCreatedMessage(), kBeforePrevious);
  subclass_.AddMessage(form.hwnd(), WM_DESTROY, kBeforePrevious);
}

void clsNotifyIcon::IconTip(const std::wstring& text) {
  if (text.empty()) return;
  const size_t length = std::min(text.size(), std::size(record_.szTip) - 1);
  std::copy_n(text.begin(), length, record_.szTip);
  record_.szTip[length] = L'\0';
  Shell_NotifyIconW(NIM_MODIFY, &record_);
}

bool clsNotifyIcon::IconAdd() {
  isWanted_ = true;
  // An icon that is there already cannot be added, only changed. It may be there although adding it
  // was reported as failed: the taskbar took it after the time-out of the call.
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

// The message number stands where a mouse event has its column.
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
  // While the form still has its windows: the taskbar forgets an icon only on behalf of a live one.
  if (message == WM_DESTROY) {
    IconDelete();
  } else if (isWanted_) {
    (void)IconAdd();
  }
}

}  // namespace tellurvane

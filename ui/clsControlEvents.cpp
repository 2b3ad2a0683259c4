// The messages of clsControl: what its host is asked and told, and what the keyboard does.
#include <windows.h>

#include <richedit.h>

#include <algorithm>
#include <initializer_list>
#include <string>

#include "ui/ClipboardText.h"
#include "ui/ControlKinds.h"
#include "ui/Event.h"
#include "ui/clsControl.h"

namespace tellurvane {

void clsControl::Attach() {
  const HWND host = hostWindow_ = host_->hwnd();
  engine_.Subclass(host, *this, 0);
  for (const UINT message : std::initializer_list<UINT>{WM_COMMAND, WM_CTLCOLORBTN, WM_CTLCOLOREDIT,
                                                        WM_CTLCOLORLISTBOX, WM_CTLCOLORSTATIC}) {
    engine_.AddMessage(host, message, kBeforePrevious);
  }
  for (const UINT message : std::initializer_list<UINT>{WM_SIZE, WM_ENABLE, WM_SETFOCUS}) {
    engine_.AddMessage(host, message, kAfterPrevious);
  }
  engine_.Subclass(hwnd_, *this, 0);
  engine_.AddMessage(hwnd_, WM_GETDLGCODE, kBeforePrevious);
  engine_.AddMessage(hwnd_, WM_NCDESTROY, kAfterPrevious);
  // A combo box itself tells of the focus, which wanders among its parts.
  if (FamilyOf(kind_) != ControlFamily::kComboBox) {
    engine_.AddMessage(hwnd_, WM_SETFOCUS, kAfterPrevious);
    engine_.AddMessage(hwnd_, WM_KILLFOCUS, kAfterPrevious);
  }
  if (kind_ == ControlKind::kSimpleComboBox) {
    engine_.AddMessage(hwnd_, WM_ERASEBKGND, kBeforePrevious);
  }
  AttachKeyboard(hwnd_);
  const HWND inner = TypingWindow();
  if (inner != nullptr && inner != hwnd_) {
    engine_.Subclass(inner, *this, 0);
    AttachKeyboard(inner);
  }
  if (DropsDown(kind_)) AttachDropDown();
}

// The list that drops down is a window of the screen, not of the control. Some programs post a
// close message to every such window, and without its list the combo box would lose its entries.
void clsControl::AttachDropDown() {
  COMBOBOXINFO info = {};
  info.cbSize = sizeof(info);
  if (!GetComboBoxInfo(hwnd_, &info)) return;
  engine_.Subclass(info.hwndList, *this, 0);
  engine_.AddMessage(info.hwndList, WM_CLOSE, kBeforePrevious);
}

void clsControl::AttachKeyboard(HWND window) {
  engine_.AddMessage(window, WM_KEYDOWN, kBeforePrevious);
  engine_.AddMessage(window, WM_LBUTTONDBLCLK, kAfterPrevious);
}

void clsControl::WndProc(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
                         WPARAM wParam, LPARAM lParam, LONG_PTR& /*userParam*/) {
  const bool isHost = window == hostWindow_;
  if (isHost && before) {
    HostMessageBefore(handled, result, message, wParam, lParam);
  } else if (isHost) {
    HostMessageAfter(message);
  } else if (before) {
    ControlMessageBefore(handled, result, window, message, wParam, lParam);
  } else {
    ControlMessageAfter(window, message);
  }
}

void clsControl::HostMessageBefore(bool& handled, LRESULT& result, UINT message, WPARAM wParam,
                                   LPARAM lParam) {
  handled = true;
  if (message == WM_COMMAND) {
    handled = reinterpret_cast<HWND>(lParam) == hwnd_;
    if (handled) OnCommand(HIWORD(wParam));
    return;
  }
  // The colours: a combo box passes on what its parts ask.
  result = reinterpret_cast<LRESULT>(PrepareContext(reinterpret_cast<HDC>(wParam)));
}

void clsControl::HostMessageAfter(UINT message) {
  switch (message) {
    case WM_SIZE:
      if (hwnd_ != nullptr) FitToHost();
      break;
    case WM_ENABLE:
      ApplyEnabled();
      break;
    case WM_SETFOCUS:
      if (kind_ != ControlKind::kLabel && IsWindowEnabled(hwnd_)) SetFocus(hwnd_);
      break;
    default:
      break;
  }
}

void clsControl::ControlMessageBefore(bool& handled, LRESULT& result, HWND window, UINT message,
                                      WPARAM wParam, LPARAM lParam) {
  constexpr LPARAM kWasDown = 1 << 30;
  if (message == WM_KEYDOWN) {
    handled = OnKeyDown(window, static_cast<UINT>(wParam), (lParam & kWasDown) != 0);
    return;
  }
  if (message == WM_CLOSE) {
    handled = true;
    return;
  }
  if (message == WM_ERASEBKGND) {
    EraseBelowList(reinterpret_cast<HDC>(wParam));
    return;
  }
  if (const auto code = DialogCode(reinterpret_cast<const MSG*>(lParam))) {
    handled = true;
    result = *code;
  }
}

void clsControl::ControlMessageAfter(HWND window, UINT message) {
  switch (message) {
    case WM_SETFOCUS:
      Raise(GotFocus);
      break;
    case WM_KILLFOCUS:
      Raise(LostFocus);
      break;
    case WM_LBUTTONDBLCLK:
      Raise(DblClick);
      break;
    case WM_NCDESTROY:
      if (window == hwnd_) hwnd_ = nullptr;
      break;
    default:
      break;
  }
}

void clsControl::OnCommand(UINT notification) {
  switch (FamilyOf(kind_)) {
    case ControlFamily::kButton:
    case ControlFamily::kLabel:
      static_assert(BN_CLICKED == STN_CLICKED);
      if (notification == BN_CLICKED) Raise(Click);
      return;
    case ControlFamily::kEdit:
    case ControlFamily::kRichEdit:
      if (notification == EN_CHANGE && !isSettingText_) Raise(Change);
      return;
    case ControlFamily::kListBox:
      if (notification == LBN_SELCHANGE) Raise(Click);
      return;
    case ControlFamily::kComboBox:
      break;
  }
  if (notification == CBN_SELCHANGE) return Raise(Click);
  if (notification == CBN_EDITCHANGE) return Raise(Change);
  if (notification == CBN_SETFOCUS) return Raise(GotFocus);
  if (notification == CBN_KILLFOCUS) return Raise(LostFocus);
}

bool clsControl::OnKeyDown(HWND window, UINT key, bool isRepeated) {
  const bool presses = kind_ == ControlKind::kPushButton && key == VK_RETURN;
  // Copied: either handler may destroy the control that holds it.
  const auto ask = KeyDown;
  const auto press = Click;
  if ((ask && ask(key)) || PastePlainText(key)) {
    // The character of the key waits behind it.
    MSG character = {};
    if (IsWindow(window)) PeekMessageW(&character, window, WM_CHAR, WM_CHAR, PM_REMOVE);
    return true;
  }
  if (presses && !isRepeated) Raise(press);
  return presses;
}

// The keys of pasting in a rich edit box; true when the key was one. Done here because not every
// system's box pastes well in its plain-text mode: Wine's takes formats all the same, and replaces
// the whole text.
bool clsControl::PastePlainText(UINT key) const {
  if (FamilyOf(kind_) != ControlFamily::kRichEdit || GetKeyState(VK_MENU) < 0) return false;
  const bool isControl = GetKeyState(VK_CONTROL) < 0;
  const bool isShift = GetKeyState(VK_SHIFT) < 0;
  if (!(key == 'V' && isControl) && !(key == VK_INSERT && isShift)) return false;
  if ((Send(EM_GETOPTIONS) & ECO_READONLY) != 0) return true;
  std::wstring pasted = ClipboardText(hwnd_);
  // As the box itself does: what is more than it may hold is cut.
  CHARRANGE selected = {};
  Send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selected));
  const LRESULT kept = GetWindowTextLengthW(hwnd_) - (selected.cpMax - selected.cpMin);
  const LRESULT available = std::max(Send(EM_GETLIMITTEXT) - kept, LRESULT{0});
  pasted.resize(std::min(pasted.size(), static_cast<size_t>(available)));
  if (!pasted.empty()) Send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(pasted.c_str()));
  return true;
}

// Which keys the control keeps from the form. The boxes' own answers are not asked for: with them
// a box would believe itself in a dialog of the platform's, where Esc closes the window around the
// box (its host) and Enter makes no new line.
std::optional<LRESULT> clsControl::DialogCode(const MSG* message) const {
  const bool isKey = message != nullptr && message->message == WM_KEYDOWN;
  const bool isEnter = isKey && message->wParam == VK_RETURN;
  const ControlFamily family = FamilyOf(kind_);
  if (family == ControlFamily::kEdit || family == ControlFamily::kRichEdit) {
    constexpr LRESULT kBox = DLGC_WANTARROWS | DLGC_WANTCHARS;
    if (multilin_ <= 0) return kBox | DLGC_HASSETSEL;
    return isEnter ? kBox | DLGC_WANTMESSAGE : kBox;
  }
  // Without this the platform would press a button of its own choice.
  if (kind_ == ControlKind::kPushButton && isEnter) {
    return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON | DLGC_WANTMESSAGE;
  }
  // Arrows would carry the keyboard to whatever stands next to the option.
  const bool isArrow = isKey && message->wParam >= VK_LEFT && message->wParam <= VK_DOWN;
  if (kind_ == ControlKind::kOptionButton && isArrow) {
    return DLGC_BUTTON | DLGC_RADIOBUTTON | DLGC_WANTARROWS;
  }
  return std::nullopt;
}

}  // namespace tellurvane

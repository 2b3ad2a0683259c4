// The messages of clsControl and its host, and the keyboard.
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
  for (const UINT message : std::initializer_list<UINT>{WM_SIZE, WM_ENABLE, WM_SETFOCUS,
                                                        WM_SYSCOLORCHANGE, WM_SETTINGCHANGE}) {
    engine_.AddMessage(host, message, kAfterPrevious);
  }
  engine_.Subclass(hwnd_, *this, 0);
  for (const UINT message : std::initializer_list<UINT>{WM_GETDLGCODE, WM_KEYDOWN, WM_NCDESTROY}) {
    engine_.AddMessage(hwnd_, message, kBeforePrevious);
  }
  if (kind_ == ControlKind::kSimpleComboBox) {
    engine_.AddMessage(hwnd_, WM_ERASEBKGND, kBeforePrevious);
  }
  if (DropsDown(kind_)) AttachDropDown();
}

// The list that drops down is a top-level window. Some programs post a close message to all of
// those, and without its list the combo box would lose its entries.
void clsControl::AttachDropDown() {
  COMBOBOXINFO info = {};
  info.cbSize = sizeof(info);
  if (!GetComboBoxInfo(hwnd_, &info)) return;
  engine_.Subclass(info.hwndList, *this, 0);
  engine_.AddMessage(info.hwndList, WM_CLOSE, kBeforePrevious);
}

void clsControl::WndProc(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
                         WPARAM wParam, LPARAM lParam, LONG_PTR& /*userParam*/) {
  if (window != hostWindow_) {
    ControlMessageBefore(handled, result, window, message, wParam, lParam);
  } else if (before) {
    HostMessageBefore(handled, result, message, wParam, lParam);
  } else {
    HostMessageAfter(message);
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
  // WM_CTLCOLOR…, also from the parts of a combo box.
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
    case WM_SYSCOLORCHANGE:
    case WM_SETTINGCHANGE:
      if (ColorsNow() != shownColors_) ApplyColors();
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
  switch (message) {
    case WM_KEYDOWN:
      handled = OnKeyDown(window, static_cast<UINT>(wParam), IsRepeatedKey(lParam));
      break;
    case WM_CLOSE:
      handled = true;
      break;
    case WM_ERASEBKGND:
      EraseBelowList(reinterpret_cast<HDC>(wParam));
      break;
    case WM_NCDESTROY:
      hwnd_ = nullptr;
      break;
    default:
      if (const auto code = DialogCode(reinterpret_cast<const MSG*>(lParam))) {
        handled = true;
        result = *code;
      }
      break;
  }
}

void clsControl::OnCommand(UINT notification) {
  switch (FamilyOf(kind_)) {
    case ControlFamily::kButton:
    case ControlFamily::kLabel:
      static_assert(BN_CLICKED == STN_CLICKED);
      if (notification == BN_CLICKED) Raise(Click);
      break;
    case ControlFamily::kEdit:
    case ControlFamily::kRichEdit:
      if (notification == EN_CHANGE && !isSettingText_) Raise(Change);
      break;
    case ControlFamily::kListBox:
      if (notification == LBN_SELCHANGE) Raise(Click);
      break;
    case ControlFamily::kComboBox:
      if (notification == CBN_SELCHANGE) Raise(Click);
      if (notification == CBN_EDITCHANGE) Raise(Change);
      break;
  }
}

bool clsControl::OnKeyDown(HWND window, UINT key, bool isRepeated) {
  const auto dropCharacter = [window] {
    // The key's character is already in the queue.
    MSG character = {};
    PeekMessageW(&character, window, WM_CHAR, WM_CHAR, PM_REMOVE);
  };
  if ((KeyDown && KeyDown(key)) || PastePlainText(key)) {
    dropCharacter();
    return true;
  }
  if (kind_ != ControlKind::kPushButton || key != VK_RETURN) return false;
  // First: the click may disable the box, and some versions of the platform then look for the
  // button of the character for ever.
  dropCharacter();
  if (!isRepeated) Raise(Click);
  return true;
}

// True for the paste keys in a rich edit box. Not left to the box: Wine's pastes formatted text
// even in plain-text mode, and replaces the whole text.
bool clsControl::PastePlainText(UINT key) const {
  if (FamilyOf(kind_) != ControlFamily::kRichEdit || GetKeyState(VK_MENU) < 0) return false;
  const bool isControl = GetKeyState(VK_CONTROL) < 0;
  const bool isShift = GetKeyState(VK_SHIFT) < 0;
  if (!(key == 'V' && isControl) && !(key == VK_INSERT && isShift)) return false;
  if ((Send(EM_GETOPTIONS) & ECO_READONLY) != 0) return true;
  std::wstring pasted = ClipboardText(hwnd_);
  // EM_REPLACESEL ignores the box's limit.
  CHARRANGE selected = {};
  Send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selected));
  const LRESULT kept = GetWindowTextLengthW(hwnd_) - (selected.cpMax - selected.cpMin);
  const LRESULT available = std::max(Send(EM_GETLIMITTEXT) - kept, LRESULT{0});
  pasted.resize(std::min(pasted.size(), static_cast<size_t>(available)));
  if (!pasted.empty()) Send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(pasted.c_str()));
  return true;
}

// The keys that the control keeps from the form. An edit box's own answer would not do: it would
// then assume a dialog of the platform, where Esc closes its parent and Enter makes no new line.
std::optional<LRESULT> clsControl::DialogCode(const MSG* message) const {
  const bool isKey = message != nullptr && message->message == WM_KEYDOWN;
  const bool isEnter = isKey && message->wParam == VK_RETURN;
  const ControlFamily family = FamilyOf(kind_);
  if (family == ControlFamily::kEdit || family == ControlFamily::kRichEdit) {
    constexpr LRESULT kBox = DLGC_WANTARROWS | DLGC_WANTCHARS;
    if (multilin_ <= 0) return kBox | DLGC_HASSETSEL;
    return isEnter ? kBox | DLGC_WANTMESSAGE : kBox;
  }
  // Otherwise the platform would press another button.
  if (kind_ == ControlKind::kPushButton && isEnter) {
    return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON | DLGC_WANTMESSAGE;
  }
  // Otherwise an arrow would move the focus to the next control.
  const bool isArrow = isKey && message->wParam >= VK_LEFT && message->wParam <= VK_DOWN;
  if (kind_ == ControlKind::kOptionButton && isArrow) {
    return DLGC_BUTTON | DLGC_RADIOBUTTON | DLGC_WANTARROWS;
  }
  return std::nullopt;
}

}  // namespace tellurvane

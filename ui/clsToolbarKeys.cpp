// The keyboard in the toolbar: arrows move, Enter and Space press.
#include "ui/FocusFrame.h"
#include "ui/clsToolbar.h"

namespace tellurvane {
namespace {

bool IsPressingKey(WPARAM key) { return key == VK_RETURN || key == VK_SPACE; }

}  // namespace

// Enter would reach the form instead.
LRESULT clsToolbar::DialogCode(const MSG* message) {
  constexpr LRESULT kOwnKeys = DLGC_WANTARROWS | DLGC_WANTCHARS;
  const bool presses =
      message != nullptr && message->message == WM_KEYDOWN && IsPressingKey(message->wParam);
  return presses ? kOwnKeys | DLGC_WANTMESSAGE : kOwnKeys;
}

bool clsToolbar::OnKeyDown(UINT key, bool isRepeated) {
  const int end = ButtonCount() + 1;
  switch (key) {
    case VK_LEFT:
    case VK_UP:
      MoveFocus(focused_, -1);
      return true;
    case VK_RIGHT:
    case VK_DOWN:
      MoveFocus(focused_, 1);
      return true;
    case VK_HOME:
      MoveFocus(0, 1);
      return true;
    case VK_END:
      MoveFocus(end, -1);
      return true;
    case VK_RETURN:
    case VK_SPACE:
      if (!isRepeated) PressFocused();
      return true;
    default:
      return false;
  }
}

// To the next button that can be used; without one it stays.
void clsToolbar::MoveFocus(int from, int step) {
  for (int id = from + step; id >= 1 && id <= ButtonCount(); id += step) {
    if (!Visible(id) || !Enabled(id)) continue;
    focused_ = id;
    break;
  }
  RedrawFocus();
}

// A button that was disabled after it was pressed keeps the keyboard, but cannot be pressed again.
void clsToolbar::PressFocused() {
  if (!Visible(focused_) || !Enabled(focused_)) return;
  // The key's character is already in the queue; it would close a menu that the button opens.
  MSG character = {};
  PeekMessageW(&character, toolbar_, WM_CHAR, WM_CHAR, PM_REMOVE);
  isPressedByKey_ = true;
  SendMessageW(host_->hwnd(), WM_COMMAND, static_cast<WPARAM>(focused_),
               reinterpret_cast<LPARAM>(toolbar_));
  isPressedByKey_ = false;
}

RECT clsToolbar::ButtonPlace(int id) const {
  RECT place = {};
  Send(TB_GETRECT, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&place));
  MapWindowPoints(toolbar_, nullptr, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

// With the background, to erase the former frame.
void clsToolbar::RedrawFocus() const {
  if (toolbar_ != nullptr) InvalidateRect(toolbar_, nullptr, TRUE);
}

void clsToolbar::PaintFocus() const {
  if (toolbar_ == nullptr || GetFocus() != toolbar_) return;
  RECT place = {};
  if (Send(TB_GETRECT, static_cast<WPARAM>(focused_), reinterpret_cast<LPARAM>(&place)) == 0)
    return;
  const WindowDc context(toolbar_);
  DrawFocusFrame(context.Get(), place);
}

}  // namespace tellurvane

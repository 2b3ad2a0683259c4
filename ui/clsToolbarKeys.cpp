// The keyboard in the toolbar: arrows move, Enter and Space press.
#include <utility>

#include "ui/AccessibleObject.h"
#include "ui/FocusFrame.h"
#include "ui/clsToolbar.h"

namespace tellurvane {
namespace {

bool IsPressingKey(WPARAM key) { return key == VK_RETURN || key == VK_SPACE; }

}  // namespace

void clsToolbar::HandleKeyboard(bool& handled, LRESULT& result, UINT message, WPARAM wParam,
                                LPARAM lParam) {
  switch (message) {
    case WM_GETDLGCODE:
      handled = true;
      result = DialogCode(reinterpret_cast<const MSG*>(lParam));
      break;
    case WM_KEYDOWN:
      handled = OnKeyDown(static_cast<UINT>(wParam), IsRepeatedKey(lParam));
      break;
    case WM_SETFOCUS:
      TakeFocus();
      break;
    case WM_KILLFOCUS:
      LoseFocus();
      break;
    case WM_PAINT:
      PaintFocus();
      break;
    default:
      break;
  }
}

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
      MoveFocus(NextUsable(focused_, -1));
      return true;
    case VK_RIGHT:
    case VK_DOWN:
      MoveFocus(NextUsable(focused_, 1));
      return true;
    case VK_HOME:
      MoveFocus(NextUsable(0, 1));
      return true;
    case VK_END:
      MoveFocus(NextUsable(end, -1));
      return true;
    case VK_RETURN:
    case VK_SPACE:
      if (!isRepeated) PressFocused();
      return true;
    default:
      return false;
  }
}

// The focused button if there is none.
int clsToolbar::NextUsable(int from, int step) const {
  for (int id = from + step; id >= 1 && id <= ButtonCount(); id += step) {
    if (Visible(id) && Enabled(id)) return id;
  }
  return focused_;
}

void clsToolbar::MoveFocus(int id) {
  if (std::exchange(focused_, id) != id) ShowFocus();
}

void clsToolbar::TakeFocus() {
  // The button may have been disabled meanwhile.
  if (!Visible(focused_) || !Enabled(focused_)) focused_ = NextUsable(0, 1);
  ShowFocus();
}

void clsToolbar::LoseFocus() const {
  Send(TB_SETHOTITEM, static_cast<WPARAM>(-1));
  RedrawFocus();
}

// The native toolbar has a mark of its own, and reports only that the whole toolbar has the
// keyboard.
void clsToolbar::ShowFocus() const {
  Send(TB_SETHOTITEM, static_cast<WPARAM>(focused_) - 1);
  NotifyWinEvent(EVENT_OBJECT_FOCUS, toolbar_, OBJID_CLIENT, focused_);
  RedrawFocus();
}

void clsToolbar::AccessibleName(const std::wstring& name) {
  MakeAccessible(toolbar_,
                 {.name = [name] { return name; },
                  .focusedChild = [this] { return GetFocus() == toolbar_ ? focused_ : 0; }});
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
  DrawFocusFrame(context.Get(), place, COLOR_BTNTEXT);
}

}  // namespace tellurvane

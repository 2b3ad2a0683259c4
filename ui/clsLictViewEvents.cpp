// The messages of clsLictView, and the events that it raises.
#include <windows.h>

#include <windowsx.h>

#include <algorithm>
#include <initializer_list>

#include "base/PlatformText.h"
#include "ui/Event.h"
#include "ui/FocusFrame.h"
#include "ui/ToolkitFont.h"
#include "ui/clsLictView.h"

namespace tellurvane {
namespace {

int ButtonOf(UINT message, WPARAM keys) {
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONUP:
      return kLeftButton;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_RBUTTONUP:
      return kRightButton;
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
    case WM_MBUTTONUP:
      return kMiddleButton;
    default:
      return ButtonsDown(keys);
  }
}

MouseEvent EventAt(int button, const POINT& position) {
  return {button, ShiftNow(), static_cast<int>(position.x), static_cast<int>(position.y)};
}

template <typename Record>
Record& RecordOf(NMHDR& notification) {
  return reinterpret_cast<Record&>(notification);
}

}  // namespace

void clsLictView::SubclassBoth() {
  engine_.Subclass(list_, *this, 0);
  for (UINT message = WM_MOUSEMOVE; message <= WM_MBUTTONDBLCLK; ++message) {
    engine_.AddMessage(list_, message, kBeforePrevious);
  }
  for (const UINT message :
       std::initializer_list<UINT>{WM_KEYDOWN, WM_KEYUP, WM_GETDLGCODE, WM_NOTIFY, WM_PAINT,
                                   WM_SETFOCUS, WM_KILLFOCUS, WM_NCDESTROY}) {
    engine_.AddMessage(list_, message, kBeforePrevious);
  }
  engine_.Subclass(container_, *this, 0);
  engine_.AddMessage(container_, WM_NOTIFY, kBeforePrevious);
  for (const UINT message :
       std::initializer_list<UINT>{WM_NCDESTROY, WM_SYSCOLORCHANGE, WM_SETTINGCHANGE}) {
    engine_.AddMessage(container_, message, kBeforePrevious);
  }
}

void clsLictView::WndProc(bool /*before*/, bool& handled, LRESULT& result, HWND window,
                          UINT message, WPARAM wParam, LPARAM lParam, LONG_PTR& /*userParam*/) {
  handled = true;
  result = window == list_ ? zLVCallBack(window, message, wParam, lParam)
                           : zLVpCallBack(window, message, wParam, lParam);
}

LRESULT clsLictView::zLVCallBack(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_KEYDOWN:
      Raise(KeyDown, static_cast<UINT>(wParam), ShiftNow());
      if (IsKeyHeldBack(static_cast<UINT>(wParam))) return 0;
      break;
    case WM_KEYUP:
      Raise(KeyUp, static_cast<UINT>(wParam), ShiftNow());
      break;
    case WM_GETDLGCODE:
      if (WantsKey(reinterpret_cast<const MSG*>(lParam))) {
        return engine_.CallOldWndProc(window, message, wParam, lParam) | DLGC_WANTMESSAGE;
      }
      break;
    case WM_NOTIFY:
      // From the header.
      if (IsHeaderHeldBack(*reinterpret_cast<const NMHDR*>(lParam))) return TRUE;
      break;
    case WM_PAINT: {
      const LRESULT result = engine_.CallOldWndProc(window, message, wParam, lParam);
      DrawEmptyText();
      DrawEmptyFocus();
      return result;
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS: {
      const LRESULT result = engine_.CallOldWndProc(window, message, wParam, lParam);
      FocusMoved();
      return result;
    }
    case WM_NCDESTROY:
      list_ = nullptr;
      break;
    default:
      if (message >= WM_MOUSEFIRST && message <= WM_MBUTTONDBLCLK) {
        RaiseMouse(message, wParam, lParam);
      }
      break;
  }
  return engine_.CallOldWndProc(window, message, wParam, lParam);
}

LRESULT clsLictView::zLVpCallBack(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NOTIFY) {
    auto& notification = *reinterpret_cast<NMHDR*>(lParam);
    if (notification.hwndFrom == list_) return HandleNotification(notification);
  }
  // The container's class forwards nothing.
  const bool isForList = message == WM_SYSCOLORCHANGE || message == WM_SETTINGCHANGE;
  if (isForList && list_ != nullptr) {
    SendMessageW(list_, message, wParam, lParam);
    TakeSystemColors();
  }
  if (message == WM_NCDESTROY) container_ = nullptr;
  return engine_.CallOldWndProc(window, message, wParam, lParam);
}

// Some versions of the native list keep the colours that they were created with. Most changes of a
// setting change no colour.
void clsLictView::TakeSystemColors() {
  const DWORD ground = GetSysColor(COLOR_WINDOW);
  const DWORD ink = GetSysColor(COLOR_WINDOWTEXT);
  if (ground == ground_ && ink == ink_) return;
  ground_ = ground;
  ink_ = ink;
  SendMessageW(list_, LVM_SETBKCOLOR, 0, static_cast<LPARAM>(ground));
  SendMessageW(list_, LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(ground));
  SendMessageW(list_, LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(ink));
  InvalidateRect(list_, nullptr, TRUE);
}

LRESULT clsLictView::HandleNotification(NMHDR& notification) {
  switch (notification.code) {
    case LVN_GETDISPINFOW: {
      LVITEMW cell = RecordOf<NMLVDISPINFOW>(notification).item;
      AnswerData(cell);
      RecordOf<NMLVDISPINFOW>(notification).item = cell;
      break;
    }
    case LVN_ODFINDITEMW:
      return FindRow(RecordOf<NMLVFINDITEMW>(notification));
    case NM_CUSTOMDRAW:
      return RaiseCustomDraw(RecordOf<NMLVCUSTOMDRAW>(notification));
    case LVN_BEGINDRAG:
    case LVN_BEGINRDRAG:
      Raise(DragBegin, notification.code == LVN_BEGINDRAG,
            RecordOf<NMLISTVIEW>(notification).iItem);
      break;
    case LVN_COLUMNCLICK:
      Raise(ColumnClick, RecordOf<NMLISTVIEW>(notification).iSubItem);
      break;
    case LVN_ITEMCHANGED:
      RaiseItemChanged(RecordOf<NMLISTVIEW>(notification));
      break;
    case LVN_ITEMACTIVATE:
      // Not the record's row: after the Enter key some versions send a plain NMHDR.
      Raise(ItemActivate, Selected());
      break;
    case NM_CLICK:
    case NM_RCLICK:
    case NM_DBLCLK:
    case NM_RDBLCLK:
      RaiseClick(notification);
      break;
    case NM_KILLFOCUS:
      Raise(LostFocus);
      break;
    default:
      break;
  }
  return 0;
}

// The native list has no texts, so it asks for the row that a typed letter leads to.
int clsLictView::FindRow(const NMLVFINDITEMW& search) {
  constexpr UINT kSubstring = 0x0004;  // LVFI_SUBSTRING, the same as LVFI_PARTIAL
  const UINT flags = search.lvfi.flags;
  const bool isBeginning = (flags & (LVFI_PARTIAL | kSubstring)) != 0;
  const bool isByText = isBeginning || (flags & LVFI_STRING) != 0;
  if ((flags & LVFI_PARAM) != 0 || !isByText || search.lvfi.psz == nullptr) return -1;
  const std::wstring_view wanted = search.lvfi.psz;
  const int count = ListCount();
  const int first = std::max(search.iStart, 0);
  const int end = (flags & LVFI_WRAP) != 0 ? first + count : count;
  for (int place = first; place < end; ++place) {
    std::wstring found = text(place % count);
    if (isBeginning) found.resize(std::min(found.size(), wanted.size()));
    if (EqualsIgnoringCase(found, wanted)) return place % count;
  }
  return -1;
}

// Opaque: otherwise the letters would grow bolder with each painting.
void clsLictView::DrawEmptyText() const {
  if (list_ == nullptr || emptyText_.empty() || ListCount() > 0) return;
  constexpr UINT kLayout = DT_CENTER | DT_WORDBREAK | DT_NOPREFIX;
  const WindowDc context(list_);
  const SelectedObject font(context.Get(), ToolkitFont());
  SetTextColor(context.Get(), GetSysColor(COLOR_WINDOWTEXT));
  SetBkColor(context.Get(), GetSysColor(COLOR_WINDOW));
  RECT client = {};
  GetClientRect(list_, &client);
  client.top = HeaderBottom();
  RECT needed = client;
  DrawTextW(context.Get(), emptyText_.c_str(), -1, &needed, kLayout | DT_CALCRECT);
  const LONG spare = (client.bottom - client.top) - (needed.bottom - needed.top);
  client.top += std::max(spare, LONG{0}) / 2;
  DrawTextW(context.Get(), emptyText_.c_str(), -1, &client, kLayout);
}

void clsLictView::DrawEmptyFocus() const {
  if (!HasKeyboard() || ListCount() > 0) return;
  RECT client = {};
  GetClientRect(list_, &client);
  client.top = HeaderBottom();
  const WindowDc context(list_);
  DrawFocusFrame(context.Get(), client, COLOR_WINDOWTEXT);
}

LRESULT clsLictView::RaiseCustomDraw(NMLVCUSTOMDRAW& draw) const {
  LRESULT result = CDRF_DODEFAULT;
  if (isAutoDraw_) Raise(CustomDraw, draw, result);
  return result;
}

bool clsLictView::IsHeaderHeldBack(const NMHDR& notification) const {
  if (!isColumnLocked_ || notification.hwndFrom != HeaderhWnd()) return false;
  switch (notification.code) {
    case HDN_BEGINTRACKA:
    case HDN_BEGINTRACKW:
    case HDN_DIVIDERDBLCLICKA:
    case HDN_DIVIDERDBLCLICKW:
      return true;
    default:
      return false;
  }
}

void clsLictView::AnswerData(LVITEMW& cell) const {
  if ((cell.mask & LVIF_TEXT) != 0 && cell.pszText != nullptr && cell.cchTextMax > 0) {
    cell.pszText[0] = L'\0';
  }
  if ((cell.mask & LVIF_IMAGE) != 0) cell.iImage = I_IMAGENONE;
  Raise(OnData, cell.iItem, cell.iSubItem, cell);
}

void clsLictView::RaiseItemChanged(const NMLISTVIEW& change) {
  if (HasRow(change.iItem)) InvalidateRows(change.iItem, change.iItem);
  Raise(ItemChanged, change.iItem, change.uOldState, change.uNewState);
}

void clsLictView::RaiseClick(const NMHDR& notification) {
  const auto activation = reinterpret_cast<const NMITEMACTIVATE&>(notification);
  const UINT code = notification.code;
  const bool isSingle = code == NM_CLICK || code == NM_RCLICK;
  const bool isLeft = code == NM_CLICK || code == NM_DBLCLK;
  // The native list may remove the release from the queue while it waits for a drag.
  if (isSingle) RaiseMouseUp(isLeft ? kLeftButton : kRightButton, activation.ptAction);
  Raise(isSingle ? Click : DblClick, isLeft, activation.iItem, activation.iSubItem);
}

// Otherwise Enter would press the form's default button.
bool clsLictView::WantsKey(const MSG* message) const {
  return message != nullptr && message->message == WM_KEYDOWN && message->wParam == VK_RETURN &&
         ItemActivate && Selected() != -1;
}

bool clsLictView::IsKeyHeldBack(UINT key) const {
  if (!isKeyBlocked_) return false;
  if (key == VK_UP) return Selected() == 0;
  return key == VK_DOWN && Selected() == ListCount() - 1;
}

void clsLictView::RaiseMouse(UINT message, WPARAM wParam, LPARAM lParam) {
  const int button = ButtonOf(message, wParam);
  const POINT position = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  switch (message) {
    case WM_MOUSEMOVE:
      Raise(MouseMove, EventAt(button, position));
      break;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP:
      RaiseMouseUp(button, position);
      break;
    default:
      buttonsHeld_ |= button;
      Raise(MouseDown, EventAt(button, position));
      break;
  }
}

// Once for each press: a release comes as a message, as a click, or as both.
void clsLictView::RaiseMouseUp(int button, const POINT& position) {
  if ((buttonsHeld_ & button) == 0) return;
  buttonsHeld_ &= ~button;
  Raise(MouseUp, EventAt(button, position));
}

}  // namespace tellurvane

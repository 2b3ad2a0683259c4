#include "ui/clsToolbar.h"

#include <windows.h>

#include <commctrl.h>

#include <initializer_list>

#include "ui/AnsiText.h"
#include "ui/ChildWindow.h"
#include "ui/Event.h"
#include "ui/ToolkitFont.h"

namespace tellurvane {
namespace {

constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS |
                         CCS_NODIVIDER | CCS_NORESIZE;

}  // namespace

clsToolbar::~clsToolbar() {
  subclass_.Terminate();
  if (toolbar_ != nullptr) DestroyWindow(toolbar_);
}

void clsToolbar::Create(int imageSize) {
  INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_BAR_CLASSES};
  InitCommonControlsEx(&classes);
  SubclassHost();
  toolbar_ = CreateChildWindow({.parent = host_->hwnd(),
                                .className = TOOLBARCLASSNAMEW,
                                .style = kStyle,
                                .width = host_->ScaleWidth(),
                                .height = host_->ScaleHeight()});
  images_.Reset(ImageList_Create(imageSize, imageSize, ILC_COLORDDB | ILC_MASK, 1, 1));
  Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
  Send(TB_SETBITMAPSIZE, 0, MAKELPARAM(imageSize, imageSize));
  Send(TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_DRAWDDARROWS);
  Send(WM_SETFONT, reinterpret_cast<WPARAM>(ToolkitFont()), FALSE);
  ImageList(images_.Get());
  SubclassToolbar();
}

// Before the toolbar is there: it may make its tooltip at once.
void clsToolbar::SubclassHost() {
  subclass_.Subclass(host_->hwnd(), *this, 0);
  for (const UINT message :
       std::initializer_list<UINT>{WM_COMMAND, WM_NOTIFY, WM_NOTIFYFORMAT, WM_ERASEBKGND}) {
    subclass_.AddMessage(host_->hwnd(), message, kBeforePrevious);
  }
  subclass_.AddMessage(host_->hwnd(), WM_SIZE, kAfterPrevious);
}

void clsToolbar::SubclassToolbar() {
  subclass_.Subclass(toolbar_, *this, 0);
  for (const UINT message : std::initializer_list<UINT>{WM_GETDLGCODE, WM_KEYDOWN, WM_NCDESTROY}) {
    subclass_.AddMessage(toolbar_, message, kBeforePrevious);
  }
  for (const UINT message : std::initializer_list<UINT>{WM_SETFOCUS, WM_KILLFOCUS, WM_PAINT}) {
    subclass_.AddMessage(toolbar_, message, kAfterPrevious);
  }
  // The toolbar asked while it was made; the host only answers a toolbar that it knows.
  Send(WM_NOTIFYFORMAT, reinterpret_cast<WPARAM>(host_->hwnd()), NF_REQUERY);
}

HIMAGELIST clsToolbar::ImageList() const {
  return reinterpret_cast<HIMAGELIST>(Send(TB_GETIMAGELIST));
}

void clsToolbar::ImageList(HIMAGELIST images) {
  Send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images));
}

void clsToolbar::AddBitmap(HBITMAP bitmap, Color maskColor) const {
  ImageList_AddMasked(ImageList(), bitmap, maskColor);
}

void clsToolbar::ClearImages() const { ImageList_RemoveAll(ImageList()); }

int clsToolbar::AddButton(int image, const std::wstring& toolTip, const std::wstring& caption) {
  const int id = static_cast<int>(Send(TB_BUTTONCOUNT)) + 1;
  TBBUTTON button = {};
  button.iBitmap = image;
  button.idCommand = id;
  button.fsState = TBSTATE_ENABLED;
  button.fsStyle = BTNS_BUTTON | BTNS_AUTOSIZE;
  button.iString = -1;
  if (!caption.empty()) {
    ShowCaptions();
    // As one of the toolbar's Unicode strings: the ANSI record would lose characters that are not
    // in the code page. The list ends with an empty string.
    std::wstring strings = caption;
    strings.append(2, L'\0');
    button.iString = Send(TB_ADDSTRINGW, 0, reinterpret_cast<LPARAM>(strings.c_str()));
  }
  toolTips_.push_back({toolTip, {}});
  Send(TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
  return id;
}

// Only with the first caption: a toolbar without captions keeps its style.
void clsToolbar::ShowCaptions() {
  const auto style = static_cast<DWORD>(Send(TB_GETSTYLE));
  if ((style & TBSTYLE_LIST) == 0) Send(TB_SETSTYLE, 0, style | TBSTYLE_LIST);
}

int clsToolbar::ButtonImage(int id) const {
  TBBUTTONINFOA info = {};
  info.cbSize = sizeof(info);
  info.dwMask = TBIF_IMAGE;
  const LRESULT index =
      Send(TB_GETBUTTONINFOA, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&info));
  return index < 0 ? -1 : info.iImage;
}

void clsToolbar::ButtonImage(int id, int image) {
  TBBUTTONINFOA info = {};
  info.cbSize = sizeof(info);
  info.dwMask = TBIF_IMAGE;
  info.iImage = image;
  Send(TB_SETBUTTONINFOA, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&info));
}

bool clsToolbar::Visible(int id) const {
  const LRESULT state = Send(TB_GETSTATE, static_cast<WPARAM>(id));
  return state != -1 && (state & TBSTATE_HIDDEN) == 0;
}

void clsToolbar::Visible(int id, bool visible) { ChangeState(id, TBSTATE_HIDDEN, !visible); }

bool clsToolbar::Enabled(int id) const {
  const LRESULT state = Send(TB_GETSTATE, static_cast<WPARAM>(id));
  return state != -1 && (state & TBSTATE_ENABLED) != 0;
}

void clsToolbar::Enabled(int id, bool enabled) { ChangeState(id, TBSTATE_ENABLED, enabled); }

void clsToolbar::ChangeState(int id, BYTE bit, bool isSet) {
  const LRESULT state = Send(TB_GETSTATE, static_cast<WPARAM>(id));
  if (state == -1) return;
  const LRESULT changed = isSet ? (state | bit) : (state & ~LRESULT{bit});
  Send(TB_SETSTATE, static_cast<WPARAM>(id), MAKELPARAM(changed, 0));
}

SIZE clsToolbar::ButtonsSize() const {
  SIZE size = {};
  Send(TB_GETMAXSIZE, 0, reinterpret_cast<LPARAM>(&size));
  return size;
}

void clsToolbar::WndProc(bool /*before*/, bool& handled, LRESULT& result, HWND /*window*/,
                         UINT message, WPARAM wParam, LPARAM lParam, LONG_PTR& /*userParam*/) {
  switch (message) {
    case WM_CLOSE:
      // To the tooltip: some programs post a close message to every window of the screen, and the
      // toolbar would have no tooltips from then on.
      handled = true;
      break;
    case WM_COMMAND:
      if (toolbar_ != nullptr && reinterpret_cast<HWND>(lParam) == toolbar_) {
        Raise(ButtonClick, int{LOWORD(wParam)});
      }
      break;
    case WM_NOTIFY:
      handled = HandleNotify(*reinterpret_cast<NMHDR*>(lParam));
      break;
    case WM_NOTIFYFORMAT:
      // Deliberate: tooltip texts are asked for in ANSI.
      handled = reinterpret_cast<HWND>(wParam) == toolbar_ && lParam == NF_QUERY;
      result = NFR_ANSI;
      break;
    case WM_ERASEBKGND:
      // A flat toolbar has the background of its host, and asks the host to draw it.
      handled = BitBlt(reinterpret_cast<HDC>(wParam), 0, 0, host_->ScaleWidth(),
                       host_->ScaleHeight(), host_->Dc(), 0, 0, SRCCOPY) != 0;
      result = TRUE;
      break;
    case WM_SIZE:
      SetWindowPos(toolbar_, nullptr, 0, 0, host_->ScaleWidth(), host_->ScaleHeight(),
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
      break;
    case WM_NCDESTROY:
      // Another window may get the handle later.
      toolbar_ = nullptr;
      break;
    default:
      HandleKeyboard(handled, result, message, wParam, lParam);
      break;
  }
}

bool clsToolbar::HandleNotify(NMHDR& notification) {
  if (notification.code == NM_TOOLTIPSCREATED) {
    KeepToolTips(reinterpret_cast<NMTOOLTIPSCREATED&>(notification).hwndToolTips);
    return false;
  }
  // Deliberate: the Unicode request is not answered.
  if (notification.code != TTN_GETDISPINFOA) return false;
  const UINT_PTR id = notification.idFrom;
  if (id < 1 || id > toolTips_.size()) return false;
  ToolTip& tip = toolTips_[id - 1];
  if (tip.text.empty()) return false;
  tip.ansi = AnsiText(tip.text);
  reinterpret_cast<NMTTDISPINFOA&>(notification).lpszText = tip.ansi.data();
  return true;
}

// The toolbar makes them when it is made itself, or when the pointer comes.
void clsToolbar::KeepToolTips(HWND tips) {
  try {
    subclass_.Subclass(tips, *this, 0);
    subclass_.AddMessage(tips, WM_CLOSE, kBeforePrevious);
  } catch (const SubclassError&) {
    // Tips that can be closed are better than none.
  }
}

LRESULT clsToolbar::Send(UINT message, WPARAM wParam, LPARAM lParam) const {
  return SendMessageW(toolbar_, message, wParam, lParam);
}

}  // namespace tellurvane

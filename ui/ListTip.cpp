#include "ui/ListTip.h"

#include <utility>

#include "ui/Density.h"
#include "ui/ToolkitFont.h"

namespace tellurvane {
namespace {

constexpr int kWidest = 320;  // pixels of 96 dpi; a longer text has several lines
constexpr UINT_PTR kToolId = 1;

}  // namespace

ListTip::~ListTip() {
  subclass_.Terminate();
  if (list_ == nullptr) return;
  list_->MouseMove = nullptr;
  list_->MouseDown = nullptr;
  if (window_ != nullptr) DestroyWindow(window_);
}

void ListTip::Create(clsLictView& list, TextOf textOf) {
  list_ = &list;
  textOf_ = std::move(textOf);
  // The native list's own tips would lie over this one.
  SendMessageW(list.hwnd(), LVM_SETTOOLTIPS, 0, 0);
  list.MouseMove = [this](const MouseEvent& event) { MoveTo(event.x, event.y); };
  list.MouseDown = [this](const MouseEvent& event) { Relay(WM_LBUTTONDOWN, event.x, event.y); };
}

// Only when the pointer comes: another top-level window would make the start longer.
void ListTip::CreateWindowOnce() {
  if (std::exchange(isWindowTried_, true)) return;
  // TTS_NOPREFIX: an ampersand is a letter. TTS_ALWAYSTIP: also while another window is active.
  window_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                            WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT,
                            CW_USEDEFAULT, CW_USEDEFAULT, GetAncestor(list_->hwnd(), GA_ROOT),
                            nullptr, GetModuleHandleW(nullptr), nullptr);
  if (window_ == nullptr) return;
  try {
    subclass_.Subclass(window_, *this, 0);
    subclass_.AddMessage(window_, WM_CLOSE, kBeforePrevious);
    subclass_.AddMessage(window_, WM_NCDESTROY, kBeforePrevious);
  } catch (const SubclassError&) {
    DestroyWindow(std::exchange(window_, nullptr));
    return;
  }
  const TOOLINFOW tool = Tool();
  Send(TTM_ADDTOOLW, &tool);
  SendMessageW(window_, TTM_SETMAXTIPWIDTH, 0, Scaled(kWidest));
  SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(ToolkitFont()), FALSE);
}

void ListTip::Refresh() {
  if (window_ == nullptr) return;
  const int row = list_->HitTest(pointer_.x, pointer_.y);
  // The tip of the former row goes, and the time until the next one begins again.
  if (std::exchange(row_, row) != row) SendMessageW(window_, TTM_POP, 0, 0);
  const std::wstring text = row < 0 ? std::wstring() : textOf_(row);
  if (text != text_) Show(text);
}

void ListTip::WndProc(bool /*before*/, bool& handled, LRESULT& /*result*/, HWND /*window*/,
                      UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/, LONG_PTR& /*userParam*/) {
  if (message == WM_CLOSE) {
    // Some programs post a close message to every window of the screen, and there would be no tips
    // from then on.
    handled = true;
  } else {
    // Its owner destroys it. Another window may get the handle later.
    window_ = nullptr;
  }
}

void ListTip::MoveTo(int x, int y) {
  CreateWindowOnce();
  pointer_ = {x, y};
  Refresh();
  Relay(WM_MOUSEMOVE, x, y);
}

void ListTip::Show(const std::wstring& text) {
  text_ = text;
  const TOOLINFOW tool = Tool();
  Send(TTM_UPDATETIPTEXTW, &tool);
  if (text.empty()) SendMessageW(window_, TTM_POP, 0, 0);
}

void ListTip::Relay(UINT message, int x, int y) const {
  if (window_ == nullptr) return;
  const TOOLINFOW tool = Tool();
  Send(TTM_NEWTOOLRECTW, &tool);
  MSG event = {};
  event.hwnd = list_->hwnd();
  event.message = message;
  event.lParam = MAKELPARAM(x, y);
  Send(TTM_RELAYEVENT, &event);
}

void ListTip::Send(UINT message, const void* argument) const {
  SendMessageW(window_, message, 0, reinterpret_cast<LPARAM>(argument));
}

TOOLINFOW ListTip::Tool() const {
  TOOLINFOW tool = {};
  // The size that every version of the common controls knows.
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.hwnd = list_->hwnd();
  tool.uId = kToolId;
  GetClientRect(list_->hwnd(), &tool.rect);
  tool.lpszText = const_cast<wchar_t*>(text_.c_str());
  return tool;
}

}  // namespace tellurvane

#include "ui/ListTip.h"

#include <utility>

#include "ui/Density.h"
#include "ui/ToolkitFont.h"

namespace tellurvane {
namespace {

constexpr int kWidest = 320;  // pixels of 96 dpi; a longer text has several lines
constexpr UINT_PTR kToolId = 1;

}  // namespace

void ListTip::Create(clsLictView& list, TextOf textOf) {
  list_ = &list;
  textOf_ = std::move(textOf);
  // TTS_NOPREFIX: an ampersand is a letter. TTS_ALWAYSTIP: also while another window is active.
  window_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                            WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT,
                            CW_USEDEFAULT, CW_USEDEFAULT, GetAncestor(list.hwnd(), GA_ROOT),
                            nullptr, GetModuleHandleW(nullptr), nullptr);
  if (window_ == nullptr) return;
  const TOOLINFOW tool = Tool();
  Send(TTM_ADDTOOLW, &tool);
  SendMessageW(window_, TTM_SETMAXTIPWIDTH, 0, Scaled(kWidest));
  SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(ToolkitFont()), FALSE);
  list.MouseMove = [this](const MouseEvent& event) { MoveTo(event.x, event.y); };
  list.MouseDown = [this](const MouseEvent& event) { Relay(WM_LBUTTONDOWN, event.x, event.y); };
}

void ListTip::Refresh() {
  if (window_ == nullptr) return;
  const int row = list_->HitTest(pointer_.x, pointer_.y);
  // The tip of the former row goes, and the time until the next one begins again.
  if (std::exchange(row_, row) != row) SendMessageW(window_, TTM_POP, 0, 0);
  const std::wstring text = row < 0 ? std::wstring() : textOf_(row);
  if (text != text_) Show(text);
}

void ListTip::MoveTo(int x, int y) {
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

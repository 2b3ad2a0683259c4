#include "ui/clsControl.h"

#include <richedit.h>

#include <algorithm>
#include <cassert>
#include <utility>

#include "ui/ChildWindow.h"
#include "ui/ControlKinds.h"
#include "ui/ModTheme.h"
#include "ui/ToolkitFont.h"
#include "ui/UserPreferences.h"

namespace tellurvane {
namespace {

constexpr int kDropDownRows = 12;

}  // namespace

clsControl::clsControl() {
  // From the system's folder, not from the executable's. Without it only the rich edit box fails.
  // Never unloaded: input methods, drag and drop and the clipboard may call it after the last box.
  // cppcheck-suppress leakReturnValNotUsed
  (void)LoadLibraryExW(L"RICHED20.DLL", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
}

clsControl::~clsControl() {
  engine_.Terminate();
  if (hwnd_ != nullptr) DestroyWindow(hwnd_);
}

void clsControl::Create(ControlKind kind) {
  assert(host_ != nullptr && host_->hwnd() != nullptr);
  kind_ = kind;
  hwnd_ = CreateChildWindow({.parent = host_->hwnd(),
                             .className = LookOf(kind).className,
                             .style = Style(),
                             .width = host_->ScaleWidth(),
                             .height = host_->ScaleHeight()});
  // Possible only while the box is empty.
  if (FamilyOf(kind) == ControlFamily::kRichEdit) Send(EM_SETTEXTMODE, TM_PLAINTEXT);
  Send(WM_SETFONT, reinterpret_cast<WPARAM>(ToolkitFont()), TRUE);
  // The default limit of about 30,000 characters would cut a long text.
  if (FamilyOf(kind) == ControlFamily::kEdit) Send(EM_LIMITTEXT);
  if (FamilyOf(kind) == ControlFamily::kRichEdit) {
    Send(EM_EXLIMITTEXT, 0, MAXLONG);
    Send(EM_SETEVENTMASK, 0, ENM_CHANGE);
  }
  // The Tab key must not choose an option.
  if (kind == ControlKind::kOptionButton) Send(BM_SETDONTCLICK, TRUE);
  Attach();
  FitToHost();
  ApplyEnabled();
}

// The bits of the kind; the Tab key stops at all but labels.
DWORD clsControl::Style() const {
  const ControlLook& look = LookOf(kind_);
  const DWORD style = WS_CHILD | WS_VISIBLE | (multilin_ > 0 ? look.multiLineStyle : look.style);
  return kind_ == ControlKind::kLabel ? style : style | WS_TABSTOP;
}

// The window that the user types into: the control, or the box inside a combo box.
HWND clsControl::TypingWindow() const {
  switch (FamilyOf(kind_)) {
    case ControlFamily::kEdit:
    case ControlFamily::kRichEdit:
      return hwnd_;
    case ControlFamily::kComboBox:
      return hwnd_ == nullptr ? nullptr : FindWindowExW(hwnd_, nullptr, L"Edit", nullptr);
    default:
      return nullptr;
  }
}

void clsControl::FitToHost() {
  if (!DropsDown(kind_)) {
    MoveWindow(hwnd_, 0, 0, host_->ScaleWidth(), host_->ScaleHeight(), TRUE);
    return;
  }
  // The host's height is for the field; the list is below it. The first pass shows how much the
  // frame adds to the field, the second subtracts it.
  const int wanted = host_->ScaleHeight();
  const int list = kDropDownRows * static_cast<int>(Send(CB_GETITEMHEIGHT, 0));
  int field = wanted;
  for (int pass = 0; pass < 2; ++pass) {
    Send(CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), std::max(field, 1));
    MoveWindow(hwnd_, 0, 0, host_->ScaleWidth(), wanted + list, TRUE);
    RECT window = {};
    GetWindowRect(hwnd_, &window);
    field -= static_cast<int>(window.bottom - window.top) - wanted;
  }
}

// The list of a simple combo box shows whole rows only, and the platform paints nothing below them.
void clsControl::EraseBelowList(HDC context) const {
  COMBOBOXINFO info = {};
  info.cbSize = sizeof(info);
  if (!GetComboBoxInfo(hwnd_, &info)) return;
  RECT list = {};
  GetWindowRect(info.hwndList, &list);
  MapWindowPoints(nullptr, hwnd_, reinterpret_cast<POINT*>(&list), 2);
  RECT rest = {};
  GetClientRect(hwnd_, &rest);
  rest.top = list.bottom;
  const UniqueBrush brush(CreateSolidBrush(ModTheme::TranslateColor(host_->BackColor())));
  FillRect(context, &rest, brush.Get());
}

void clsControl::FontRightLeading(int pixels) {
  fontRightLeading_ = std::max(pixels, 0);
  SendMessageW(TypingWindow(), EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN,
               MAKELPARAM(fontRightLeading_, fontRightLeading_));
}

bool clsControl::Checked() const {
  return FamilyOf(kind_) == ControlFamily::kButton && Send(BM_GETCHECK) == BST_CHECKED;
}

void clsControl::Checked(bool checked) {
  if (FamilyOf(kind_) == ControlFamily::kButton) {
    Send(BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED);
  }
}

void clsControl::Enabled(bool enabled) {
  isEnabled_ = enabled;
  ApplyEnabled();
}

void clsControl::ApplyEnabled() {
  if (hwnd_ == nullptr) return;
  EnableWindow(hwnd_, isEnabled_ && host_->Enabled());
  ApplyColors();
}

bool clsControl::Visible() const {
  return hwnd_ != nullptr && (GetWindowLongPtrW(hwnd_, GWL_STYLE) & WS_VISIBLE) != 0;
}

void clsControl::Visible(bool visible) { ShowWindow(hwnd_, visible ? SW_SHOWNA : SW_HIDE); }

bool clsControl::IsGreyed() const { return hwnd_ != nullptr && !IsWindowEnabled(hwnd_); }

// Buttons and labels have no ground of their own.
bool clsControl::IsOnHost() const {
  const ControlFamily family = FamilyOf(kind_);
  return family == ControlFamily::kButton || family == ControlFamily::kLabel;
}

Color clsControl::BackColor() const {
  if (backColor_) return *backColor_;
  if (IsOnHost()) return hwnd_ == nullptr ? kWhite : host_->BackColor();
  return SystemColor(IsGreyed() ? COLOR_BTNFACE : COLOR_WINDOW);
}

void clsControl::BackColor(Color color) {
  backColor_ = color;
  ApplyColors();
}

Color clsControl::ForeColor() const {
  if (foreColor_) return *foreColor_;
  // The other kinds grey their text by themselves.
  if (kind_ == ControlKind::kRichEditBox && IsGreyed()) return SystemColor(COLOR_GRAYTEXT);
  // On the host's ground, which is the face colour then.
  if (IsHighContrast() && IsOnHost()) return SystemColor(COLOR_BTNTEXT);
  return SystemColor(COLOR_WINDOWTEXT);
}

void clsControl::ForeColor(Color color) {
  foreColor_ = color;
  ApplyColors();
}

clsControl::Colors clsControl::ColorsNow() const {
  return {ModTheme::TranslateColor(BackColor()), ModTheme::TranslateColor(ForeColor())};
}

// A rich edit box gets its colours by message; the other kinds ask their host when they paint.
void clsControl::ApplyColors() {
  if (hwnd_ == nullptr) return;
  shownColors_ = ColorsNow();
  if (kind_ == ControlKind::kRichEditBox) {
    Send(EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(shownColors_.ground));
    CHARFORMATW format = {};
    format.cbSize = sizeof(format);
    format.dwMask = CFM_COLOR;
    format.crTextColor = shownColors_.ink;
    const bool wasSetting = std::exchange(isSettingText_, true);
    Send(EM_SETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&format));
    Send(EM_SETCHARFORMAT, SCF_ALL, reinterpret_cast<LPARAM>(&format));
    isSettingText_ = wasSetting;
  }
  RedrawWindow(hwnd_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

HBRUSH clsControl::PrepareContext(HDC context) {
  const Colors colors = ColorsNow();
  SetTextColor(context, colors.ink);
  SetBkColor(context, colors.ground);
  if (!backBrush_ || colors.ground != backBrushColor_) {
    backBrush_.Reset(CreateSolidBrush(colors.ground));
    backBrushColor_ = colors.ground;
  }
  return backBrush_.Get();
}

std::wstring clsControl::text() const { return TextOf(hwnd_); }

void clsControl::text(const std::wstring& value) {
  const bool wasSetting = std::exchange(isSettingText_, true);
  SetWindowTextW(hwnd_, value.c_str());
  isSettingText_ = wasSetting;
}

// Only after the creation: some classes would turn the bit into a frame that cannot be removed.
void clsControl::BorderStyle(int style) {
  const bool hasBorder = style == 1 || style == 4;
  const LONG_PTR others = GetWindowLongPtrW(hwnd_, GWL_STYLE) & ~static_cast<LONG_PTR>(WS_BORDER);
  SetWindowLongPtrW(hwnd_, GWL_STYLE, others | (hasBorder ? WS_BORDER : 0));
  SetWindowPos(hwnd_, nullptr, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

LRESULT clsControl::Send(UINT message, WPARAM wParam, LPARAM lParam) const {
  return hwnd_ == nullptr ? 0 : SendMessageW(hwnd_, message, wParam, lParam);
}

}  // namespace tellurvane

#include "ui/clsProgress.h"

#include <oleacc.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "base/PictureFormat.h"
#include "ui/AccessibleObject.h"
#include "ui/Density.h"
#include "ui/Event.h"
#include "ui/FocusFrame.h"
#include "ui/ModTheme.h"
#include "ui/ToolkitFont.h"
#include "ui/UserPreferences.h"

namespace tellurvane {
namespace {

constexpr UINT kHandledMessages[] = {WM_MOUSEWHEEL, WM_MOUSELEAVE, WM_MOUSEMOVE, WM_KILLFOCUS,
                                     WM_SETFOCUS};

constexpr Color kGold = Adaptive(Rgb(206, 154, 0), COLOR_HIGHLIGHT);
constexpr Color kGrey = Adaptive(Rgb(151, 151, 151), COLOR_GRAYTEXT);
constexpr int kAccentOpacity = 150;

constexpr Color kCaptionColor = Rgb(64, 64, 64);
constexpr Color kDisabledCaptionColor = kGrey;
constexpr int kMargin = 5;  // pixels of 96 dpi

}  // namespace

clsProgress::~clsProgress() { LeaveHost(); }

void clsProgress::TargetPictureBox(PictureBox& host) {
  LeaveHost();
  host_ = &host;
}

void clsProgress::Create() {
  engine_.Subclass(hwnd(), *this, 0);
  for (const UINT message : kHandledMessages) {
    engine_.AddMessage(hwnd(), message, kBeforePrevious);
  }
  isFocused_ = GetFocus() == hwnd();
  isCreated_ = true;
  TakeHostEvents();
  DescribeHost();
  Refresh();
}

void clsProgress::DescribeHost() {
  MakeAccessible(
      hwnd(),
      {.role = ROLE_SYSTEM_SLIDER,
       .name = [this] { return accessibleName_; },
       .value = [this] { return ValueText ? ValueText() : FormatPercent(model_.Fraction(), 0); },
       .setValue = [this](const std::wstring& text) { return SetByText(text); }});
}

void clsProgress::TakeHostEvents() {
  host_->Paint = [this](HDC) { Draw(Enabled() ? kGold : kGrey); };
  host_->Resize = [this] { Raise(Resize); };
  host_->MouseDown = [this](const MouseEvent& event) { HostMouseDown(event); };
  // The second press of a quick pair.
  host_->DblClick = [this](const MouseEvent& event) { HostMouseDown(event); };
  host_->MouseMove = [this](const MouseEvent& event) { HostMouseMove(event); };
  host_->MouseUp = [this](const MouseEvent& event) { HostMouseUp(event); };
  host_->KeyDown = [this](UINT key) { return HostKeyDown(key); };
  host_->EnabledChanged = [this] { Refresh(); };
}

void clsProgress::LeaveHost() {
  if (std::exchange(isCreated_, false)) {
    if (MouseDriving()) ReleaseCapture();
    StopAccessible(hwnd());
    // Also deletes the five messages. Does nothing when the window is gone.
    engine_.Terminate();
    host_->Paint = nullptr;
    host_->Resize = nullptr;
    host_->MouseDown = host_->DblClick = host_->MouseMove = host_->MouseUp = nullptr;
    host_->KeyDown = nullptr;
    host_->EnabledChanged = nullptr;
  }
  host_ = nullptr;
}

void clsProgress::WndProc(bool /*before*/, bool& handled, LRESULT& /*result*/, HWND /*window*/,
                          UINT message, WPARAM wParam, LPARAM /*lParam*/, LONG_PTR& /*userParam*/) {
  switch (message) {
    case WM_SETFOCUS:
      ::SetFocus(hwnd());
      SetFocused(true);
      break;
    case WM_KILLFOCUS:
      SetFocused(false);
      break;
    case WM_MOUSEMOVE:
      TrackPointer();
      break;
    case WM_MOUSELEAVE:
      SetCursorInside(false);
      break;
    case WM_MOUSEWHEEL:
      // The host would pass it on to its parent.
      handled = true;
      OnWheel(wParam);
      break;
    default:
      break;
  }
}

void clsProgress::PaintMe() { PaintWith(kGold); }

void clsProgress::PaintDef() { PaintWith(kGrey); }

void clsProgress::Refresh() { Enabled() ? PaintMe() : PaintDef(); }

void clsProgress::PaintWith(Color accent) {
  if (hwnd() == nullptr || host_->Dc() == nullptr || isPainting_) return;
  host_->Clear();
  Draw(accent);
  host_->Refresh();
}

void clsProgress::Draw(Color accent) {
  const HDC target = host_->Dc();
  if (target == nullptr || isPainting_) return;
  const bool isEnabled = Enabled();
  const Color bar = BarColor(accent);
  const SliderBox track = SliderTrack(HostSize());
  if (!track.IsEmpty()) {
    ModTheme::FramedBox(target, track.left, track.top, track.right - track.left,
                        track.bottom - track.top, bar);
  }
  const SliderBox fill = SliderFill(HostSize(), model_.Fraction());
  if (!fill.IsEmpty()) {
    const RECT box = {fill.left, fill.top, fill.right, fill.bottom};
    const UniqueBrush brush(CreateSolidBrush(bar));
    FillRect(target, &box, brush.Get());
  }
  if (isFocused_ && !track.IsEmpty()) {
    const RECT box = {track.left, track.top, track.right, track.bottom};
    DrawFocusFrame(target, box, COLOR_WINDOWTEXT);
  }
  if (!text_.empty()) PrintText(text_, isEnabled ? kCaptionColor : kDisabledCaptionColor);

  isPainting_ = true;
  Raise(PostRender, isEnabled);
  isPainting_ = false;
}

Color clsProgress::BarColor(Color accent) const {
  if (IsHighContrast()) return ModTheme::TranslateColor(accent);
  return Blend(accent, ModTheme::TranslateColor(host_->BackColor()), kAccentOpacity);
}

SliderHost clsProgress::HostSize() const {
  return {host_->ScaleWidth(), host_->ScaleHeight(), Scaled(heightDelta_), Scaled(kMargin)};
}

void clsProgress::ValHit(double value) {
  model_.Value(value);
  Refresh();
  Raise(PositionSetByMouse, Value());
}

void clsProgress::Value(double value) {
  model_.Value(value);
  Refresh();
  Raise(PositionSet, Value(), CursorOnPos());
}

void clsProgress::Max(double max) {
  model_.Max(max);
  Refresh();
}

bool clsProgress::Enabled() const { return host_ != nullptr && host_->Enabled(); }

void clsProgress::Enabled(bool enabled) {
  if (host_ != nullptr) host_->Enabled(enabled);
}

void clsProgress::text(const std::wstring& text) {
  text_ = text;
  Refresh();
}

void clsProgress::FontSize(float points) {
  fontSize_ = std::max(points, 1.0F);
  font_.Reset();
  Refresh();
}

Color clsProgress::BackColor() const { return host_ == nullptr ? kWhite : host_->BackColor(); }

void clsProgress::BackColor(Color color) {
  if (host_ != nullptr) host_->BackColor(color);
}

void clsProgress::ProgressHeightDelta(int pixels) {
  heightDelta_ = pixels;
  Refresh();
}

double clsProgress::CursorOnPos() const {
  if (hwnd() == nullptr) return 0;
  POINT pointer = {};
  GetCursorPos(&pointer);
  RECT host = {};
  GetWindowRect(hwnd(), &host);
  if (pointer.x < host.left || pointer.x > host.right) return 0;
  ScreenToClient(hwnd(), &pointer);
  return SliderValueAt(HostSize(), static_cast<int>(pointer.x), Max());
}

bool clsProgress::MouseDriving() const {
  // By the capture: another window that takes it ends the driving.
  return buttonsHeld_ != kNoButton && hwnd() != nullptr && GetCapture() == hwnd();
}

void clsProgress::SetByUser(double value) {
  Value(value);
  // Only for the user's changes: music moves its slider ten times a second.
  NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, hwnd(), OBJID_CLIENT, CHILDID_SELF);
  Raise(PositionSetByMouse, Value());
}

// A percentage.
bool clsProgress::SetByText(const std::wstring& text) {
  const std::optional<double> fraction = SliderFractionOf(text);
  if (!fraction || !Enabled()) return false;
  SetByUser(*fraction * Max());
  return true;
}

void clsProgress::HostMouseDown(const MouseEvent& event) {
  if (!Enabled()) return;
  if (!MouseDriving()) buttonsHeld_ = kNoButton;
  buttonsHeld_ |= event.button;
  lastX_ = static_cast<float>(event.x);
  lastY_ = static_cast<float>(event.y);
  host_->SetFocus();
  SetCapture(hwnd());
  Raise(MousePress);
  SetByUser(SliderValueAt(HostSize(), event.x, Max()));
}

void clsProgress::HostMouseMove(const MouseEvent& event) {
  const auto x = static_cast<float>(event.x);
  const auto y = static_cast<float>(event.y);
  if (x == lastX_ && y == lastY_) return;
  lastX_ = x;
  lastY_ = y;
  const bool isDragged = (buttonsHeld_ & event.button & kLeftButton) != 0;
  if (isDragged && MouseDriving()) SetByUser(SliderValueAt(HostSize(), event.x, Max()));
}

void clsProgress::HostMouseUp(const MouseEvent& event) {
  const bool wasDriving = MouseDriving();
  buttonsHeld_ &= ~event.button;
  if (wasDriving && buttonsHeld_ == kNoButton) ReleaseCapture();
}

bool clsProgress::HostKeyDown(UINT key) {
  if (!Enabled()) return false;
  switch (key) {
    case VK_LEFT:
    case VK_DOWN:
      SetByUser(Value() - SliderModel::kStep);
      return true;
    case VK_RIGHT:
    case VK_UP:
      SetByUser(Value() + SliderModel::kStep);
      return true;
    case VK_NEXT:
      SetByUser(Value() - model_.Page());
      return true;
    case VK_PRIOR:
      SetByUser(Value() + model_.Page());
      return true;
    case VK_HOME:
      SetByUser(0);
      return true;
    case VK_END:
      SetByUser(Max());
      return true;
    default:
      return false;
  }
}

void clsProgress::OnWheel(WPARAM wParam) {
  if (!Enabled()) return;
  // The whole argument with its sign, the held keys below the distance included.
  const bool isTowardsUser = static_cast<std::int32_t>(wParam) < 1;
  SetByUser(isTowardsUser ? Value() - SliderModel::kStep : Value() + SliderModel::kStep);
}

void clsProgress::TrackPointer() {
  POINT pointer = {};
  GetCursorPos(&pointer);
  RECT host = {};
  GetWindowRect(hwnd(), &host);
  // While a button is held, moves outside the host come too.
  const bool isInside = PtInRect(&host, pointer) != 0;
  if (isInside) host_->TrackMouseLeave();
  SetCursorInside(isInside);
}

void clsProgress::SetCursorInside(bool isInside) {
  if (std::exchange(isCursorInside_, isInside) != isInside) Raise(MouseInside, isInside);
}

void clsProgress::SetFocused(bool isFocused) {
  if (std::exchange(isFocused_, isFocused) != isFocused) Refresh();
}

}  // namespace tellurvane

#include "clock/FrmTime.h"

#include <oleacc.h>

#include <algorithm>
#include <utility>

#include "base/PictureFormat.h"
#include "clock/ClockDrawing.h"
#include "ui/AccessibleObject.h"
#include "ui/Density.h"
#include "ui/Handle.h"
#include "ui/ModTheme.h"
#include "ui/Strip.h"
#include "ui/ToolkitFont.h"
#include "ui/UserPreferences.h"

namespace tellurvane {
namespace {

constexpr BYTE kOpacity = 210;
// Deliberate: the fade begins at 200, not at 210.
constexpr BYTE kFadeOut[] = {200, 160, 120, 80, 40, 0};

constexpr const wchar_t* kSpokenTime = L"hh 時 mm 分 ss 秒";

constexpr int kDigitStrip = 102;
constexpr int kStripCells = 13;
constexpr int kDigitWidth = 16;  // pixels of 96 dpi
constexpr int kDigitHeight = 25;

// Twips. A label is right of its digits.
struct LabelPlace {
  int left;
  int top;
  int width;
};
constexpr int kLabelHeight = 285;
constexpr int kLowestLabel = 540;
constexpr std::array<LabelPlace, 7> kLabels = {{{2'016, 132, 285},
                                                {2'904, 132, 285},
                                                {3'756, 132, 285},
                                                {2'016, kLowestLabel, 285},
                                                {2'904, kLowestLabel, 285},
                                                {3'744, kLowestLabel, 285},
                                                {984, kLowestLabel, 432}}};
constexpr std::array<const wchar_t*, 7> kTexts = {L"年", L"月", L"日", L"時", L"分", L"秒", L""};
constexpr size_t kHalfOfDay = 6;
constexpr int kWidth = 4'170;

// Pixels of 96 dpi.
constexpr int kScreenMargin = 8;
constexpr int kGapBesideFace = 2;
constexpr int kLowerMargin = 5;
constexpr int kFocusedRim = 3;  // without the keyboard it is a pixel of the screen

// In pixels.
int HeightNeeded() {
  return std::max(2 * FaceAt(DotsPerInch()).centre + 1,
                  PixelsFromTwips(kLowestLabel + kLabelHeight) + Scaled(kLowerMargin));
}

int WidthOf(HDC context, HFONT font, const std::wstring& text) {
  const SelectedObject selected(context, font);
  SIZE size = {};
  GetTextExtentPoint32W(context, text.c_str(), static_cast<int>(text.size()), &size);
  return static_cast<int>(size.cx);
}

// The toolkit's font in the largest size at which the text fits. None if the toolkit's own fits.
UniqueFont FontWithin(HWND label, const std::wstring& text, int width) {
  LOGFONTW look = {};
  GetObjectW(ToolkitFont(), sizeof(look), &look);
  const WindowDc context(label);
  UniqueFont font;
  // A character height is negative.
  while (look.lfHeight < -1 &&
         WidthOf(context.Get(), font ? font.Get() : ToolkitFont(), text) > width) {
    ++look.lfHeight;
    font.Reset(CreateFontIndirectW(&look));
  }
  return font;
}

}  // namespace

FrmTime::FrmTime(ClockCallbacks callbacks) : callbacks_(std::move(callbacks)) {}

FrmTime::~FrmTime() { Unload(); }

void FrmTime::ShowClock() {
  if (!IsLoaded()) {
    Load({.caption = L"FrmTime",
          .border = FormBorder::kNone,
          .widthTwips = kWidth,
          .backColor = kNight});
  } else {
    DrawTime();
    // Deliberate: showing the clock renews its date, the timer never does.
    if (!Visible()) DrawDate();
    // The screens may have changed while the clock was hidden.
    PullInside();
  }
  ShowWithoutFocus();
}

void FrmTime::HideClock() {
  if (!IsLoaded()) return;
  if (GetForegroundWindow() == hwnd()) callbacks_.keyboardIsFree();
  Hide();
}

void FrmTime::Form_Load() {
  ResizeInside(PixelsFromTwips(kWidth), HeightNeeded());
  RECT work = {};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const int margin = Scaled(kScreenMargin);
  const int left = static_cast<int>(work.right) - PixelsFromTwips(kWidth) - margin;
  SetWindowPos(hwnd(), nullptr, left, static_cast<int>(work.top) + margin, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  SetWindowPos(hwnd(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  Translucency(kOpacity);
  ForwardMouse(*this);
  MakeAccessible(hwnd(),
                 {.role = ROLE_SYSTEM_CLOCK,
                  .name = [] { return L"時鐘"; },
                  .value = [this] { return FormatMoment(kSpokenTime, callbacks_.clock(), {}); },
                  .hasNoChildren = true});
  PrepareFace();
  CreateLabels();
  CreateDigits();
  drawn_ = kNothingDrawn;
  DrawTime();
  DrawDate();
  Timer1_.Interval(1'000);
  Timer1_.Tick = [this] { Timer1_Timer(); };
  Timer1_.Enabled(true);
}

bool FrmTime::Form_Unload() {
  Timer1_.Enabled(false);
  if (Visible()) Fade(kFadeOut, callbacks_.pause);
  for (PictureBox& host : picD_) DestroyWindow(host.hwnd());
  return true;
}

void FrmTime::CreateLabels() {
  for (size_t i = 0; i < labels_.size(); ++i) {
    picD_[i].Create({.parent = hwnd(),
                     .x = PixelsFromTwips(kLabels[i].left),
                     .y = PixelsFromTwips(kLabels[i].top),
                     .width = PixelsFromTwips(kLabels[i].width),
                     .height = PixelsFromTwips(kLabelHeight),
                     .backColor = kNight});
    labels_[i].emplace();
    clsControl& label = *labels_[i];
    label.TargetPictureBox(picD_[i]);
    label.Create(ControlKind::kLabel);
    label.ForeColor(kWheat);
    label.text(kTexts[i]);
    // Without SS_NOTIFY a label passes the mouse to its box.
    SetWindowLongPtrW(label.hwnd(), GWL_STYLE,
                      GetWindowLongPtrW(label.hwnd(), GWL_STYLE) & ~LONG_PTR{SS_NOTIFY});
    ForwardMouse(picD_[i]);
  }
  // The AM/PM box overlaps the face, which must stay visible there.
  PictureBox& host = picD_[kHalfOfDay];
  const int x = PixelsFromTwips(kLabels[kHalfOfDay].left);
  const int faceEdge =
      clockFace_.centre + DiscRadius(clockFace_) + OwnScale().Scaled(kGapBesideFace);
  const int inset = std::max(faceEdge - x, 0);
  MoveWindow(labels_[kHalfOfDay]->hwnd(), inset, 0, host.ScaleWidth() - inset, host.ScaleHeight(),
             TRUE);
  UniqueRegion shown(CreateRectRgn(inset, 0, host.ScaleWidth(), host.ScaleHeight()));
  // The system owns the region now.
  if (SetWindowRgn(host.hwnd(), shown.Get(), TRUE) != 0) (void)shown.Release();
}

void FrmTime::CreateDigits() {
  const UniqueBitmap strip =
      LoadStrip(kDigitStrip, kDigitWidth, OwnScale().Scaled(kDigitWidth)).bitmap;
  BITMAP extent = {};
  if (GetObjectW(strip.Get(), sizeof(extent), &extent) == 0) {
    extent.bmWidth = kStripCells * OwnScale().Scaled(kDigitWidth);
    extent.bmHeight = OwnScale().Scaled(kDigitHeight);
  }
  cell_ = {extent.bmWidth / kStripCells, extent.bmHeight};
  wPw1_ = MemoryContext::Create(extent.bmWidth, extent.bmHeight);
  const UniqueMemoryDc from(CreateCompatibleDC(nullptr));
  if (wPw1_ && strip && from) {
    const SelectedObject selected(from.Get(), strip.Get());
    BitBlt(wPw1_->Dc(), 0, 0, extent.bmWidth, extent.bmHeight, from.Get(), 0, 0, SRCCOPY);
  }
  AddDigits(G_y_, 0, 4, [this] { return drawnDate_.year; });
  AddDigits(G_m_, 1, 2, [this] { return drawnDate_.month; });
  AddDigits(G_d_, 2, 2, [this] { return drawnDate_.day; });
  AddDigits(C_ch_, 3, 2, [this] { return drawn_.hour; });
  AddDigits(C_cm_, 4, 2, [this] { return drawn_.minute; });
  AddDigits(C_cs_, 5, 2, [this] { return drawn_.second; });
}

// Left of its label.
void FrmTime::AddDigits(PictureBox& box, size_t label, int cells, std::function<int()> number) {
  const int width = cells * cell_.cx;
  const int labelHeight = PixelsFromTwips(kLabelHeight);
  box.Create({.parent = hwnd(),
              .x = PixelsFromTwips(kLabels[label].left) - width,
              .y = PixelsFromTwips(kLabels[label].top) + (labelHeight - cell_.cy) / 2,
              .width = width,
              .height = cell_.cy,
              .backColor = kNight});
  box.Paint = [this, cells, number = std::move(number)](HDC target) {
    DrawNumber(target, cells, number());
  };
  ForwardMouse(box);
}

// Draws the parts that change only with the focus.
void FrmTime::PrepareFace() {
  clockFace_ = FaceAt(DotsPerInch());
  face_ = MemoryContext::Create(ScaleWidth(), ScaleHeight());
  Paint = nullptr;
  if (!face_) return;
  const HDC context = face_->Dc();
  const int rim = isFocused_ ? Scaled(kFocusedRim) : 1;
  ModTheme::SolidFill(context, 0, 0, ScaleWidth(), ScaleHeight(), isFocused_ ? kWheat : kRim);
  ModTheme::SolidFill(context, rim, rim, ScaleWidth() - 2 * rim, ScaleHeight() - 2 * rim, kNight);
  DrawDisc(context, clockFace_);
  DrawMarks(context, clockFace_);
  Paint = [this](HDC target) {
    BitBlt(target, 0, 0, ScaleWidth(), ScaleHeight(), face_->Dc(), 0, 0, SRCCOPY);
  };
  Redraw();
}

void FrmTime::Timer1_Timer() {
  // ShowClock draws a hidden clock.
  if (Visible()) DrawTime();
}

void FrmTime::DrawTime() {
  // Deliberate: each from its own reading.
  const int hour = Time().hour;
  const int minute = Time().minute;
  const int second = Time().second;
  const DrawnTime before =
      std::exchange(drawn_, {.hour = hour, .minute = minute, .second = second});
  // Each second only what changed: the rest would be most of an open clock's work.
  if (hour != before.hour) C_ch_.Redraw();
  if (minute != before.minute) C_cm_.Redraw();
  if (second != before.second) C_cs_.Redraw();
  DrawFace(HandsAt(clockFace_, hour, minute, second));
}

void FrmTime::DrawFace(const FaceHands& hands) {
  if (!face_ || Dc() == nullptr) return;
  const int centre = clockFace_.centre;
  const int side = 2 * centre;
  BitBlt(Dc(), 0, 0, side, side, face_->Dc(), 0, 0, SRCCOPY);
  DrawHands(Dc(), clockFace_, hands);
  Refresh({0, 0, side, side});
}

// Deliberately only when the clock is shown: past midnight or noon an open clock keeps its date and
// designator.
void FrmTime::DrawDate() {
  drawnDate_ = Time();
  for (PictureBox* const box : {&G_y_, &G_m_, &G_d_}) box->Redraw();
  labels_[kHalfOfDay]->text(callbacks_.dayHalf(callbacks_.clock()));
  FitHalfOfDay();
}

// The digits draw themselves again.
void FrmTime::ColorsChanged() {
  PrepareFace();
  DrawTime();
  Translucency(kOpacity);
}

// In the toolkit's font the designator is wider than its box.
void FrmTime::FitHalfOfDay() {
  const clsControl& label = *labels_[kHalfOfDay];
  RECT box = {};
  GetClientRect(label.hwnd(), &box);
  UniqueFont font = FontWithin(label.hwnd(), label.text(), static_cast<int>(box.right));
  SendMessageW(label.hwnd(), WM_SETFONT,
               reinterpret_cast<WPARAM>(font ? font.Get() : ToolkitFont()), TRUE);
  halfFont_ = std::move(font);
}

// Nothing of a negative number, before the first drawing.
void FrmTime::DrawNumber(HDC target, int cells, int number) {
  if (number < 0) return;
  for (int position = cells; position > 0; --position) {
    DrawDigit(target, number % 10, 1, position);
    number /= 10;
  }
}

// Rows and positions count from 1.
void FrmTime::DrawDigit(HDC target, int digit, int row, int position) {
  const int x = (position - 1) * cell_.cx;
  if (IsHighContrast()) {
    WriteDigit(target, {x, 0, x + cell_.cx, cell_.cy}, digit);
  } else {
    BitBlt(target, x, 0, cell_.cx, cell_.cy, Digits(), digit * cell_.cx, (row - 1) * cell_.cy,
           SRCCOPY);
  }
}

}  // namespace tellurvane

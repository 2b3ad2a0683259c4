#include "clock/FrmTime.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/Handle.h"
#include "ui/ModTheme.h"
#include "ui/Twips.h"

namespace tellurvane {
namespace {

constexpr BYTE kOpacity = 210;
// Deliberate: the fade begins at 200, below the opacity that the window was shown with.
constexpr BYTE kFadeOut[] = {200, 160, 120, 80, 40, 0};
constexpr unsigned kFadeMilliseconds = 30;

constexpr int kDigitStrip = 102;
constexpr int kStripWidth = 208;
constexpr int kDigitWidth = 16;
constexpr int kDigitHeight = 25;

// Twips. A label's box stands right behind its digits.
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

// Pixels.
constexpr int kScreenMargin = 8;
constexpr int kDiscRadius = kFaceRadius + 2;
constexpr int kGapBehindFace = 2;
constexpr int kLowerMargin = 5;

constexpr Color kNight = Rgb(0x1E, 0x0A, 0x3C);
constexpr Color kWheat = Rgb(0xF5, 0xDE, 0xB3);
constexpr Color kDisc = Rgb(0xFB, 0xF1, 0xDC);
constexpr Color kRim = Rgb(0x6A, 0x3F, 0xA0);
constexpr Color kHourHand = kBlack;
constexpr Color kMinuteHand = Rgb(0, 0, 0xFF);
constexpr Color kSecondHand = Rgb(0xFF, 0, 0);

void DrawLine(HDC context, int fromX, int fromY, FacePoint to, Color color) {
  const UniquePen pen(CreatePen(PS_SOLID, 1, color));
  const SelectedObject selected(context, pen.Get());
  MoveToEx(context, fromX, fromY, nullptr);
  LineTo(context, to.x, to.y);
  // A line of the platform's ends before its last pixel.
  SetPixel(context, to.x, to.y, color);
}

// A disc whose edge is blended with its ground.
void DrawDisc(HDC context, int centre) {
  for (int y = centre - kDiscRadius - 1; y <= centre + kDiscRadius + 1; ++y) {
    for (int x = centre - kDiscRadius - 1; x <= centre + kDiscRadius + 1; ++x) {
      const double distance = std::hypot(x - centre, y - centre);
      const double cover = std::clamp(kDiscRadius + 0.5 - distance, 0.0, 1.0);
      if (cover > 0) {
        SetPixel(context, x, y, Blend(kDisc, kNight, static_cast<int>(std::lround(cover * 255))));
      }
    }
  }
}

void DrawMarks(HDC context, int centre) {
  for (const FacePoint& dot : MinuteDots(centre)) SetPixel(context, dot.x, dot.y, kBlack);
  const UniqueBrush brush(CreateSolidBrush(kBlack));
  for (const FacePoint& mark : HourMarks(centre)) {
    const RECT box = {mark.x - 1, mark.y - 1, mark.x + 2, mark.y + 2};
    FrameRect(context, &box, brush.Get());
  }
}

// In pixels: the face keeps its size whatever the screen's density, the labels follow it.
int HeightNeeded() {
  return std::max(2 * FaceCentre(TwipsPerPixelY()) + 1,
                  PixelsFromTwipsY(kLowestLabel + kLabelHeight) + kLowerMargin);
}

}  // namespace

FrmTime::FrmTime(ClockSurroundings surroundings) : surroundings_(std::move(surroundings)) {}

FrmTime::~FrmTime() { Unload(); }

void FrmTime::ShowClock() {
  if (!IsLoaded()) {
    Load({.caption = L"FrmTime",
          .border = FormBorder::kNone,
          .widthTwips = kWidth,
          .backColor = kNight});
  } else {
    DrawTime();
    // Deliberate: only what opens the clock renews its date, never the timer.
    if (!Visible()) DrawDate();
  }
  ShowWithoutFocus();
}

void FrmTime::HideClock() {
  if (IsLoaded()) Hide();
}

void FrmTime::Form_Load() {
  ResizeInside(PixelsFromTwipsX(kWidth), HeightNeeded());
  // The whole screen where the system does not tell which part of it is free.
  RECT work = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const int left = static_cast<int>(work.right) - PixelsFromTwipsX(kWidth) - kScreenMargin;
  SetWindowPos(hwnd(), nullptr, left, static_cast<int>(work.top) + kScreenMargin, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  SetWindowPos(hwnd(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  Opacity(kOpacity);
  PrepareFace();
  CreateLabels();
  CreateDigits();
  DrawTime();
  DrawDate();
  Timer1_.Interval(1'000);
  Timer1_.Tick = [this] { Timer1_Timer(); };
  Timer1_.Enabled(true);
}

bool FrmTime::Form_Unload() {
  Timer1_.Enabled(false);
  if (Visible()) {
    for (const BYTE opacity : kFadeOut) {
      Opacity(opacity);
      surroundings_.pause(kFadeMilliseconds);
    }
  }
  for (PictureBox& host : picD_) DestroyWindow(host.hwnd());
  return true;
}

void FrmTime::CreateLabels() {
  for (size_t i = 0; i < labels_.size(); ++i) {
    picD_[i].Create({.parent = hwnd(),
                     .x = PixelsFromTwipsX(kLabels[i].left),
                     .y = PixelsFromTwipsY(kLabels[i].top),
                     .width = PixelsFromTwipsX(kLabels[i].width),
                     .height = PixelsFromTwipsY(kLabelHeight),
                     .backColor = kNight});
    labels_[i].emplace();
    clsControl& label = *labels_[i];
    label.TargetPictureBox(picD_[i]);
    label.Create(ControlKind::kLabel);
    label.ForeColor(kWheat);
    label.text(kTexts[i]);
    // Without notices of its own a text lets the mouse through to its box.
    SetWindowLongPtrW(label.hwnd(), GWL_STYLE,
                      GetWindowLongPtrW(label.hwnd(), GWL_STYLE) & ~LONG_PTR{SS_NOTIFY});
    ForwardMouse(picD_[i]);
  }
  // The box of the day's half reaches into the face: there the face shows.
  PictureBox& host = picD_[kHalfOfDay];
  const int x = PixelsFromTwipsX(kLabels[kHalfOfDay].left);
  const int inset = std::max(centre_ + kDiscRadius + kGapBehindFace - x, 0);
  MoveWindow(labels_[kHalfOfDay]->hwnd(), inset, 0, host.ScaleWidth() - inset, host.ScaleHeight(),
             TRUE);
  UniqueRegion shown(CreateRectRgn(inset, 0, host.ScaleWidth(), host.ScaleHeight()));
  // The system owns it from then on.
  if (SetWindowRgn(host.hwnd(), shown.Get(), TRUE) != 0) (void)shown.Release();
}

void FrmTime::CreateDigits() {
  wPw1_ = MemoryContext::Create(kStripWidth, kDigitHeight);
  const UniqueBitmap strip(LoadBitmapW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kDigitStrip)));
  const UniqueMemoryDc from(CreateCompatibleDC(nullptr));
  if (wPw1_ && strip && from) {
    const SelectedObject selected(from.Get(), strip.Get());
    BitBlt(wPw1_->Dc(), 0, 0, kStripWidth, kDigitHeight, from.Get(), 0, 0, SRCCOPY);
  }
  const auto add = [this](DigitBox& digits, int cells, size_t label) {
    const int labelY = PixelsFromTwipsY(kLabels[label].top);
    const int labelHeight = PixelsFromTwipsY(kLabelHeight);
    AddDigits(digits, cells, PixelsFromTwipsX(kLabels[label].left),
              labelY + (labelHeight - kDigitHeight) / 2);
  };
  add(G_y_, 4, 0);
  add(G_m_, 2, 1);
  add(G_d_, 2, 2);
  add(C_ch_, 2, 3);
  add(C_cm_, 2, 4);
  add(C_cs_, 2, 5);
}

// Right before the label.
void FrmTime::AddDigits(DigitBox& digits, int cells, int labelX, int y) {
  const int width = cells * kDigitWidth;
  digits.shown = {};  // a clock that was closed and is loaded again begins with empty boxes
  digits.box.Create({.parent = hwnd(),
                     .x = labelX - width,
                     .y = y,
                     .width = width,
                     .height = kDigitHeight,
                     .backColor = kNight});
  ForwardMouse(digits.box);
}

// Wherever it is pressed, the clock is one thing.
void FrmTime::ForwardMouse(PictureBox& box) {
  box.MouseDown = [this](const MouseEvent& event) { Form_MouseDown(event); };
  box.MouseMove = [this](const MouseEvent& event) { Form_MouseMove(event); };
}

// What no second changes is drawn once.
void FrmTime::PrepareFace() {
  centre_ = FaceCentre(TwipsPerPixelY());
  face_ = MemoryContext::Create(ScaleWidth(), ScaleHeight());
  Paint = nullptr;
  if (!face_) return;
  const HDC context = face_->Dc();
  ModTheme::SolidFill(context, 0, 0, ScaleWidth(), ScaleHeight(), kRim);
  ModTheme::SolidFill(context, 1, 1, ScaleWidth() - 2, ScaleHeight() - 2, kNight);
  DrawDisc(context, centre_);
  DrawMarks(context, centre_);
  Paint = [this](HDC target) {
    BitBlt(target, 0, 0, ScaleWidth(), ScaleHeight(), face_->Dc(), 0, 0, SRCCOPY);
  };
  Redraw();
}

void FrmTime::Timer1_Timer() {
  // Nobody sees a hidden clock; it is brought up to date when it is shown.
  if (Visible()) DrawTime();
}

void FrmTime::DrawTime() {
  // Each from a reading of its own.
  const int hour = Time().hour;
  const int minute = Time().minute;
  const int second = Time().second;
  DrawTwoDigits(C_ch_, hour);
  DrawTwoDigits(C_cm_, minute);
  DrawTwoDigits(C_cs_, second);
  DrawFace(HandsAt(centre_, hour, minute, second));
}

void FrmTime::DrawFace(const FaceHands& hands) {
  if (!face_ || Dc() == nullptr) return;
  const int side = 2 * centre_;
  BitBlt(Dc(), 0, 0, side, side, face_->Dc(), 0, 0, SRCCOPY);
  DrawLine(Dc(), centre_, centre_, hands.hour, kHourHand);
  DrawLine(Dc(), centre_, centre_, hands.minute, kMinuteHand);
  DrawLine(Dc(), centre_, centre_, hands.second, kSecondHand);
  Refresh({0, 0, side, side});
}

// Deliberately only when the clock is opened: one that stays open past midnight or noon keeps the
// date and the designator that it came up with.
void FrmTime::DrawDate() {
  const CivilDateTime now = Time();
  const std::wstring year = std::to_wstring(now.year);
  for (size_t i = 0; i < year.size() && i < G_y_.shown.size(); ++i) {
    DrawDigitOnce(G_y_, year[i] - L'0', static_cast<int>(i) + 1);
  }
  DrawTwoDigits(G_m_, now.month);
  DrawTwoDigits(G_d_, now.day);
  labels_[kHalfOfDay]->text(surroundings_.dayHalf(surroundings_.clock()));
}

void FrmTime::DrawTwoDigits(DigitBox& target, int value) {
  const TwoDigits digits = DigitsOf(value);
  DrawDigitOnce(target, digits.tens, 1);
  DrawDigitOnce(target, digits.units, 2);
}

// A digit that stands there already is left alone.
void FrmTime::DrawDigitOnce(DigitBox& target, int digit, int position) {
  std::optional<int>& shown = target.shown[static_cast<size_t>(position) - 1];
  if (shown != digit) DrawDigit(wPw1_ ? wPw1_->Dc() : nullptr, target.box, digit, 1, position);
  shown = digit;
}

void FrmTime::DrawDigit(HDC source, PictureBox& target, int digit, int row, int position) {
  const int x = (position - 1) * kDigitWidth;
  BitBlt(target.Dc(), x, 0, kDigitWidth, kDigitHeight, source, digit * kDigitWidth,
         (row - 1) * kDigitHeight, SRCCOPY);
  target.Refresh({x, 0, x + kDigitWidth, kDigitHeight});
}

void FrmTime::Form_MouseDown(const MouseEvent& event) {
  if (event.button == kLeftButton) BeginDrag();
  if (event.button == kRightButton) surroundings_.openTrayMenu();
}

void FrmTime::Form_MouseMove(const MouseEvent&) { PullInside(); }

// Whoever is typing keeps the keyboard while the clock is clicked or moved. Besides, X11 gives a
// window that becomes active in the middle of a move a new frame, and the move is lost.
LRESULT FrmTime::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_MOUSEACTIVATE:
      return MA_NOACTIVATE;
    case WM_WINDOWPOSCHANGING:
      reinterpret_cast<WINDOWPOS*>(lParam)->flags |= SWP_NOACTIVATE;
      return Form::HandleMessage(message, wParam, lParam);
    case WM_NCLBUTTONDOWN:
      return SendMessageW(hwnd(), WM_SYSCOMMAND, SC_MOVE | wParam, lParam);
    default:
      return Form::HandleMessage(message, wParam, lParam);
  }
}

}  // namespace tellurvane

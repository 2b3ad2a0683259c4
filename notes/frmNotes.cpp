#include "notes/frmNotes.h"

#include <oleacc.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "notes/NoteText.h"
#include "ui/AccessibleObject.h"
#include "ui/Density.h"
#include "ui/Event.h"
#include "ui/Handle.h"
#include "ui/ModTheme.h"

namespace tellurvane {
namespace {

constexpr BYTE kFadeIn[] = {0, 40, 80, 120, 160, 200, 240};
constexpr BYTE kFadeOut[] = {200, 160, 120, 80, 40, 0};
constexpr BYTE kOpacity = 230;

// Pixels of 96 dpi. ModTheme::Text doubles a text's x.
constexpr int kTimeX = 2;
constexpr int kTimeY = 2;
constexpr int kTextX = 5;
constexpr int kTextY = 20;
constexpr int kHairlineY = 20;
constexpr int kLowerMargin = 10;
constexpr int kImageMargin = 4;
constexpr int kImageSize = 16;
constexpr int kFocusedEdge = 3;  // without the keyboard it is a pixel of the screen

constexpr ModTheme::TextFont kTimeFont = {.size = 12, .style = ModTheme::kBold};
constexpr ModTheme::TextFont kTextFont = {.size = 16, .style = ModTheme::kBold};
constexpr Color kPaperTop = Adaptive(Rgb(0xFF, 0xF8, 0xE8), COLOR_WINDOW);
constexpr Color kPaperBottom = Adaptive(Rgb(0xF5, 0xDE, 0xB3), COLOR_WINDOW);
constexpr Color kEdge = Adaptive(Rgb(0x4B, 0x00, 0x82), COLOR_WINDOWTEXT);
constexpr Color kHairline = Adaptive(Rgb(0xC9, 0xA8, 0x6A), COLOR_WINDOWTEXT);

int ScreenWidth() { return GetSystemMetrics(SM_CXSCREEN); }
int ScreenHeight() { return GetSystemMetrics(SM_CYSCREEN); }

Color PaperAt(int y, int height) {
  return Blend(ModTheme::TranslateColor(kPaperBottom), ModTheme::TranslateColor(kPaperTop),
               255 * y / (height - 1));
}

}  // namespace

void CloseImage::CreateAt(HWND parent, int x, int y, int size) {
  size_ = size;
  Create({.parent = parent, .x = x, .y = y, .width = size, .height = size});
  Paint = [this](HDC context) { DrawImage(context); };
  MouseUp = [this](const MouseEvent& event) {
    const bool isInside = event.x >= 0 && event.y >= 0 && event.x < size_ && event.y < size_;
    if (event.button == kLeftButton && isInside) Raise(Click);
  };
  MouseMove = [this](const MouseEvent&) { SetHot(true); };
  Redraw();
}

void CloseImage::DrawImage(HDC context) const {
  ModTheme::SolidFill(context, 0, 0, size_, size_, kPaperTop);
  const UniqueIcon icon(
      static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), isHot_ ? L"CLOSEHOT" : L"CLOSE",
                                    IMAGE_ICON, size_, size_, LR_DEFAULTCOLOR)));
  ModTheme::PicturePlate(context, 0, 0, size_, size_, kPaperTop);
  if (icon) DrawIconEx(context, 0, 0, icon.Get(), size_, size_, 0, nullptr, DI_NORMAL);
}

void CloseImage::SetHot(bool isHot) {
  if (isHot) TrackMouseLeave();
  if (std::exchange(isHot_, isHot) != isHot) Redraw();
}

LRESULT CloseImage::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SETCURSOR:
      SetCursor(LoadCursorW(nullptr, IDC_HAND));
      return TRUE;
    case WM_MOUSELEAVE:
      SetHot(false);
      return 0;
    default:
      return PictureBox::HandleMessage(message, wParam, lParam);
  }
}

frmNotes::frmNotes(unsigned number, Pause pause, NoteKeyboard keyboard)
    : className_(L"frmNotes" + std::to_wstring(number)),
      pause_(std::move(pause)),
      keyboard_(std::move(keyboard)) {}

frmNotes::~frmNotes() {
  Unload();
  UnregisterClassW(className_.c_str(), GetModuleHandleW(nullptr));
}

void frmNotes::Prepare(const std::wstring& text, const std::wstring& time,
                       std::span<const OpenNote> open) {
  text_ = DrawableNoteText(NoteTextWithBreaks(text));
  FormTime_ = time;
  Load({.caption = L"frmNotes",
        .border = FormBorder::kNone,
        .widthTwips = kNoteWidth,
        .heightTwips = kNoteLeastHeight,
        .backColor = kPaperTop,
        .extendedStyle = WS_EX_TOPMOST,
        .className = className_});
  const int height = HeightNeeded();
  const NotePlace place = PlaceOfNote(open, kNoteWidth, height, TwipsFromPixels(ScreenWidth()),
                                      TwipsFromPixels(ScreenHeight()));
  Form::Move(static_cast<int>(std::lround(place.left)), static_cast<int>(std::lround(place.top)),
             kNoteWidth, height);
  PullInside();
  const int imageSize = Scaled(kImageSize);
  const int imageMargin = Scaled(kImageMargin);
  picCerrar_.CreateAt(hwnd(), ScaleWidth() - imageSize - imageMargin, imageMargin, imageSize);
  picCerrar_.Click = [this] { Form_DblClick(); };
  Describe(NoteTextWithBreaks(text) + L"，" + time);
}

void frmNotes::Describe(const std::wstring& name) {
  // Later: a screen reader does not wait for the fading.
  const auto closeLater = [this] { PostMessageW(hwnd(), WM_CLOSE, 0, 0); };
  MakeAccessible(hwnd(), {.role = ROLE_SYSTEM_ALERT,
                          .name = [name] { return name; },
                          .actionName = L"關閉",
                          .act = closeLater});
  MakeAccessible(picCerrar_.hwnd(), {.role = ROLE_SYSTEM_PUSHBUTTON,
                                     .name = [] { return L"關閉"; },
                                     .actionName = L"按下",
                                     .act = closeLater});
}

void frmNotes::Form_Load() {
  Opacity(0);
  savedClassStyle_ = GetClassLongPtrW(hwnd(), GCL_STYLE);
  SetClassLongPtrW(hwnd(), GCL_STYLE, static_cast<LONG_PTR>(savedClassStyle_ | CS_DROPSHADOW));
  Paint = [this](HDC context) { Draw(context); };
  MouseDown = [this](const MouseEvent& event) { Form_MouseDown(event); };
  MouseMove = [this](const MouseEvent&) { Form_MouseMove(); };
  DblClick = [this](const MouseEvent&) { Form_DblClick(); };
}

bool frmNotes::Form_Unload() {
  // Deliberately no plain restore: all bits but the shadow's are set. Only this note uses the
  // class.
  SetClassLongPtrW(hwnd(), GCL_STYLE, static_cast<LONG_PTR>(savedClassStyle_ | 0xFFFD'FFFF));
  return true;
}

// In twips: as high as its lines need, and never higher than the screen.
int frmNotes::HeightNeeded() {
  const auto textHeight =
      static_cast<int>(std::ceil(ModTheme::MeasureText(Dc(), text_, kTextFont).height));
  const int pixels =
      std::min(Scaled(kTextY) + 1 + textHeight + Scaled(kLowerMargin), ScreenHeight());
  return std::max(TwipsFromPixels(pixels), kNoteLeastHeight);
}

void frmNotes::Draw(HDC context) {
  const int width = ScaleWidth();
  const int height = ScaleHeight();
  const int edge = isFocused_ ? Scaled(kFocusedEdge) : 1;
  ModTheme::SolidFill(context, 0, 0, width, height, kEdge);
  for (int y = edge; y < height - edge; ++y) {
    ModTheme::SolidFill(context, edge, y, width - 2 * edge, 1, PaperAt(y, height));
  }
  const int hairlineX = Scaled(2 * kTimeX);
  ModTheme::SolidFill(context, hairlineX, Scaled(kHairlineY), width - 2 * hairlineX, 1, kHairline);
  ModTheme::Text(context, FormTime_, kTimeX, kTimeY, {.text = ModTheme::kIndigoText}, kTimeFont);
  ModTheme::Text(context, text_, kTextX, kTextY, {.text = ModTheme::kBlackText}, kTextFont);
  // Again, over a text that is too long for its line.
  ModTheme::SolidFill(context, width - edge, 0, edge, height, kEdge);
}

void frmNotes::ShowNote() {
  Redraw();
  ShowWithoutFocus();
  Fade(kFadeIn, pause_);
  Translucency(kOpacity);
  Refresh();
  NotifyWinEvent(EVENT_SYSTEM_ALERT, hwnd(), OBJID_CLIENT, CHILDID_SELF);
}

void frmNotes::Close() {
  if (!IsLoaded() || std::exchange(isClosing_, true)) return;
  if (GetForegroundWindow() == hwnd()) Raise(keyboard_.isFree);
  Fade(kFadeOut, pause_);
  Unload();
}

void frmNotes::ColorsChanged() {
  Form::ColorsChanged();
  if (Visible()) Translucency(kOpacity);
}

void frmNotes::Form_MouseDown(const MouseEvent& event) {
  if (event.button == kLeftButton) BeginDrag();
}

bool frmNotes::Form_KeyDown(const KeyEvent& event) {
  if (event.key != VK_F6 || event.shift != 0) return false;
  if (!event.isRepeated) Raise(keyboard_.next);
  return true;
}

LRESULT frmNotes::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CLOSE:
      Close();
      return 0;
    case WM_MOUSEACTIVATE:
      Raise(keyboard_.isTaken);
      return Form::HandleMessage(message, wParam, lParam);
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      isFocused_ = message == WM_SETFOCUS;
      Redraw();
      return 0;
    default:
      return Form::HandleMessage(message, wParam, lParam);
  }
}

}  // namespace tellurvane

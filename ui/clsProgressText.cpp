// The text on the slider.
#include <windows.h>

#include <cmath>

#include "ui/Density.h"
#include "ui/ModTheme.h"
#include "ui/ToolkitFont.h"
#include "ui/UserPreferences.h"
#include "ui/clsProgress.h"

namespace tellurvane {
namespace {

constexpr float kToolkitPoints = 9;
constexpr Color kCaptionGlow = kWhite;
// Under high contrast.
constexpr Color kFilledInk = SystemColor(COLOR_HIGHLIGHTTEXT);
constexpr Color kPlainInk = SystemColor(COLOR_WINDOWTEXT);
constexpr Color kDisabledInk = SystemColor(COLOR_GRAYTEXT);
constexpr Color kWindow = SystemColor(COLOR_WINDOW);

// In pixels. Centres the digits, not the font's line: the bar is hardly higher than a digit.
int DigitHeight(HDC context) {
  constexpr MAT2 kUpright = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};
  GLYPHMETRICS metrics = {};
  if (GetGlyphOutlineW(context, L'0', GGO_METRICS, &metrics, 0, nullptr, &kUpright) != GDI_ERROR) {
    return static_cast<int>(metrics.gmptGlyphOrigin.y);
  }
  TEXTMETRICW font = {};
  GetTextMetricsW(context, &font);
  return static_cast<int>(font.tmAscent - font.tmInternalLeading);
}

}  // namespace

void clsProgress::PrintText(const std::wstring& text, Color color) {
  const HDC target = host_ == nullptr ? nullptr : host_->Dc();
  if (target == nullptr) return;
  const SliderBox track = SliderTrack(HostSize());
  const SelectedObject font(target, Font());
  const int middle = (track.left + track.right) / 2;
  const int baseline = (track.top + track.bottom + DigitHeight(target)) / 2;
  const int mode = SetBkMode(target, TRANSPARENT);
  const UINT align = SetTextAlign(target, TA_CENTER | TA_BASELINE);
  const COLORREF previous = GetTextColor(target);
  const auto write = [&](int x, int y, const SliderBox& box, UINT clipping, Color ink) {
    const RECT clip = {box.left, box.top, box.right, box.bottom};
    SetTextColor(target, ModTheme::TranslateColor(ink));
    ExtTextOutW(target, x, y, clipping, &clip, text.c_str(), static_cast<UINT>(text.size()),
                nullptr);
  };
  if (IsHighContrast()) {
    const SliderBox fill = SliderFill(HostSize(), model_.Fraction());
    SliderBox rest = track;
    rest.left = fill.right;
    write(middle, baseline, fill, ETO_CLIPPED, Enabled() ? kFilledInk : kWindow);
    write(middle, baseline, rest, ETO_CLIPPED, Enabled() ? kPlainInk : kDisabledInk);
  } else {
    // The glow makes a pale text readable on the filled part. It is clipped to the bar.
    for (const POINT& aside : {POINT{-1, 0}, {1, 0}, {0, -1}, {0, 1}}) {
      write(middle + static_cast<int>(aside.x), baseline + static_cast<int>(aside.y), track,
            ETO_CLIPPED, kCaptionGlow);
    }
    write(middle, baseline, track, 0, color);
  }
  SetTextColor(target, previous);
  SetTextAlign(target, align);
  SetBkMode(target, mode);
}

int clsProgress::TextWidth(const std::wstring& text) const {
  return static_cast<int>(TextExtent(text).cx);
}

int clsProgress::TextHeight(const std::wstring& text) const {
  return static_cast<int>(TextExtent(text).cy);
}

SIZE clsProgress::TextExtent(const std::wstring& text) const {
  const WindowDc screen(hwnd());
  const SelectedObject font(screen.Get(), Font());
  SIZE size = {};
  GetTextExtentPoint32W(screen.Get(), text.c_str(), static_cast<int>(text.size()), &size);
  return size;
}

HFONT clsProgress::Font() const {
  if (!font_) {
    LOGFONTW font = {};
    GetObjectW(ToolkitFont(), sizeof(font), &font);
    font.lfHeight = std::lround(static_cast<double>(font.lfHeight) * fontSize_ / kToolkitPoints);
    // Thin strokes of a pale text would be lost in the glow.
    font.lfWeight = FW_BOLD;
    font_.Reset(CreateFontIndirectW(&font));
  }
  return font_.Get();
}

}  // namespace tellurvane

// The text routine of ModTheme, a file of its own for the sake of GDI+.
#include <windows.h>

#include <objidl.h>

#include <gdiplus.h>

#include <algorithm>
#include <array>
#include <map>

#include "ui/Density.h"
#include "ui/ModTheme.h"
#include "ui/UserPreferences.h"

namespace tellurvane::ModTheme {
namespace {

// By its name: the C++ class's own object would load GDI+ when the program starts, not on first
// use. Empty where GDI+ has none.
std::wstring GenericSansSerif() {
  Gdiplus::GpFontFamily* family = nullptr;
  if (Gdiplus::DllExports::GdipGetGenericFontFamilySansSerif(&family) != Gdiplus::Ok) return {};
  std::array<WCHAR, LF_FACESIZE> name = {};
  Gdiplus::DllExports::GdipGetFamilyName(family, name.data(), LANG_NEUTRAL);
  Gdiplus::DllExports::GdipDeleteFontFamily(family);
  return name.data();
}

std::wstring FindFace(const std::wstring& wanted) {
  for (const std::wstring& face : {wanted, std::wstring(L"Microsoft JhengHei"),
                                   std::wstring(L"Noto Sans CJK TC"), std::wstring(L"Tahoma")}) {
    if (Gdiplus::FontFamily(face.c_str()).GetLastStatus() == Gdiplus::Ok) return face;
  }
  return GenericSansSerif();
}

// The family and the font of one call. GDI+ does not fall back to another family by itself: a
// missing one would draw nothing.
class DrawingFont {
 public:
  explicit DrawingFont(const TextFont& font)
      : family_(AvailableFace(font.face).c_str()),
        font_(&family_, font.size * static_cast<float>(DotsPerInch()) / kDesignDensity, font.style,
              Gdiplus::UnitPixel) {}

  const Gdiplus::Font* Get() const { return &font_; }

 private:
  Gdiplus::FontFamily family_;
  Gdiplus::Font font_;
};

// GDI+ breaks lines at the LF; not every one leaves the CR before it undrawn.
std::wstring WithoutReturns(std::wstring text) {
  std::erase(text, L'\r');
  return text;
}

// Red and blue change places.
Argb OpaqueArgb(Color color) {
  return Gdiplus::Color::MakeARGB(0xFF, GetRValue(color), GetGValue(color), GetBValue(color));
}

Gdiplus::RectF Measure(const Gdiplus::Graphics& graphics, const std::wstring& text,
                       const DrawingFont& font) {
  Gdiplus::RectF box;
  const Gdiplus::Status status = graphics.MeasureString(text.c_str(), static_cast<INT>(text.size()),
                                                        font.Get(), Gdiplus::PointF(0, 0), &box);
  return status == Gdiplus::Ok ? box : Gdiplus::RectF();
}

}  // namespace

std::wstring AvailableFace(const std::wstring& face) {
  static std::map<std::wstring, std::wstring> known;
  std::wstring& found = known[face];
  if (found.empty()) found = FindFace(face);
  return found;
}

float Text(HDC target, const std::wstring& text, int x, int y, const TextColors& colors,
           const TextFont& font) {
  return TextAt(target, text, Scaled(2 * x), Scaled(y), colors, font);
}

float TextAt(HDC target, const std::wstring& text, int left, int top, const TextColors& colors,
             const TextFont& font) {
  Gdiplus::Graphics graphics(target);
  graphics.SetCompositingQuality(Gdiplus::CompositingQualityHighQuality);
  graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
  graphics.SetTextRenderingHint(Gdiplus::TextRenderingHintAntiAlias);
  const DrawingFont drawingFont(font);
  const std::wstring lines = WithoutReturns(text);

  const auto draw = [&](Argb color, int x, int y) {
    const Gdiplus::SolidBrush brush{Gdiplus::Color(color)};
    // A layout of no size neither wraps nor clips.
    const Gdiplus::RectF layout(static_cast<float>(x), static_cast<float>(y), 0, 0);
    graphics.DrawString(lines.c_str(), static_cast<INT>(lines.size()), drawingFont.Get(), layout,
                        nullptr, &brush);
  };
  if (IsHighContrast()) {
    draw(OpaqueArgb(TranslateColor(colors.plain)), left, top + 1);
  } else {
    draw(colors.shadow, left + 1, top + 2);
    draw(colors.glow, left - 1, top);
    draw(colors.text, left, top + 1);
  }
  return Measure(graphics, lines, drawingFont).Width;
}

TextSize MeasureText(HDC target, const std::wstring& text, const TextFont& font) {
  Gdiplus::Graphics graphics(target);
  graphics.SetTextRenderingHint(Gdiplus::TextRenderingHintAntiAlias);
  const Gdiplus::RectF box = Measure(graphics, WithoutReturns(text), DrawingFont(font));
  return {box.Width, box.Height};
}

std::wstring FittingText(HDC target, const std::wstring& text, int width, const TextFont& font,
                         const std::wstring& ellipsis) {
  const auto fits = [&](const std::wstring& candidate) {
    return MeasureText(target, candidate, font).width <= static_cast<float>(width);
  };
  // Measuring megabytes of a page's text would take minutes, and no line holds so many.
  constexpr size_t kMostCharacters = 1'000;
  if (text.size() <= kMostCharacters && fits(text)) return text;
  // Found by halving.
  size_t fitting = 0;
  size_t tooLong = std::min(text.size(), kMostCharacters);
  while (fitting + 1 < tooLong) {
    const size_t middle = (fitting + tooLong) / 2;
    (fits(text.substr(0, middle) + ellipsis) ? fitting : tooLong) = middle;
  }
  // Not in the middle of a character outside the basic plane.
  if (fitting > 0 && IS_HIGH_SURROGATE(text[fitting - 1])) --fitting;
  return text.substr(0, fitting) + ellipsis;
}

}  // namespace tellurvane::ModTheme

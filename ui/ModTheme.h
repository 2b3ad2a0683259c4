// The theme: the one text routine, and the boxes, fills and highlights that windows are drawn with.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "ui/Color.h"

namespace tellurvane::ModTheme {

// A colour with its opacity in the highest byte, then red, green and blue: 0xFF4B0082 is indigo.
using Argb = std::uint32_t;

inline constexpr Argb kIndigoText = 0xFF4B0082;
inline constexpr Argb kBlackText = 0xFF000000;
inline constexpr Argb kBlueText = 0xFF0000FF;
inline constexpr Argb kWheatGlow = 0xFFF5DEB3;
inline constexpr Argb kWhiteShadow = 0xFFFFFFFF;

// The background of all windows, and the colour of their labels.
inline constexpr Color kWindowGround = Adaptive(Rgb(0xF4, 0xF1, 0xFA), COLOR_BTNFACE);
inline constexpr Color kIndigo = Rgb(0x4B, 0x00, 0x82);
inline constexpr Color kLabelInk = Adaptive(kIndigo, COLOR_BTNTEXT);

// Bits of TextFont::style.
enum TextStyle { kRegular = 0, kBold = 1 };

struct TextFont {
  const wchar_t* face = L"Arial Unicode MS";
  float size = 12;  // pixels of 96 dpi
  int style = kRegular;
};

struct TextColors {
  Argb text = kIndigoText;
  Argb glow = kWheatGlow;
  Argb shadow = kWhiteShadow;
  // The only colour under high contrast: there is neither glow nor shadow.
  Color plain = SystemColor(COLOR_WINDOWTEXT);
};

// Draws shadow, glow and text, each one pixel aside at every density. Returns the width in pixels;
// 0 when GDI+ fails. Neither wraps nor clips; line breaks are kept.
//
// The position is in pixels of 96 dpi. Deliberate: the horizontal position is doubled and the
// vertical one is not. Callers pass half of the column that they mean.
float Text(HDC target, const std::wstring& text, int x, int y, const TextColors& colors,
           const TextFont& font);

// The same at a pixel of the target, for a text that is placed after something measured.
float TextAt(HDC target, const std::wstring& text, int left, int top, const TextColors& colors,
             const TextFont& font);

// The width and height in pixels that Text takes, without drawing.
struct TextSize {
  float width = 0;
  float height = 0;
};
TextSize MeasureText(HDC target, const std::wstring& text, const TextFont& font);

// The text, or its longest beginning that the width in pixels holds together with the ellipsis.
std::wstring FittingText(HDC target, const std::wstring& text, int width, const TextFont& font,
                         const std::wstring& ellipsis = L"…");

// The face itself where it is installed, else "Microsoft JhengHei", "Noto Sans CJK TC", "Tahoma",
// or the generic sans serif.
std::wstring AvailableFace(const std::wstring& face);

// The colour that a system colour reference or an adaptive colour has now; any other colour itself.
// The routines below take such colours too.
Color TranslateColor(Color color);

// Under high contrast our pictures, whose outlines are dark, need help on such a ground.
bool IsDarkGround(Color ground);
// A pale box below a picture, a little larger than it. Only on a dark ground.
void PicturePlate(HDC target, int x, int y, int width, int height, Color ground);

// A box with a frame of one pixel in the colour, filled with the colour laid on white. Under high
// contrast it is filled with the window colour.
void FramedBox(HDC target, int x, int y, int width, int height, Color color);

void SolidFill(HDC target, int x, int y, int width, int height, Color color);

// A bar from near `light` at the top to `base` at the bottom in a fine double frame. Under high
// contrast both highlights are filled with `base`.
void SimpleHighlight(HDC target, int x, int y, int width, int height, Color light, Color base);

// The same with rounded corners, a gloss in the upper third, and the target showing through the
// corners.
void RichHighlight(HDC target, int x, int y, int width, int height, Color light, Color base);

}  // namespace tellurvane::ModTheme

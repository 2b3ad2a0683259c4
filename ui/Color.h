// Colour arithmetic. Colours are 32-bit values in blue-green-red order, red in the lowest byte.
#pragma once

#include <algorithm>
#include <cstdint>

namespace tellurvane {

using Color = std::uint32_t;

inline constexpr Color kBlack = 0x000000;
inline constexpr Color kWhite = 0xFFFFFF;

constexpr Color Rgb(int red, int green, int blue) {
  return static_cast<Color>(red) | (static_cast<Color>(green) << 8) |
         (static_cast<Color>(blue) << 16);
}

// A reference to one of the system's colours, by its index; ModTheme::TranslateColor resolves it.
inline constexpr Color kSystemColorBit = 0x80000000;
constexpr Color SystemColor(int index) { return kSystemColorBit | static_cast<Color>(index); }

// A colour of ours that gives way to a system colour under high contrast. ModTheme::TranslateColor
// resolves it.
constexpr int kAdaptiveShift = 24;
constexpr Color kAdaptiveBits = 0x3F;
constexpr Color Adaptive(Color color, int systemIndex) {
  return color | static_cast<Color>(systemIndex + 1) << kAdaptiveShift;
}

// 0 to 255: how bright a colour looks.
constexpr int Brightness(Color color) {
  const auto channel = [&](int shift) { return static_cast<int>(color >> shift & 0xFF); };
  return (299 * channel(0) + 587 * channel(8) + 114 * channel(16)) / 1'000;
}

// `over` laid on `under` with an opacity of 0 to 255, each channel rounded to the nearest and kept
// within 0 to 255. An opacity beyond 255 goes on along the same line, as far as the channels go.
constexpr Color Blend(Color over, Color under, int opacity) {
  const auto channel = [&](int shift) {
    const int upper = static_cast<int>((over >> shift) & 0xFF);
    const int lower = static_cast<int>((under >> shift) & 0xFF);
    // 255 is odd: nothing lies half-way.
    return std::clamp((lower * (255 - opacity) + upper * opacity + 127) / 255, 0, 255);
  };
  return Rgb(channel(0), channel(8), channel(16));
}

}  // namespace tellurvane

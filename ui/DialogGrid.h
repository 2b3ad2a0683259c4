// The lengths that the dialogs share. Twips.
#pragma once

#include "ui/Density.h"

namespace tellurvane::DialogGrid {

inline constexpr int kMargin = 180;
inline constexpr int kGap = 150;
inline constexpr int kRowHeight = 390;
inline constexpr int kEditHeight = 330;  // of a single line
inline constexpr int kLabelDrop = 75;    // from a row's top to its label's
inline constexpr int kButtonWidth = 1'350;
inline constexpr int kButtonHeight = 405;

inline int Px(int twips) { return PixelsFromTwips(twips); }

}  // namespace tellurvane::DialogGrid

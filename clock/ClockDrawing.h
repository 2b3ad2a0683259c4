// Draws the analog face, and digits for high contrast.
#pragma once

#include <windows.h>

#include "clock/ClockFace.h"
#include "ui/Color.h"

namespace tellurvane {

inline constexpr Color kNight = Adaptive(Rgb(0x1E, 0x0A, 0x3C), COLOR_WINDOW);
inline constexpr Color kWheat = Adaptive(Rgb(0xF5, 0xDE, 0xB3), COLOR_WINDOWTEXT);
inline constexpr Color kRim = Adaptive(Rgb(0x6A, 0x3F, 0xA0), COLOR_WINDOWTEXT);

// Of the face and the digits on this screen.
Scale OwnScale();
// Pixels. The disc is a little larger than the circle of the marks.
int DiscRadius(const ClockFace& face);

void DrawDisc(HDC context, const ClockFace& face);
void DrawMarks(HDC context, const ClockFace& face);
void DrawHands(HDC context, const ClockFace& face, const FaceHands& hands);

// As a text, because the digit strip's colours are fixed.
void WriteDigit(HDC context, const RECT& cell, int digit);

}  // namespace tellurvane

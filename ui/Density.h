// Lengths on this screen. All lengths, fonts and pictures of the program are scaled here.
#pragma once

#include "ui/Scale.h"

namespace tellurvane {

// The screen's dots per inch; 96 if the system gives none. The value stays the same while the
// program runs, because the manifest does not declare per-monitor awareness.
int DotsPerInch();

// The pixels of a length that was designed for 96 dpi.
int Scaled(int pixels);

// Forms are designed in twips, 1,440 to an inch.
int PixelsFromTwips(int twips);
int TwipsFromPixels(int pixels);

}  // namespace tellurvane

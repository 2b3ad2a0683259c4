// Lengths on this screen. All lengths, fonts and pictures of the program are scaled here.
#pragma once

#include "ui/Scale.h"

namespace tellurvane {

// The screen's dots per inch; 96 where the system gives none. A program of one density, as the
// manifest declares this one, keeps it while it runs.
int DotsPerInch();

// The pixels of a length that was designed for 96 dpi.
int Scaled(int pixels);

// Forms are designed in twips, 1,440 to an inch.
int PixelsFromTwips(int twips);
int TwipsFromPixels(int pixels);

}  // namespace tellurvane

// Twips, the unit in which forms are designed: 1,440 to an inch of the screen.
#pragma once

namespace tellurvane {

// The screen's density; 96 where the system gives none.
int DotsPerInchX();
int DotsPerInchY();

// 15 on a screen of 96 dpi, 12 on one of 120.
int TwipsPerPixelX();
int TwipsPerPixelY();

// Towards zero, as lengths are cut: 1,000 twips are 66 pixels at 96 dpi.
int PixelsFromTwipsX(int twips);
int PixelsFromTwipsY(int twips);

}  // namespace tellurvane

#include "ui/Density.h"

#include "ui/Handle.h"

namespace tellurvane {

int DotsPerInch() {
  // Kept once the system has given it; asked for again where it refused.
  static int kept = 0;
  if (kept == 0) {
    const WindowDc screen(nullptr);
    // On Windows a pixel is as wide as it is high.
    if (screen.Get() != nullptr) kept = GetDeviceCaps(screen.Get(), LOGPIXELSY);
  }
  return kept > 0 ? kept : kDesignDensity;
}

int Scaled(int pixels) { return Scale{DotsPerInch()}.Scaled(pixels); }

int PixelsFromTwips(int twips) { return Scale{DotsPerInch()}.PixelsFromTwips(twips); }

int TwipsFromPixels(int pixels) { return Scale{DotsPerInch()}.TwipsFromPixels(pixels); }

}  // namespace tellurvane

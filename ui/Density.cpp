#include "ui/Density.h"

#include "ui/Handle.h"

namespace tellurvane {
namespace {

int ScreenDensity() {
  const WindowDc screen(nullptr);
  // On Windows a pixel is as wide as it is high.
  const int density = GetDeviceCaps(screen.Get(), LOGPIXELSY);
  return density > 0 ? density : kDesignDensity;
}

}  // namespace

int DotsPerInch() {
  static const int density = ScreenDensity();
  return density;
}

int Scaled(int pixels) { return Scale{DotsPerInch()}.Scaled(pixels); }

int PixelsFromTwips(int twips) { return Scale{DotsPerInch()}.PixelsFromTwips(twips); }

int TwipsFromPixels(int pixels) { return Scale{DotsPerInch()}.TwipsFromPixels(pixels); }

}  // namespace tellurvane

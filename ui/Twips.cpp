#include "ui/Twips.h"

#include <algorithm>

#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr int kTwipsPerInch = 1'440;

// The screen's density cannot change while a program of one density runs.
int TwipsPerPixel(int densityIndex) {
  const WindowDc screen(nullptr);
  return kTwipsPerInch / std::max(GetDeviceCaps(screen.Get(), densityIndex), 1);
}

}  // namespace

int TwipsPerPixelX() {
  static const int twips = TwipsPerPixel(LOGPIXELSX);
  return twips;
}

int TwipsPerPixelY() {
  static const int twips = TwipsPerPixel(LOGPIXELSY);
  return twips;
}

int PixelsFromTwipsX(int twips) { return twips / TwipsPerPixelX(); }

int PixelsFromTwipsY(int twips) { return twips / TwipsPerPixelY(); }

}  // namespace tellurvane

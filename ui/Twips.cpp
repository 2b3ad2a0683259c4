#include "ui/Twips.h"

#include "ui/Handle.h"

namespace tellurvane {
namespace {

constexpr int kTwipsPerInch = 1'440;

// Where the system gives no density: that of most screens, until it does.
constexpr int kUsualDensity = 96;

// The screen's density cannot change while a program of one density runs: what the system has given
// is kept. A refusal is not.
int DensityOf(int densityIndex, int& kept) {
  if (kept == 0) {
    const WindowDc screen(nullptr);
    if (screen.Get() != nullptr) kept = GetDeviceCaps(screen.Get(), densityIndex);
  }
  return kept > 0 ? kept : kUsualDensity;
}

}  // namespace

int DotsPerInchX() {
  static int kept = 0;
  return DensityOf(LOGPIXELSX, kept);
}

int DotsPerInchY() {
  static int kept = 0;
  return DensityOf(LOGPIXELSY, kept);
}

int TwipsPerPixelX() { return kTwipsPerInch / DotsPerInchX(); }

int TwipsPerPixelY() { return kTwipsPerInch / DotsPerInchY(); }

int PixelsFromTwipsX(int twips) { return twips / TwipsPerPixelX(); }

int PixelsFromTwipsY(int twips) { return twips / TwipsPerPixelY(); }

}  // namespace tellurvane

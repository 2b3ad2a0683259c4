// How lengths that were designed for a screen of 96 dpi are converted for a denser one.
#pragma once

namespace tellurvane {

inline constexpr int kDesignDensity = 96;

struct Scale {
  int dpi = kDesignDensity;  // above 0

  // Pixels of the design as pixels of the screen, rounded to the nearest; halves away from zero.
  constexpr int Scaled(int pixels) const {
    const int half = pixels < 0 ? -kDesignDensity / 2 : kDesignDensity / 2;
    return (pixels * dpi + half) / kDesignDensity;
  }

  // Towards zero: 1,000 twips are 66 pixels at 96 dpi.
  constexpr int PixelsFromTwips(int twips) const { return twips * dpi / kTwipsPerInch; }

  // Away from zero, so that the way back to pixels gives the same number: a pixel of 168 dpi has
  // 8.57 twips.
  constexpr int TwipsFromPixels(int pixels) const {
    const int almostOne = pixels < 0 ? 1 - dpi : dpi - 1;
    return (pixels * kTwipsPerInch + almostOne) / dpi;
  }

 private:
  static constexpr int kTwipsPerInch = 1'440;
};

}  // namespace tellurvane

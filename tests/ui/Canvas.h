// A picture to draw on, and the part of it that was drawn on.
#pragma once

#include <algorithm>
#include <climits>
#include <optional>
#include <vector>

#include "tests/support/WindowTestSupport.h"
#include "ui/MemoryContext.h"

namespace tellurvane {

// The pixels that differ from the ground; right and bottom are the last of them.
struct Ink {
  int left = INT_MAX, top = INT_MAX, right = -1, bottom = -1;
  int pixels = 0;

  int Width() const { return right - left + 1; }
  int Height() const { return bottom - top + 1; }
  bool IsWithin(int x, int y, int width, int height) const {
    return left >= x && top >= y && right < x + width && bottom < y + height;
  }
};

class Canvas {
 public:
  Canvas(int width, int height, Color ground)
      : picture_(MemoryContext::Create(width, height)),
        width_(width),
        height_(height),
        ground_(ground) {
    const RECT all = {0, 0, width, height};
    const UniqueBrush brush(CreateSolidBrush(ground));
    FillRect(Dc(), &all, brush.Get());
  }

  HDC Dc() const { return picture_->Dc(); }
  Color At(int x, int y) const { return PixelOf(Dc(), x, y); }
  std::vector<Color> Pixels() const { return PixelsIn(Dc(), {0, 0, width_, height_}); }

  Ink FindInk() const {
    Ink ink;
    for (int y = 0; y < height_; ++y) {
      for (int x = 0; x < width_; ++x) {
        if (At(x, y) == ground_) continue;
        ink.left = std::min(ink.left, x);
        ink.right = std::max(ink.right, x);
        ink.top = std::min(ink.top, y);
        ink.bottom = std::max(ink.bottom, y);
        ++ink.pixels;
      }
    }
    return ink;
  }

 private:
  std::optional<MemoryContext> picture_;
  int width_, height_;
  Color ground_;
};

}  // namespace tellurvane

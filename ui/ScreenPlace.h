// Where a window may stand on the screen.
#pragma once

namespace tellurvane {

// Pixels, the frame included.
struct ScreenPlace {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  bool operator==(const ScreenPlace&) const = default;
};

// The same size inside a screen. What is larger than the screen ends at its right or lower edge.
constexpr ScreenPlace PulledInside(ScreenPlace place, int screenWidth, int screenHeight) {
  if (place.left < 0) place.left = 0;
  if (place.top < 0) place.top = 0;
  if (place.left + place.width > screenWidth) place.left = screenWidth - place.width;
  if (place.top + place.height > screenHeight) place.top = screenHeight - place.height;
  return place;
}

}  // namespace tellurvane

// Positions of windows on the screens.
#pragma once

#include <span>

namespace tellurvane {

// Pixels of the desktop, a window's frame included. A screen beside the main one may begin below 0.
struct ScreenPlace {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  bool operator==(const ScreenPlace&) const = default;
};

// Moves a window into the screen that it covers most of, or else into the nearest one. Its size
// stays. A window larger than the screen is aligned with the right or lower edge. Without a screen
// it stays.
ScreenPlace PulledInside(ScreenPlace place, std::span<const ScreenPlace> screens);

// Centres a window on another one, inside the area. Its size stays. A window larger than the area
// is aligned with the left or upper edge.
ScreenPlace CentredOn(ScreenPlace place, const ScreenPlace& around, const ScreenPlace& area);

}  // namespace tellurvane

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

// The same size inside the screen that it covers most of, or, where it covers none, that it is
// nearest to. What is larger than the screen ends at its right or lower edge. Without a screen the
// place stays.
ScreenPlace PulledInside(ScreenPlace place, std::span<const ScreenPlace> screens);

// The same size in the middle of another place, wholly inside the area. What is larger than the
// area begins at its left or upper edge.
ScreenPlace CentredOn(ScreenPlace place, const ScreenPlace& around, const ScreenPlace& area);

}  // namespace tellurvane

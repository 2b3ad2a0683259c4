#include "ui/ScreenPlace.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace tellurvane {
namespace {

int RightOf(const ScreenPlace& place) { return place.left + place.width; }
int BottomOf(const ScreenPlace& place) { return place.top + place.height; }

std::int64_t CoveredArea(const ScreenPlace& place, const ScreenPlace& screen) {
  const std::int64_t width =
      std::min(RightOf(place), RightOf(screen)) - std::max(place.left, screen.left);
  const std::int64_t height =
      std::min(BottomOf(place), BottomOf(screen)) - std::max(place.top, screen.top);
  return width > 0 && height > 0 ? width * height : 0;
}

std::int64_t SquaredDistance(const ScreenPlace& place, const ScreenPlace& screen) {
  const std::int64_t x = std::max({0, screen.left - RightOf(place), place.left - RightOf(screen)});
  const std::int64_t y = std::max({0, screen.top - BottomOf(place), place.top - BottomOf(screen)});
  return x * x + y * y;
}

}  // namespace

ScreenPlace PulledInside(ScreenPlace place, std::span<const ScreenPlace> screens) {
  if (screens.empty()) return place;
  // Larger is nearer: the covered area first, then the smaller distance.
  const auto nearness = [&](const ScreenPlace& screen) {
    return std::pair(CoveredArea(place, screen), -SquaredDistance(place, screen));
  };
  const ScreenPlace& screen = *std::ranges::max_element(screens, {}, nearness);
  place.left = std::max(place.left, screen.left);
  place.top = std::max(place.top, screen.top);
  place.left = std::min(place.left, RightOf(screen) - place.width);
  place.top = std::min(place.top, BottomOf(screen) - place.height);
  return place;
}

ScreenPlace CentredOn(ScreenPlace place, const ScreenPlace& around, const ScreenPlace& area) {
  place.left = around.left + (around.width - place.width) / 2;
  place.top = around.top + (around.height - place.height) / 2;
  place.left = std::max(area.left, std::min(place.left, RightOf(area) - place.width));
  place.top = std::max(area.top, std::min(place.top, BottomOf(area) - place.height));
  return place;
}

}  // namespace tellurvane

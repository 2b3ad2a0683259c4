// The geometry of the clock's analog face, and the digits of a number.
#pragma once

#include <vector>

#include "ui/Scale.h"

namespace tellurvane {

// Pixels, from the window's left upper corner.
struct FacePoint {
  int x = 0;
  int y = 0;

  bool operator==(const FacePoint&) const = default;
};

// The scale of the face and the digits. Deliberate: up to 120 dpi they have the pixels of 96 dpi.
constexpr Scale FaceScale(int dpi) { return {dpi <= 120 ? kDesignDensity : dpi}; }

// Pixels of the screen.
struct ClockFace {
  int centre = 0;  // x and y
  int radius = 0;

  bool operator==(const ClockFace&) const = default;
};
// Deliberate: at 120 dpi the centre is one pixel further right and down.
ClockFace FaceAt(int dpi);

// The point of a circle at an angle in degrees. 0 points right, and angles grow clockwise.
FacePoint OnCircle(int centre, double radius, int degrees);

// The dots of the minutes and the marks of the hours, from 0 to 360 degrees, both included.
std::vector<FacePoint> MinuteDots(const ClockFace& face);
std::vector<FacePoint> HourMarks(const ClockFace& face);

// The ends of the hands. Deliberate: the hour hand moves on the full hour only.
struct FaceHands {
  FacePoint hour;
  FacePoint minute;
  FacePoint second;

  bool operator==(const FaceHands&) const = default;
};
FaceHands HandsAt(const ClockFace& face, int hour, int minute, int second);

}  // namespace tellurvane

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

// How large the face and the digits are on a screen. Deliberate: at 120 dpi they still have the
// pixels of 96 dpi, and grow from there on.
constexpr Scale FaceScale(int dpi) { return {dpi <= 120 ? kDesignDensity : dpi}; }

// Pixels of the screen.
struct ClockFace {
  int centre = 0;  // both coordinates of the middle
  int radius = 0;

  bool operator==(const ClockFace&) const = default;
};
// Deliberate: at 120 dpi the middle stands a pixel further right and down than the scale says.
ClockFace FaceAt(int dpi);

// Where an angle meets a circle round the middle. Degrees; 0 points right, and they grow clockwise.
FacePoint OnCircle(int centre, double radius, int degrees);

// The dot of each minute, and the place of each hour's mark: from 0 degrees to 360, both named.
std::vector<FacePoint> MinuteDots(const ClockFace& face);
std::vector<FacePoint> HourMarks(const ClockFace& face);

// Where the hands end. Deliberate: the hour hand moves on the full hour only.
struct FaceHands {
  FacePoint hour;
  FacePoint minute;
  FacePoint second;

  bool operator==(const FaceHands&) const = default;
};
FaceHands HandsAt(const ClockFace& face, int hour, int minute, int second);

struct TwoDigits {
  int tens = 0;
  int units = 0;

  bool operator==(const TwoDigits&) const = default;
};
// Of 0 to 99.
TwoDigits DigitsOf(int value);

}  // namespace tellurvane

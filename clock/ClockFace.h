// The geometry of the clock's analog face, and the digits of a number.
#pragma once

#include <vector>

namespace tellurvane {

// Pixels, from the window's left upper corner.
struct FacePoint {
  int x = 0;
  int y = 0;

  bool operator==(const FacePoint&) const = default;
};

inline constexpr int kFaceRadius = 32;

// Both coordinates of the face's middle.
int FaceCentre(int twipsPerPixelY);

// Where an angle meets a circle round the middle. Degrees; 0 points right, and they grow clockwise.
FacePoint OnCircle(int centre, double radius, int degrees);

// The dot of each minute, and the place of each hour's mark: from 0 degrees to 360, both named.
std::vector<FacePoint> MinuteDots(int centre);
std::vector<FacePoint> HourMarks(int centre);

// Where the hands end. Deliberate: the hour hand moves on the full hour only.
struct FaceHands {
  FacePoint hour;
  FacePoint minute;
  FacePoint second;

  bool operator==(const FaceHands&) const = default;
};
FaceHands HandsAt(int centre, int hour, int minute, int second);

struct TwoDigits {
  int tens = 0;
  int units = 0;

  bool operator==(const TwoDigits&) const = default;
};
// Of 0 to 99.
TwoDigits DigitsOf(int value);

}  // namespace tellurvane

#include "clock/ClockFace.h"

#include <cmath>

namespace tellurvane {
namespace {

constexpr double kPi = 3.14159265;
constexpr int kLargeFontsTwips = 12;  // of a pixel, on a screen of 120 dpi
constexpr int kMinuteDegrees = 6;
constexpr int kHourDegrees = 30;
constexpr double kHourHandShare = 1.4;

std::vector<FacePoint> Around(int centre, int step) {
  std::vector<FacePoint> points;
  for (int degrees = 0; degrees <= 360; degrees += step) {
    points.push_back(OnCircle(centre, kFaceRadius, degrees));
  }
  return points;
}

}  // namespace

int FaceCentre(int twipsPerPixelY) {
  return kFaceRadius + (twipsPerPixelY == kLargeFontsTwips ? 5 : 4);
}

FacePoint OnCircle(int centre, double radius, int degrees) {
  const double angle = degrees * kPi / 180;
  return {static_cast<int>(std::lround(centre + radius * std::cos(angle))),
          static_cast<int>(std::lround(centre + radius * std::sin(angle)))};
}

std::vector<FacePoint> MinuteDots(int centre) { return Around(centre, kMinuteDegrees); }

std::vector<FacePoint> HourMarks(int centre) { return Around(centre, kHourDegrees); }

FaceHands HandsAt(int centre, int hour, int minute, int second) {
  return {OnCircle(centre, kFaceRadius / kHourHandShare, (hour - 3) * kHourDegrees),
          OnCircle(centre, kFaceRadius, (minute - 15) * kMinuteDegrees),
          OnCircle(centre, kFaceRadius, (second - 15) * kMinuteDegrees)};
}

TwoDigits DigitsOf(int value) {
  if (value < 10) return {0, value};
  return {value / 10, value % 10};
}

}  // namespace tellurvane

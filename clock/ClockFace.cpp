#include "clock/ClockFace.h"

#include <cmath>

namespace tellurvane {
namespace {

constexpr double kPi = 3.14159265;
constexpr int kRadius = 32;  // pixels of 96 dpi
constexpr int kCentre = 36;
constexpr int kLargeFontsDensity = 120;
constexpr int kMinuteDegrees = 6;
constexpr int kHourDegrees = 30;
constexpr double kHourHandShare = 1.4;

std::vector<FacePoint> Around(const ClockFace& face, int step) {
  std::vector<FacePoint> points;
  for (int degrees = 0; degrees <= 360; degrees += step) {
    points.push_back(OnCircle(face.centre, face.radius, degrees));
  }
  return points;
}

}  // namespace

ClockFace FaceAt(int dpi) {
  const Scale scale = FaceScale(dpi);
  const int shift = dpi == kLargeFontsDensity ? 1 : 0;
  return {scale.Scaled(kCentre) + shift, scale.Scaled(kRadius)};
}

FacePoint OnCircle(int centre, double radius, int degrees) {
  const double angle = degrees * kPi / 180;
  return {static_cast<int>(std::lround(centre + radius * std::cos(angle))),
          static_cast<int>(std::lround(centre + radius * std::sin(angle)))};
}

std::vector<FacePoint> MinuteDots(const ClockFace& face) { return Around(face, kMinuteDegrees); }

std::vector<FacePoint> HourMarks(const ClockFace& face) { return Around(face, kHourDegrees); }

FaceHands HandsAt(const ClockFace& face, int hour, int minute, int second) {
  return {OnCircle(face.centre, face.radius / kHourHandShare, (hour - 3) * kHourDegrees),
          OnCircle(face.centre, face.radius, (minute - 15) * kMinuteDegrees),
          OnCircle(face.centre, face.radius, (second - 15) * kMinuteDegrees)};
}

}  // namespace tellurvane

// A slider's value, and where its parts are in its picture.
#pragma once

#include <optional>
#include <string_view>

namespace tellurvane {

// The value stays within 0 to the maximum, the maximum at 1 or above.
class SliderModel {
 public:
  // One turn of the wheel or one arrow key, whatever the maximum is.
  static constexpr double kStep = 2;

  // One Page Up or Page Down key: a tenth of the whole, and no less than an arrow key.
  double Page() const;

  double Value() const { return value_; }
  // Takes the nearest allowed value. Not-a-number counts as 0.
  void Value(double value);

  double Max() const { return max_; }
  // A value above the new maximum comes down to it. Not-a-number counts as 1.
  void Max(double max);

  // How much of the way to the maximum the value has come, 0 to 1.
  double Fraction() const;

 private:
  double value_ = 0;
  double max_ = 1;
};

// Pixels from the host's left upper corner; right and bottom lie just outside.
struct SliderBox {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  bool IsEmpty() const { return right <= left || bottom <= top; }
  bool operator==(const SliderBox&) const = default;
};

// Screen pixels: the host's client area, the inset of the bar at its top and bottom, the margin.
struct SliderHost {
  int width = 0;
  int height = 0;
  int heightDelta = 0;
  int margin = 0;
};

// The framed box. It reaches from the host's left edge to `margin` before its right and lower
// edges; its upper edge is at `heightDelta - margin`.
SliderBox SliderTrack(const SliderHost& host);

// The filled part inside the track's frame.
SliderBox SliderFill(const SliderHost& host, double fraction);

// The value at a pixel column, in proportion to the host's whole width. The last column counts as
// the maximum, because the pointer cannot press further right. 0 where the host has no width.
double SliderValueAt(const SliderHost& host, int x, double max);

// How much of the way "37.5" or "37.5 %" is: 0 to 1. Nothing for other texts and below 0 or above
// 100.
std::optional<double> SliderFractionOf(std::wstring_view percentage);

}  // namespace tellurvane

// What a slider's value may be, and where in its picture which value lies.
#pragma once

namespace tellurvane {

// The value stays within 0 to the maximum, the maximum at 1 or above, whatever is asked for.
class SliderModel {
 public:
  // What one turn of the wheel or one arrow key moves, whatever the maximum is.
  static constexpr double kStep = 2;

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

// The one place that knows where a slider's parts are: painting and the mouse both ask here.
class SliderGeometry {
 public:
  // The host's client area, by how much the bar is inset at its top and bottom, and the margin. All
  // in pixels of the screen.
  SliderGeometry(int width, int height, int heightDelta, int margin)
      : width_(width), height_(height), heightDelta_(heightDelta), margin_(margin) {}

  // The framed box. It ends a margin short of the client area on the right and at the bottom, and
  // begins a margin above the inset: an inset of one margin puts its upper edge on the host's.
  SliderBox Track() const;

  // The part of the track's inside that is filled.
  SliderBox Fill(double fraction) const;

  // The value that a pixel column stands for: in proportion to the host's whole width. Columns
  // outside stand for the nearest end, and so does the last one inside for the maximum: it is as
  // far right as the pointer can press. 0 where the host has no width.
  double ValueAt(int x, double max) const;

 private:
  int width_;
  int height_;
  int heightDelta_;
  int margin_;
};

}  // namespace tellurvane

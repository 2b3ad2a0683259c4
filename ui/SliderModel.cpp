#include "ui/SliderModel.h"

#include <algorithm>
#include <cmath>

namespace tellurvane {
namespace {

constexpr double kSmallestMax = 1;
constexpr int kFrame = 1;

}  // namespace

void SliderModel::Value(double value) {
  value_ = std::isnan(value) ? 0 : std::clamp(value, 0.0, max_);
}

void SliderModel::Max(double max) {
  // In this order not-a-number loses the comparison.
  max_ = std::max(kSmallestMax, max);
  value_ = std::min(value_, max_);
}

double SliderModel::Fraction() const {
  if (value_ >= max_) return 1;
  return value_ / max_;
}

SliderBox SliderGeometry::Track() const {
  const int top = heightDelta_ - margin_;
  // The height is the inset area's lower edge, counted from a top that lies higher: the box ends a
  // margin above the host's lower edge, however deep the inset.
  return {0, top, width_ - margin_, top + height_ - heightDelta_};
}

SliderBox SliderGeometry::Fill(double fraction) const {
  const SliderBox track = Track();
  SliderBox fill = {track.left + kFrame, track.top + kFrame, track.right - kFrame,
                    track.bottom - kFrame};
  const int inside = std::max(fill.right - fill.left, 0);
  fill.right = fill.left + static_cast<int>(std::lround(inside * std::clamp(fraction, 0.0, 1.0)));
  return fill;
}

double SliderGeometry::ValueAt(int x, double max) const {
  if (width_ <= 0 || x <= 0) return 0;
  if (x >= width_ - 1) return max;
  return x * max / width_;
}

}  // namespace tellurvane

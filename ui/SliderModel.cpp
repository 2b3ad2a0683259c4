#include "ui/SliderModel.h"

#include <algorithm>
#include <cmath>

#include "base/Number.h"

namespace tellurvane {
namespace {

constexpr double kSmallestMax = 1;
constexpr int kFrame = 1;

}  // namespace

void SliderModel::Value(double value) {
  value_ = std::isnan(value) ? 0 : std::clamp(value, 0.0, max_);
}

void SliderModel::Max(double max) {
  // In this order not-a-number gives the smallest maximum.
  max_ = std::max(kSmallestMax, max);
  value_ = std::min(value_, max_);
}

double SliderModel::Page() const { return std::max(kStep, max_ / 10); }

double SliderModel::Fraction() const {
  if (value_ >= max_) return 1;
  return value_ / max_;
}

SliderBox SliderTrack(const SliderHost& host) {
  return {0, host.heightDelta - host.margin, host.width - host.margin, host.height - host.margin};
}

SliderBox SliderFill(const SliderHost& host, double fraction) {
  const SliderBox track = SliderTrack(host);
  SliderBox fill = {track.left + kFrame, track.top + kFrame, track.right - kFrame,
                    track.bottom - kFrame};
  const int inside = std::max(fill.right - fill.left, 0);
  fill.right = fill.left + static_cast<int>(std::lround(inside * std::clamp(fraction, 0.0, 1.0)));
  return fill;
}

double SliderValueAt(const SliderHost& host, int x, double max) {
  if (host.width <= 0 || x <= 0) return 0;
  if (x >= host.width - 1) return max;
  return x * max / host.width;
}

std::optional<double> SliderFractionOf(std::wstring_view percentage) {
  constexpr double kWhole = 100;
  const std::optional<double> number = ParseNumber(percentage.substr(0, percentage.find(L'%')));
  if (!number || *number < 0 || *number > kWhole) return std::nullopt;
  return *number / kWhole;
}

}  // namespace tellurvane

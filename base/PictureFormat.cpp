#include "base/PictureFormat.h"

#include <array>
#include <cmath>
#include <cwchar>

namespace tellurvane {
namespace {

constexpr int kHoursPerHalf = 12;

std::wstring Padded(int number, int digits) {
  std::array<wchar_t, 16> text = {};
  (void)std::swprintf(text.data(), text.size(), L"%0*d", digits, number);
  return text.data();
}

int HourOnDial(int hour) {
  const int onDial = hour % kHoursPerHalf;
  return onDial == 0 ? kHoursPerHalf : onDial;
}

// One part of a picture, and what becomes of it.
class Parts {
 public:
  Parts(std::wstring_view picture, DateSerial moment, const DayHalves& halves)
      : civil_(CivilFromSerial(moment)),
        hasHalf_(picture.find(L"AMPM") != std::wstring_view::npos),
        half_(civil_.hour < kHoursPerHalf ? halves.morning : halves.afternoon) {}

  // Formats the first part of the pattern `rest` and removes it from `rest`.
  std::wstring Next(std::wstring_view& rest) {
    if (Take(rest, L"yyyy")) return Padded(civil_.year, 4);
    if (Take(rest, L"dd")) return Padded(civil_.day, 2);
    if (Take(rest, L"ss")) return Padded(civil_.second, 2);
    if (Take(rest, L"AMPM")) return half_;
    if (Take(rest, L"hh")) {
      isAfterHours_ = true;
      return Padded(hasHalf_ ? HourOnDial(civil_.hour) : civil_.hour, 2);
    }
    if (Take(rest, L"mm")) {
      const bool isMinute = isAfterHours_;
      isAfterHours_ = false;
      return Padded(isMinute ? civil_.minute : civil_.month, 2);
    }
    std::wstring literal(rest.substr(0, 1));
    rest.remove_prefix(1);
    return literal;
  }

 private:
  static bool Take(std::wstring_view& rest, std::wstring_view part) {
    if (!rest.starts_with(part)) return false;
    rest.remove_prefix(part.size());
    return true;
  }

  CivilDateTime civil_;
  bool hasHalf_;
  const std::wstring& half_;
  bool isAfterHours_ = false;
};

}  // namespace

std::wstring FormatMoment(std::wstring_view picture, DateSerial moment, const DayHalves& halves) {
  Parts parts(picture, moment, halves);
  std::wstring text;
  while (!picture.empty()) text += parts.Next(picture);
  return text;
}

std::wstring FormatPercent(double quotient, int decimals) {
  if (!std::isfinite(quotient)) quotient = 0;
  const double scale = std::pow(10.0, decimals);
  // A little more than the binary fraction holds, so that 0.125, written 12.5 in decimal, counts as
  // the half that it is meant to be.
  const double scaled = quotient * 100 * scale;
  const double rounded = std::round(scaled + std::copysign(std::abs(scaled) * 1e-12, scaled));
  std::array<wchar_t, 400> text = {};
  // The 0 takes the sign off a negative zero.
  (void)std::swprintf(text.data(), text.size(), L"%.*f %%", decimals, rounded / scale + 0.0);
  return text.data();
}

}  // namespace tellurvane

#include "base/Number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

#include "base/Text.h"

namespace tellurvane {
namespace {

// Nobody writes a longer number.
constexpr size_t kLongestNumber = 64;

}  // namespace

std::optional<double> ParseNumber(std::wstring_view text) {
  std::wstring_view number = TrimBlanks(text);
  if (number.starts_with(L'+')) {
    number.remove_prefix(1);
    // from_chars takes no plus, but it would take the minus of "+-1".
    if (number.starts_with(L'-')) return std::nullopt;
  }
  const auto isAscii = [](wchar_t unit) { return unit < 0x80; };
  if (number.size() > kLongestNumber || !std::ranges::all_of(number, isAscii)) return std::nullopt;
  const std::string ascii(number.begin(), number.end());
  const char* const end = ascii.data() + ascii.size();
  double value = 0;
  const auto [stopped, error] = std::from_chars(ascii.data(), end, value);
  // from_chars reads "inf" and "nan" too.
  if (error != std::errc{} || stopped != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<std::int32_t> ParseInteger(std::wstring_view text) {
  const auto number = ParseNumber(text);
  if (!number) return std::nullopt;
  const double rounded = RoundHalfToEven(*number);
  if (rounded < std::numeric_limits<std::int32_t>::min() ||
      rounded > std::numeric_limits<std::int32_t>::max()) {
    return std::nullopt;
  }
  return static_cast<std::int32_t>(rounded);
}

void AppendInteger(std::wstring& text, std::int32_t value) {
  char digits[std::numeric_limits<std::int32_t>::digits10 + 2] = {};
  text.append(digits, std::to_chars(std::begin(digits), std::end(digits), value).ptr);
}

std::optional<bool> ParseBoolean(std::wstring_view text) {
  const std::wstring_view trimmed = TrimBlanks(text);
  if (EqualsIgnoringAsciiCase(trimmed, L"true")) return true;
  if (EqualsIgnoringAsciiCase(trimmed, L"false")) return false;
  const auto number = ParseNumber(trimmed);
  if (!number) return std::nullopt;
  return *number != 0;
}

double RoundHalfToEven(double value) {
  const double floor = std::floor(value);
  const double fraction = value - floor;
  if (fraction < 0.5) return floor;
  if (fraction > 0.5) return floor + 1;
  return std::fmod(floor, 2.0) == 0 ? floor : floor + 1;
}

}  // namespace tellurvane

#include "base/Number.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/Text.h"

namespace tellurvane {
namespace {

// Longer texts are no number that anybody writes; the bound keeps the copy below on the stack.
constexpr size_t kLongestNumber = 64;

// The common case on every line of the task list: a few plain digits.
std::optional<std::int32_t> ParsePlainDigits(std::wstring_view text) {
  if (text.empty() || text.size() > 9) return std::nullopt;
  std::int32_t value = 0;
  for (const wchar_t unit : text) {
    if (unit < L'0' || unit > L'9') return std::nullopt;
    value = value * 10 + static_cast<std::int32_t>(unit - L'0');
  }
  return value;
}

}  // namespace

std::optional<double> ParseNumber(std::wstring_view text) {
  std::wstring_view trimmed = TrimBlanks(text);
  if (!trimmed.empty() && trimmed.front() == L'+') {
    trimmed.remove_prefix(1);
    // from_chars would take the minus of "+-1".
    if (!trimmed.empty() && trimmed.front() == L'-') return std::nullopt;
  }
  if (trimmed.empty() || trimmed.size() > kLongestNumber) return std::nullopt;

  char ascii[kLongestNumber] = {};
  for (size_t i = 0; i < trimmed.size(); ++i) {
    const wchar_t unit = trimmed[i];
    const bool isPart = IsDigit(unit) || unit == L'.' || unit == L'-' || unit == L'+' ||
                        unit == L'e' || unit == L'E';
    // Keeps "inf", "nan" and hexadecimal floats out, which from_chars would read.
    if (!isPart) return std::nullopt;
    ascii[i] = static_cast<char>(unit);
  }
  double value = 0;
  const char* const end = ascii + trimmed.size();
  const auto [stopped, error] = std::from_chars(ascii, end, value);
  if (error != std::errc{} || stopped != end) return std::nullopt;
  return value;
}

std::optional<std::int32_t> ParseInteger(std::wstring_view text) {
  const std::wstring_view trimmed = TrimBlanks(text);
  if (const auto plain = ParsePlainDigits(trimmed)) return plain;
  const auto number = ParseNumber(trimmed);
  if (!number) return std::nullopt;
  const double rounded = RoundHalfToEven(*number);
  if (rounded < std::numeric_limits<std::int32_t>::min() ||
      rounded > std::numeric_limits<std::int32_t>::max()) {
    return std::nullopt;
  }
  return static_cast<std::int32_t>(rounded);
}

// By hand: std::to_wstring goes through printf, and a save writes three numbers for each task.
void AppendInteger(std::wstring& text, std::int32_t value) {
  std::array<wchar_t, std::numeric_limits<std::int32_t>::digits10 + 2> buffer = {};
  std::int64_t rest = value < 0 ? -std::int64_t{value} : value;
  wchar_t* const end = buffer.data() + buffer.size();
  wchar_t* first = end;
  do {
    *--first = static_cast<wchar_t>(L'0' + rest % 10);
    rest /= 10;
  } while (rest > 0);
  if (value < 0) *--first = L'-';
  text.append(first, end);
}

std::optional<bool> ParseBoolean(std::wstring_view text) {
  const std::wstring_view trimmed = TrimBlanks(text);
  if (const auto plain = ParsePlainDigits(trimmed)) return *plain != 0;
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

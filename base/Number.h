// Text to number, as strict as the platform's own conversions: the whole text has to be a number.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tellurvane {

// A finite decimal number: blanks around it, a sign, digits with a point, an exponent. Nothing for
// "", "abc", thousands separators and currency signs: the program does not write them.
std::optional<double> ParseNumber(std::wstring_view text);

// The same rounded to a whole number, halves to even: "2.5" is 2, "3.5" is 4. Nothing outside 32
// bits.
std::optional<std::int32_t> ParseInteger(std::wstring_view text);

// Appends the number in decimal.
void AppendInteger(std::wstring& text, std::int32_t value);

// "True" and "False" in any case; a number is true unless it is 0.
std::optional<bool> ParseBoolean(std::wstring_view text);

// The nearest whole number, halves to even.
double RoundHalfToEven(double value);

}  // namespace tellurvane

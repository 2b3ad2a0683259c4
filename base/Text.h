// Small helpers for texts. Texts are UTF-16 code units, on the host too, where wchar_t is wider.
#pragma once

#include <string>
#include <string_view>

namespace tellurvane {

constexpr bool IsDigit(wchar_t unit) { return unit >= L'0' && unit <= L'9'; }
// Small ASCII letters for capitals; everything else as it is.
constexpr wchar_t AsciiLowered(wchar_t unit) {
  return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit - L'A' + L'a') : unit;
}
std::wstring AsciiLoweredText(std::wstring_view text);

// Without the blanks (U+0020 only) at both ends.
std::wstring_view TrimBlanks(std::wstring_view text);

// The decimal digits that the text begins with.
std::wstring_view DigitsAtFront(std::wstring_view text);

// Takes everything up to the separator off the front of `rest` and returns it; the separator goes
// too. Without a separator the whole rest is taken, and `rest` becomes empty.
std::wstring_view TakeField(std::wstring_view& rest, wchar_t separator);

// Replaces every occurrence from left to right. Replacements are not searched again.
std::wstring Replaced(std::wstring_view text, std::wstring_view from, std::wstring_view to);

// Compares without regard to the case of ASCII letters.
bool EqualsIgnoringAsciiCase(std::wstring_view left, std::wstring_view right);

}  // namespace tellurvane

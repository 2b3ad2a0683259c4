#include "base/Text.h"

#include <algorithm>

namespace tellurvane {

std::wstring AsciiLoweredText(std::wstring_view text) {
  std::wstring lowered(text);
  for (wchar_t& unit : lowered) unit = AsciiLowered(unit);
  return lowered;
}

std::wstring_view TrimBlanks(std::wstring_view text) {
  const size_t first = text.find_first_not_of(L' ');
  if (first == std::wstring_view::npos) return {};
  return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

std::wstring_view DigitsAtFront(std::wstring_view text) {
  return text.substr(0, text.find_first_not_of(L"0123456789"));
}

std::wstring_view TakeField(std::wstring_view& rest, wchar_t separator) {
  const size_t end = rest.find(separator);
  const std::wstring_view field = rest.substr(0, end);
  rest.remove_prefix(end == std::wstring_view::npos ? rest.size() : end + 1);
  return field;
}

bool EqualsIgnoringAsciiCase(std::wstring_view left, std::wstring_view right) {
  return std::ranges::equal(left, right, {}, AsciiLowered, AsciiLowered);
}

std::wstring Replaced(std::wstring_view text, std::wstring_view from, std::wstring_view to) {
  std::wstring replaced;
  replaced.reserve(text.size());
  size_t at = 0;
  for (;;) {
    const size_t found = text.find(from, at);
    replaced += text.substr(at, found - at);
    if (found == std::wstring_view::npos) return replaced;
    replaced += to;
    at = found + from.size();
  }
}

}  // namespace tellurvane

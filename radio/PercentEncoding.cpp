#include "radio/PercentEncoding.h"

#include <cstdint>

#include "base/Text.h"

namespace tellurvane {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

// wchar_t is signed and wider on the host.
constexpr std::uint32_t ValueOf(wchar_t unit) { return static_cast<std::uint16_t>(unit); }
constexpr bool IsHighSurrogate(std::uint32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(std::uint32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Takes one character off the front.
std::uint32_t TakeCharacter(std::wstring_view& rest) {
  const std::uint32_t first = ValueOf(rest.front());
  rest.remove_prefix(1);
  if (IsLowSurrogate(first)) return kReplacement;
  if (!IsHighSurrogate(first)) return first;
  const std::uint32_t second = rest.empty() ? 0 : ValueOf(rest.front());
  if (!IsLowSurrogate(second)) return kReplacement;
  rest.remove_prefix(1);
  return 0x10000 + ((first - 0xD800) << 10U) + (second - 0xDC00);
}

void AppendByte(std::wstring& address, std::uint32_t byte) {
  constexpr std::wstring_view kDigits = L"0123456789ABCDEF";
  constexpr std::wstring_view kMarks = L"-._~";
  const auto unit = static_cast<wchar_t>(byte);
  const wchar_t small = AsciiLowered(unit);
  if ((small >= L'a' && small <= L'z') || IsDigit(unit) ||
      kMarks.find(unit) != std::wstring_view::npos) {
    address += unit;
    return;
  }
  address += L'%';
  address += kDigits[byte >> 4U];
  address += kDigits[byte & 0xFU];
}

void AppendCharacter(std::wstring& address, std::uint32_t character) {
  const auto appendLater = [&](unsigned shift) {
    AppendByte(address, 0x80U | ((character >> shift) & 0x3FU));
  };
  if (character < 0x80) {
    AppendByte(address, character);
  } else if (character < 0x800) {
    AppendByte(address, 0xC0U | (character >> 6U));
    appendLater(0);
  } else if (character < 0x10000) {
    AppendByte(address, 0xE0U | (character >> 12U));
    appendLater(6);
    appendLater(0);
  } else {
    AppendByte(address, 0xF0U | (character >> 18U));
    appendLater(12);
    appendLater(6);
    appendLater(0);
  }
}

}  // namespace

std::wstring PercentEncoded(std::wstring_view text) {
  std::wstring address;
  while (!text.empty()) AppendCharacter(address, TakeCharacter(text));
  return address;
}

}  // namespace tellurvane

// The bytes of a text file as the program writes it.
#pragma once

#include <string>
#include <string_view>

namespace tellurvane {

// UTF-16 little-endian, the mark included.
inline std::string Utf16Bytes(std::wstring_view text) {
  std::string bytes("\xFF\xFE", 2);
  for (const wchar_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>((unit >> 8) & 0xFF);
  }
  return bytes;
}

}  // namespace tellurvane

// Text as the helper programs of the tests write it.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace tellurvane {

inline std::string Utf8(std::wstring_view text) {
  const int units = static_cast<int>(text.size());
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), units, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

}  // namespace tellurvane

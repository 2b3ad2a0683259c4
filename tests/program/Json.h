// What the helper programs print for the whole-program tests to read.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

// A text as JSON, in ASCII.
inline std::string Json(std::wstring_view text) {
  std::string json = "\"";
  for (const wchar_t unit : text) {
    if (unit >= 0x20 && unit < 0x7F && unit != L'"' && unit != L'\\') {
      json += static_cast<char>(unit);
    } else {
      char escaped[8] = {};
      std::snprintf(escaped, sizeof(escaped), "\\u%04x", static_cast<unsigned>(unit));
      json += escaped;
    }
  }
  return json + "\"";
}

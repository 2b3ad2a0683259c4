#include "scheduler/DecodeAnsi.h"

#include <windows.h>

#include <algorithm>
#include <string>
#include <utility>

#include "base/CodePage.h"

namespace tellurvane {

DecodedText DecodeAnsi(std::string_view bytes) { return DecodeFromCodePage(bytes, GetACP()); }

DecodedText DecodeFromCodePage(std::string_view bytes, unsigned codePage) {
  // Some editors mark UTF-8. No list in a code page begins like this.
  constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
  const bool isMarked = bytes.starts_with(kUtf8Mark);
  if (isMarked) bytes.remove_prefix(kUtf8Mark.size());
  const auto isAscii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
  const bool isPlain = std::all_of(bytes.begin(), bytes.end(), isAscii);
  if (isPlain) return {std::wstring(bytes.begin(), bytes.end())};

  auto utf8 = FromCodePage(CP_UTF8, bytes);
  if (utf8 && (isMarked || codePage == CP_UTF8)) return {*std::move(utf8)};
  if (auto ansi = FromCodePage(codePage, bytes)) {
    return {*std::move(ansi), isMarked || utf8.has_value()};
  }
  if (utf8) return {*std::move(utf8)};
  return {FromCodePage(codePage, bytes, Strictness::kAnyBytes).value_or(L""), true};
}

}  // namespace tellurvane

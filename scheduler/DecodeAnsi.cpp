#include "scheduler/DecodeAnsi.h"

#include <windows.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace tellurvane {
namespace {

// Nothing when the bytes are not valid in the code page.
std::optional<std::wstring> Decode(UINT codePage, DWORD flags, std::string_view bytes) {
  const int size = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(codePage, flags, bytes.data(), size, nullptr, 0);
  if (length <= 0) return std::nullopt;
  std::wstring text(static_cast<size_t>(length), L'\0');
  MultiByteToWideChar(codePage, flags, bytes.data(), size, text.data(), length);
  return text;
}

}  // namespace

DecodedText DecodeAnsi(std::string_view bytes) { return DecodeFromCodePage(bytes, GetACP()); }

DecodedText DecodeFromCodePage(std::string_view bytes, unsigned codePage) {
  // Some editors mark UTF-8. No list in a code page begins like this.
  constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
  const bool isMarked = bytes.starts_with(kUtf8Mark);
  if (isMarked) bytes.remove_prefix(kUtf8Mark.size());
  const auto isAscii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
  const bool isPlain = std::all_of(bytes.begin(), bytes.end(), isAscii);
  if (isPlain) return {std::wstring(bytes.begin(), bytes.end())};

  auto utf8 = Decode(CP_UTF8, MB_ERR_INVALID_CHARS, bytes);
  if (utf8 && (isMarked || codePage == CP_UTF8)) return {*std::move(utf8)};
  if (auto ansi = Decode(codePage, MB_ERR_INVALID_CHARS, bytes)) {
    return {*std::move(ansi), isMarked || utf8.has_value()};
  }
  if (utf8) return {*std::move(utf8)};
  return {Decode(codePage, 0, bytes).value_or(L""), true};
}

}  // namespace tellurvane

#include "base/CodePage.h"

#include <windows.h>

namespace tellurvane {

std::optional<std::wstring> FromCodePage(unsigned codePage, std::string_view bytes,
                                         Strictness strictness) {
  if (bytes.empty()) return L"";
  const DWORD flags = strictness == Strictness::kValidOnly ? MB_ERR_INVALID_CHARS : 0;
  const int size = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(codePage, flags, bytes.data(), size, nullptr, 0);
  if (length <= 0) return std::nullopt;
  std::wstring text(static_cast<size_t>(length), L'\0');
  MultiByteToWideChar(codePage, flags, bytes.data(), size, text.data(), length);
  return text;
}

std::string Utf8(std::wstring_view text) {
  const int units = static_cast<int>(text.size());
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), units, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

}  // namespace tellurvane

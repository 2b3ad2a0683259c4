#include "base/PlatformText.h"

#include <windows.h>

#include <array>

#include "base/Text.h"

namespace tellurvane {

bool EqualsIgnoringCase(std::wstring_view left, std::wstring_view right) {
  return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                              static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

std::wstring Capitals(std::wstring_view text) {
  std::wstring capitals(text);
  const auto size = static_cast<int>(text.size());
  (void)LCMapStringW(LOCALE_INVARIANT, LCMAP_UPPERCASE, text.data(), size, capitals.data(), size);
  return capitals;
}

std::wstring SystemErrorText(unsigned long error, std::wstring_view subject) {
  std::array<wchar_t, 512> text = {};
  // Without its own replacement of inserts: a text may have more of them than there are subjects.
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                     text.data(), static_cast<DWORD>(text.size()), nullptr);
  std::wstring_view words(text.data(), length);
  while (!words.empty() &&
         (words.back() == L'\r' || words.back() == L'\n' || words.back() == L' ')) {
    words.remove_suffix(1);
  }
  return Replaced(words, L"%1", subject);
}

}  // namespace tellurvane

#include "base/PlatformText.h"

#include <windows.h>

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

}  // namespace tellurvane

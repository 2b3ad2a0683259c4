#include "bench/ScalarPass.h"

namespace tellurvane {

// Built without the compiler's vectors, so that it takes one character after the other.
MarkCounts ScalarPass(std::wstring_view text) {
  MarkCounts counts;
  for (const wchar_t unit : text) {
    counts.ampersands += static_cast<size_t>(unit == L'&');
    counts.lessThan += static_cast<size_t>(unit == L'<');
    counts.greaterThan += static_cast<size_t>(unit == L'>');
    counts.quotes += static_cast<size_t>(unit == L'"');
  }
  return counts;
}

}  // namespace tellurvane

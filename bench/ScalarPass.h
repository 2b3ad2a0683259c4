// What the radio rules are measured against.
#pragma once

#include <cstddef>
#include <string_view>

namespace tellurvane {

struct MarkCounts {
  size_t ampersands = 0;
  size_t lessThan = 0;
  size_t greaterThan = 0;
  size_t quotes = 0;
};

// Looks at each character once, by itself, and counts four of them apart.
MarkCounts ScalarPass(std::wstring_view text);

}  // namespace tellurvane

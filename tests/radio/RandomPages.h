// How many random pages a comparison looks at.
#pragma once

#include <cstdlib>

namespace tellurvane {

// The usual number, times what the environment variable TELLURVANE_PAGE_FACTOR asks for.
inline int RandomPages(int usual) {
  const char* const factor = std::getenv("TELLURVANE_PAGE_FACTOR");
  return factor == nullptr ? usual : usual * std::atoi(factor);
}

}  // namespace tellurvane

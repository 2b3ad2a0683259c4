// Any bytes as the page of each of the five rules of the radio directories, held against its
// literal twin.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "tests/radio/RuleDifference.h"

namespace {

// The literal rules take their time.
constexpr size_t kLongestPage = 600;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  const std::wstring page =
      tellurvane::PageOfSeed({reinterpret_cast<const char*>(data), std::min(size, kLongestPage)});
  for (const tellurvane::Rule difference : tellurvane::kAllRules) {
    const std::string fault = difference(page);
    if (fault.empty()) continue;
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
  }
  return 0;
}

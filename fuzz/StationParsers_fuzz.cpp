// Any bytes as a page for each of the five rules of the radio directories, which are compared with
// the literal ones.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "tests/radio/RuleDifference.h"

namespace {

// The literal rules are slow.
constexpr size_t kLongestPage = 600;

constexpr tellurvane::Rule kRules[] = {
    tellurvane::DecodingDifference, tellurvane::ShoutcastDifference, tellurvane::IcecastDifference,
    tellurvane::LiveDoorDifference, tellurvane::HinetDifference};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  const std::wstring page =
      tellurvane::PageOfSeed({reinterpret_cast<const char*>(data), std::min(size, kLongestPage)});
  for (const tellurvane::Rule difference : kRules) {
    const std::string fault = difference(page);
    if (fault.empty()) continue;
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
  }
  return 0;
}

// Any bytes as a result file, as the texts of tests, and as what a test program printed.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "tests/support/TestResultsFault.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  const std::string fault =
      tellurvane::TestResultsFault({reinterpret_cast<const char*>(data), size});
  if (fault.empty()) return 0;
  std::fprintf(stderr, "%s\n", fault.c_str());
  std::abort();
}

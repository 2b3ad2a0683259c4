// Any bytes as icon data: the directory is parsed and every image looked at.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "tests/support/IconDirectoryFault.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  const std::string fault =
      tellurvane::IconDirectoryFault({reinterpret_cast<const char*>(data), size});
  if (fault.empty()) return 0;
  std::fprintf(stderr, "%s\n", fault.c_str());
  std::abort();
}

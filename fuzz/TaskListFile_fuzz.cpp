// Any bytes as a task list file: read, written, read again.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "tests/support/TaskListRoundTrip.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  using namespace tellurvane;
  const std::string bytes(data, data + size);
  for (const HostLocale* locale : {&ZhTw(), &EnUs()}) {
    const std::string fault = TaskListRoundTripFault(bytes, *locale);
    if (fault.empty()) continue;
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
  }
  return 0;
}

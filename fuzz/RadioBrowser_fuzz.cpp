// Any text as what Radio Browser is asked for, as its answer's text, and as the attributes of its
// stations.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/radio/BrowserRules.h"

namespace {

using Rule = std::string (*)(const std::wstring& text);

constexpr Rule kRules[] = {tellurvane::EncodingFault, tellurvane::RowsFault, tellurvane::BodyFault};

// Two bytes are one unit when the first is 0x80 or more: Chinese, the byte order mark and halves of
// surrogate pairs too.
std::wstring TextOf(const std::uint8_t* data, size_t size) {
  std::wstring text;
  for (size_t i = 0; i < size; ++i) {
    const bool isPair = data[i] >= 0x80 && i + 1 < size;
    const unsigned unit = isPair ? data[i] * 0x100U + data[i + 1] : data[i];
    text += static_cast<wchar_t>(unit);
    if (isPair) ++i;
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  const std::wstring text = TextOf(data, size);
  for (const Rule fault : kRules) {
    const std::string found = fault(text);
    if (found.empty()) continue;
    std::fprintf(stderr, "%s\n", found.c_str());
    std::abort();
  }
  return 0;
}

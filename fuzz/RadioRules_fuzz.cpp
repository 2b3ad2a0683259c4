// The five rules of the radio directories, each against its literal twin. The first byte chooses
// the rule; the rest is the page, in UTF-8 as it comes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "radio/ReplaceHTML.h"
#include "radio/StationParsers.h"
#include "tests/radio/LiteralRules.h"

namespace tellurvane {
namespace {

// The literal rules take their time.
constexpr size_t kLongestPage = 600;

// Bytes as they are; the two that a rule's markers need as Chinese are put in by hand.
std::wstring PageOf(const std::uint8_t* data, size_t size) {
  std::wstring page;
  for (size_t i = 0; i < size && page.size() < kLongestPage; ++i) {
    page += data[i] == 0x01   ? L'細'
            : data[i] == 0x02 ? L'大'
            : data[i] == 0x03 ? L'愛'
                              : static_cast<wchar_t>(data[i]);
  }
  return page;
}

void Require(bool isEqual) {
  if (!isEqual) std::abort();
}

void CompareHinet(const std::wstring& page) {
  const StationSearch fast = GetHinet(page, L"p");
  const StationSearch slow = literal::GetHinet(page, L"p");
  Require(fast.rows == slow.rows && fast.isWhole == slow.isWhole);
}

}  // namespace
}  // namespace tellurvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  using namespace tellurvane;
  if (size == 0) return 0;
  const std::wstring page = PageOf(data + 1, size - 1);
  switch (data[0] % 5) {
    case 0:
      Require(ReplaceHTML(page) == literal::ReplaceHTML(page));
      break;
    case 1:
      Require(GetShoutcast(page) == literal::GetShoutcast(page));
      break;
    case 2:
      Require(GetIcecast(page) == literal::GetIcecast(page));
      break;
    case 3:
      Require(GetLiveDoor(page) == literal::GetLiveDoor(page));
      break;
    default:
      CompareHinet(page);
      break;
  }
  return 0;
}

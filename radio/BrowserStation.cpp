#include "radio/BrowserStation.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

#include "base/Number.h"
#include "base/Text.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kNoName = L"（沒有名稱）";

// Control characters and the line ends of Unicode.
bool MayBreakLine(wchar_t unit) {
  return unit < L' ' || (unit >= L'\x7F' && unit <= L'\x9F') || unit == L'\x2028' ||
         unit == L'\x2029';
}

std::wstring OneLine(std::wstring text) {
  std::ranges::replace_if(text, MayBreakLine, L' ');
  return std::wstring(TrimBlanks(text));
}

std::wstring BitRateOf(const BrowserStation& station) {
  const auto number = ParseInteger(station.bitRate).value_or(0);
  return number > 0 ? std::to_wstring(number) + L" kbps" : kUnknownBitRate;
}

// Without blanks and line ends around it.
std::wstring_view Trimmed(std::wstring_view text) {
  const auto isBlank = [](wchar_t unit) { return unit == L' ' || MayBreakLine(unit); };
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

// Empty when there is none.
std::wstring UsableUrlOf(const BrowserStation& station, const IsUsableAddress& isUsable) {
  for (const std::wstring* const url : {&station.resolvedUrl, &station.url}) {
    std::wstring address(Trimmed(*url));
    if (!address.empty() && std::ranges::none_of(address, MayBreakLine) && isUsable(address)) {
      return address;
    }
  }
  return {};
}

StationRow RowOf(const StationTexts& texts) {
  return {std::wstring(texts.name), std::wstring(texts.type), std::wstring(texts.bitRate),
          std::wstring(texts.url),  kUnknownListeners,        L""};
}

}  // namespace

StationRows RowsOf(const std::vector<BrowserStation>& stations, const IsUsableAddress& isUsable) {
  const auto listed = std::make_shared<std::vector<StationRow>>();
  for (const BrowserStation& station : stations) {
    if (station.hls == L"1") continue;
    std::wstring url = UsableUrlOf(station, isUsable);
    if (url.empty()) continue;
    const std::wstring name = OneLine(station.name);
    listed->push_back({.name = name.empty() ? kNoName : name,
                       .type = OneLine(station.codec),
                       .bitRate = BitRateOf(station),
                       .url = std::move(url)});
  }
  // The function keeps the texts that the rows refer to.
  StationRows rows({}, [listed](const StationTexts& texts) { return RowOf(texts); });
  for (const StationRow& row : *listed) {
    StationTexts texts;
    texts.name = row.name;
    texts.type = row.type;
    texts.bitRate = row.bitRate;
    texts.url = row.url;
    rows.Append(texts);
  }
  return rows;
}

}  // namespace tellurvane

#include "radio/BrowserStation.h"

#include <algorithm>
#include <array>
#include <set>
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

// Empty when there is none.
std::wstring UsableUrlOf(const BrowserStation& station, const IsUsableAddress& isUsable) {
  for (const std::wstring* const url : {&station.resolvedUrl, &station.url}) {
    std::wstring address = OneLine(*url);
    if (!address.empty() && isUsable(address)) return address;
  }
  return {};
}

StationRow RowOf(const StationTexts& texts) {
  return {std::wstring(texts.name), std::wstring(texts.type), std::wstring(texts.bitRate),
          std::wstring(texts.url),  kUnknownListeners,        L""};
}

// The texts of the rows one after another, and their sizes: name, type, bit rate, address.
struct JoinedRows {
  std::wstring page = {};
  std::vector<std::array<size_t, 4>> sizes = {};

  size_t Append(const std::wstring& text) {
    page += text;
    return text.size();
  }
};

StationRows Parted(JoinedRows joined) {
  StationRows rows(std::move(joined.page), RowOf);
  std::wstring_view rest = rows.Page();
  const auto take = [&rest](size_t size) {
    const std::wstring_view taken = rest.substr(0, size);
    rest.remove_prefix(size);
    return taken;
  };
  for (const auto& [name, type, bitRate, url] : joined.sizes) {
    StationTexts texts;
    texts.name = take(name);
    texts.type = take(type);
    texts.bitRate = take(bitRate);
    texts.url = take(url);
    rows.Append(texts);
  }
  return rows;
}

}  // namespace

StationRows RowsOf(const std::vector<BrowserStation>& stations, const IsUsableAddress& isUsable) {
  JoinedRows rows;
  std::set<std::wstring> known;
  for (const BrowserStation& station : stations) {
    if (station.hls == L"1") continue;
    const std::wstring url = UsableUrlOf(station, isUsable);
    if (url.empty() || !known.insert(url).second) continue;
    const std::wstring name = OneLine(station.name);
    rows.sizes.push_back({rows.Append(name.empty() ? kNoName : name),
                          rows.Append(OneLine(station.codec)), rows.Append(BitRateOf(station)),
                          rows.Append(url)});
  }
  return Parted(std::move(rows));
}

}  // namespace tellurvane

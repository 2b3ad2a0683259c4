#include "radio/BrowserStation.h"

#include <algorithm>
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

std::wstring UrlOf(const BrowserStation& station, const IsUsableAddress& isUsable) {
  for (const std::wstring& url : {station.resolvedUrl, station.url}) {
    if (std::wstring address = OneLine(url); isUsable(address)) return address;
  }
  return {};
}

StationRow RowOf(const StationTexts& texts) {
  return {std::wstring(texts.name), std::wstring(texts.type), std::wstring(texts.bitRate),
          std::wstring(texts.url),  kUnknownListeners,        L""};
}

// The list keeps one text and the places of the rows' texts in it.
StationRows Joined(const std::vector<StationRow>& listed) {
  std::wstring page;
  for (const StationRow& row : listed) page += row.name + row.type + row.bitRate + row.url;
  StationRows rows(std::move(page), RowOf);
  std::wstring_view rest = rows.Page();
  const auto take = [&rest](const std::wstring& text) {
    const std::wstring_view taken = rest.substr(0, text.size());
    rest.remove_prefix(text.size());
    return taken;
  };
  for (const StationRow& row : listed) {
    StationTexts texts;
    texts.name = take(row.name);
    texts.type = take(row.type);
    texts.bitRate = take(row.bitRate);
    texts.url = take(row.url);
    rows.Append(texts);
  }
  return rows;
}

}  // namespace

StationRows RowsOf(const std::vector<BrowserStation>& stations, const IsUsableAddress& isUsable) {
  std::vector<StationRow> listed;
  std::set<std::wstring> known;
  for (const BrowserStation& station : stations) {
    if (station.hls == L"1") continue;
    const std::wstring url = UrlOf(station, isUsable);
    if (url.empty() || !known.insert(url).second) continue;
    const std::wstring name = OneLine(station.name);
    listed.push_back({.name = name.empty() ? kNoName : name,
                      .type = OneLine(station.codec),
                      .bitRate = BitRateOf(station),
                      .url = url});
  }
  return Joined(listed);
}

}  // namespace tellurvane

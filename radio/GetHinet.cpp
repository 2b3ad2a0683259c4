#include <algorithm>
#include <array>
#include <utility>

#include "radio/StationParsers.h"
#include "radio/TextScan.h"

namespace tellurvane {
namespace {

constexpr std::wstring_view kItem = L"item id";
constexpr std::wstring_view kTitle = L"myTitle=";
constexpr std::array<std::wstring_view, 13> kExcluded = {
    L"警廣", L"全國", L"Br",   L"ne",   L"大愛", L"古都", L"真心",
    L"臺北", L"台灣", L"正義", L"快樂", L"非凡", L"新客"};

// Deliberate: these stations are left out, by the first two characters of their titles.
bool IsExcluded(std::wstring_view title) {
  return std::ranges::find(kExcluded, title.substr(0, 2)) != kExcluded.end();
}

}  // namespace

StationSearch GetHinet(std::wstring page, std::wstring_view urlPrefix) {
  const auto rowOf = [prefix = std::wstring(urlPrefix)](std::wstring_view text,
                                                        const StationCuts& cuts) {
    return StationRow{std::wstring(cuts.name.Of(text)),
                      L"WMA",
                      L"48 kbps",
                      prefix + std::wstring(cuts.url.Of(text)),
                      L"收聽人數：未知",
                      L""};
  };
  StationSearch stations = {StationRows(std::move(page), rowOf), true};
  const std::wstring_view text = stations.rows.Page();
  size_t resume = 0;
  for (;;) {
    const size_t item = FindMarkerAnyCase(text, resume, kItem);
    if (item == kNotFound) return stations;
    // What is not found ends the search: from its absence no place to go on could be reckoned that
    // does not lie before this one.
    stations.isWhole = false;
    const size_t idQuote = text.find(L'"', item);
    if (idQuote == kNotFound) return stations;
    const size_t idEnd = text.find(L'"', idQuote + 1);
    if (idEnd == kNotFound) return stations;
    const size_t title = FindMarker(text, idEnd, kTitle);
    if (title == kNotFound) return stations;
    const size_t titleBegin = title + kTitle.size() + 1;
    const size_t titleEnd = text.find(L'"', titleBegin);
    if (titleEnd == kNotFound) return stations;
    stations.isWhole = true;
    resume = titleEnd + 1;
    if (IsExcluded(text.substr(titleBegin, titleEnd - titleBegin))) continue;
    stations.rows.Append(
        {.name = {titleBegin, titleEnd - titleBegin}, .url = {idQuote + 1, idEnd - idQuote - 1}});
  }
}

}  // namespace tellurvane

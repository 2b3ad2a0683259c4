#include <algorithm>
#include <array>

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

size_t FindItem(std::wstring_view text, size_t from) {
  for (size_t at = from; at < text.size(); ++at) {
    if (Lowered(text[at]) == kItem.front() && IsMarkerAt(text, at, kItem)) return at;
  }
  return kNotFound;
}

}  // namespace

StationSearch GetHinet(std::wstring_view page, std::wstring_view urlPrefix) {
  StationSearch stations;
  size_t resume = 0;
  for (;;) {
    const size_t item = FindItem(page, resume);
    if (item == kNotFound) return stations;
    // What is not found ends the search: from its absence no place to go on could be reckoned that
    // does not lie before this one.
    stations.isWhole = false;
    const size_t idQuote = page.find(L'"', item);
    if (idQuote == kNotFound) return stations;
    const size_t idEnd = page.find(L'"', idQuote + 1);
    if (idEnd == kNotFound) return stations;
    const size_t title = page.find(kTitle, idEnd);
    if (title == kNotFound) return stations;
    const size_t titleBegin = title + kTitle.size() + 1;
    const size_t titleEnd = page.find(L'"', titleBegin);
    if (titleEnd == kNotFound) return stations;
    stations.isWhole = true;
    resume = titleEnd + 1;
    const std::wstring text(page.substr(titleBegin, titleEnd - titleBegin));
    if (IsExcluded(text)) continue;
    stations.rows.push_back(
        {text, L"WMA", L"48 kbps",
         std::wstring(urlPrefix) += page.substr(idQuote + 1, idEnd - idQuote - 1),
         L"收聽人數：未知", L""});
  }
}

}  // namespace tellurvane

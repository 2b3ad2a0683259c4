#include <algorithm>
#include <array>
#include <utility>

#include "base/Text.h"
#include "radio/StationParsers.h"

namespace tellurvane {
namespace {

constexpr size_t kNotFound = std::wstring_view::npos;
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
  const auto rowOf = [prefix = std::wstring(urlPrefix)](const StationTexts& texts) {
    return StationRow{
        std::wstring(texts.name), L"WMA", L"48 kbps", prefix + std::wstring(texts.url),
        kUnknownListeners,        L""};
  };
  StationSearch stations = {StationRows(std::move(page), rowOf), true};
  const std::wstring_view text = stations.rows.Page();
  const std::wstring small = AsciiLoweredText(text);
  size_t resume = 0;
  for (;;) {
    const size_t item = small.find(L"item id", resume);
    if (item == kNotFound) return stations;
    stations.isWhole = false;  // until the station's end is found
    const size_t idQuote = text.find(L'"', item);
    if (idQuote == kNotFound) return stations;
    const size_t idEnd = text.find(L'"', idQuote + 1);
    if (idEnd == kNotFound) return stations;
    const size_t title = text.find(kTitle, idEnd);
    if (title == kNotFound) return stations;
    const size_t titleBegin = title + kTitle.size() + 1;
    const size_t titleEnd = text.find(L'"', titleBegin);
    if (titleEnd == kNotFound) return stations;
    stations.isWhole = true;
    resume = titleEnd + 1;
    const std::wstring_view name = text.substr(titleBegin, titleEnd - titleBegin);
    if (IsExcluded(name)) continue;
    stations.rows.Append({.name = name, .url = text.substr(idQuote + 1, idEnd - idQuote - 1)});
  }
}

}  // namespace tellurvane

#include "radio/RadioBrowser.h"

#include <algorithm>
#include <array>

#include "radio/DirectoryError.h"
#include "radio/PercentEncoding.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kDomain = L".api.radio-browser.info";
constexpr const wchar_t* kSearch =
    L"/xml/stations/search?hidebroken=true&order=clickcount&reverse=true&limit=200";

struct GenreTag {
  std::wstring_view key;
  std::wstring_view tag;
};
// The genres whose usual tag is spelled otherwise. "Top" has none: it is the list of all stations.
constexpr std::array<GenreTag, 3> kTags = {
    {{L"top", L""}, {L"contemporary", L"adult contemporary"}, {L"R&B", L"rnb"}}};

std::wstring_view TagOf(std::wstring_view key) {
  const auto* const found = std::ranges::find(kTags, key, &GenreTag::key);
  return found == kTags.end() ? key : found->tag;
}

}  // namespace

std::wstring RadioBrowserPath(const DirectoryQuery& query) {
  const std::wstring path = kSearch;
  if (query.source == DirectorySource::kRadioBrowserTaiwan) return path + L"&countrycode=TW";
  if (query.mode == SearchMode::kKeyword) return path + L"&name=" + PercentEncoded(query.term);
  const std::wstring_view tag = TagOf(query.term);
  return tag.empty() ? path : path + L"&tag=" + PercentEncoded(tag) + L"&tagExact=true";
}

StationSearch RadioBrowser::Search(const DirectoryQuery& query) {
  using std::chrono::milliseconds;
  const std::wstring path = RadioBrowserPath(query);
  const milliseconds end = callbacks_.elapsed() + kWholeLimit;
  std::wstring reason;
  for (auto server = servers_.begin(); server != servers_.end(); ++server) {
    const milliseconds left = end - callbacks_.elapsed();
    if (left <= milliseconds::zero()) break;
    try {
      const std::string answer =
          callbacks_.fetch(*server + kDomain, path, std::min<milliseconds>(kServerLimit, left));
      StationSearch found = {RowsOf(callbacks_.read(answer), callbacks_.isUsable), true};
      std::rotate(servers_.begin(), server, server + 1);
      return found;
    } catch (const DirectoryError& error) {
      reason = error.Text();
    }
  }
  throw DirectoryError(reason);
}

}  // namespace tellurvane

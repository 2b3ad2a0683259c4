// Fetches the page for a search of a radio directory and returns its stations.
#pragma once

#include <array>
#include <functional>
#include <string>

#include "radio/StationParsers.h"

namespace tellurvane {

// In the order of the dialog's list.
enum class DirectorySource {
  kShoutcast,
  kIcecast,
  kLiveDoor,
  kHinet,
  kRadioBrowser,
  kRadioBrowserTaiwan
};
enum class SearchMode { kGenre, kKeyword };

struct Genre {
  const wchar_t* label;
  const wchar_t* key;
};
extern const std::array<Genre, 28> kGenres;
inline constexpr std::array<const wchar_t*, 6> kDirectoryNames = {
    L"SHOUTcast", L"Icecast",       L"日本 LiveDoor",
    L"國內電台",  L"Radio Browser", L"Radio Browser 台灣電台"};
// Chosen when the dialog opens: none of the four before it is known to serve its old pages.
inline constexpr DirectorySource kFirstSource = DirectorySource::kRadioBrowser;

// The others have one list and no search.
constexpr bool CanSearch(DirectorySource source) {
  return source == DirectorySource::kShoutcast || source == DirectorySource::kIcecast ||
         source == DirectorySource::kRadioBrowser;
}

struct DirectoryQuery {
  DirectorySource source = DirectorySource::kShoutcast;
  SearchMode mode = SearchMode::kGenre;
  std::wstring term;  // a genre's key or a keyword
};

// All must be set.
struct DirectoryCallbacks {
  std::function<std::wstring(const std::wstring& url)> fetch;  // a page's text
  ToCapitals toCapitals;
  std::wstring hinetUrl;  // the prefix of a HiNet station's address
  // Radio Browser has several servers and an answer of its own form.
  std::function<StationSearch(const DirectoryQuery& query)> searchRadioBrowser = {};
};

// The first four directories get the term as it is. Throws what `fetch` and `searchRadioBrowser`
// throw. Only SHOUTcast's and HiNet's pages show whether they were cut off.
StationSearch SearchDirectory(const DirectoryQuery& query, const DirectoryCallbacks& callbacks);

}  // namespace tellurvane

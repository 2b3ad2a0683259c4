// From a directory's page to its stations. None fails on any page, except for want of memory.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "radio/StationRows.h"

namespace tellurvane {

struct StationSearch {
  StationRows rows;
  // False if the page ends in the middle of a station. The stations before it are listed.
  bool isWhole = true;
};

// The most stations that are taken from SHOUTcast's answer.
inline constexpr size_t kMostShoutcastRows = 200;

// A line break before every id, and no quote before a colon.
std::wstring PreparedShoutcast(std::wstring_view page);
// Of a prepared page. A field that cannot be cut keeps the text of the station before. On a page
// that is not whole the search goes back, and lists stations again.
StationSearch GetShoutcast(std::wstring page);

// Of a page as it came. A field that is missing, or too long, keeps the text of the station before.
StationRows GetIcecast(std::wstring_view page);

// The page without the marks of popular stations.
std::wstring PreparedLiveDoor(std::wstring_view page);
// The text in capitals, as the platform has them.
using ToCapitals = std::function<std::wstring(std::wstring_view text)>;
// Of a prepared page; the same holds for missing fields.
StationRows GetLiveDoor(std::wstring_view page, const ToCapitals& toCapitals);

// A station's address is `urlPrefix` followed by its id.
StationSearch GetHinet(std::wstring page, std::wstring_view urlPrefix);

}  // namespace tellurvane

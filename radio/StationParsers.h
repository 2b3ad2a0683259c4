// Parsers: from a directory's page to its stations. They accept any page; only memory can run out.
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
// Takes a prepared page. A field that is not found keeps the text of the previous station. On an
// incomplete page the search goes back, so the same stations may be listed again.
StationSearch GetShoutcast(std::wstring page);

// Takes the page as it is. A missing or too long field keeps the text of the previous station.
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

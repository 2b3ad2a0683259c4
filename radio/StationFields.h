// What the pages of Icecast and LiveDoor have in common: each field of a station follows a marker.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "radio/StationRows.h"

namespace tellurvane {

struct StationField {
  std::wstring_view marker;  // in small letters; matches ASCII letters of either case
  std::wstring_view end;  // matches exactly, at most `window` characters after the text's beginning
  size_t window;
  std::wstring_view StationTexts::*text;
  bool startsWithMarker = false;  // the text includes the marker
  bool endsStation = false;       // adds a row
};

// Looks for every marker at every place. A field without its end in the window keeps its text, also
// that of the station before.
StationRows ScanStations(std::wstring page, std::span<const StationField> fields,
                         StationRows::MakeRow makeRow);

}  // namespace tellurvane

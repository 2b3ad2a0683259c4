#include <utility>

#include "radio/DirectoryHosts.h"
#include "radio/StationParsers.h"
#include "radio/TextScan.h"

namespace tellurvane {
namespace {

// Positions count from 1, as the rules of this page do: a marker that is not found is at 0, and the
// places that are reckoned from it are small numbers. No search starts at 0.
class Markers {
 public:
  explicit Markers(std::wstring_view text)
      : ids_(text, L"id:", FindMarkerAnyCase),
        quotes_(text, L"\""),
        types_(text, L"mt:"),
        names_(text, L"name:"),
        listeners_(text, L"lc:"),
        bitRates_(text, L"br:"),
        commas_(text, L",") {}

  size_t Id(size_t from) { return Position(ids_, from); }
  size_t Quote(size_t from) { return Position(quotes_, from); }
  size_t Type(size_t from) { return Position(types_, from); }
  size_t Name(size_t from) { return Position(names_, from); }
  size_t Listeners(size_t from) { return Position(listeners_, from); }
  size_t BitRate(size_t from) { return Position(bitRates_, from); }
  size_t Comma(size_t from) { return Position(commas_, from); }

  // A cut whose length comes out negative leaves the field as it is.
  void Take(Cut& field, size_t from, size_t end) const {
    if (end >= from) field = Cut(from - 1, end - from);
  }

 private:
  static size_t Position(Occurrences& marker, size_t from) {
    const size_t found = marker.From(from - 1);
    return found == kNotFound ? 0 : found + 1;
  }

  Occurrences ids_;
  Occurrences quotes_;
  Occurrences types_;
  Occurrences names_;
  Occurrences listeners_;
  Occurrences bitRates_;
  Occurrences commas_;
};

StationRow RowOf(std::wstring_view page, const StationCuts& cuts) {
  return {std::wstring(cuts.name.Of(page)),
          std::wstring(cuts.type.Of(page)),
          std::wstring(cuts.bitRate.Of(page)) += L" kbps",
          (std::wstring(kShoutcastTuneIn) += L"/sbin/tunein-station.pls?id=") += cuts.url.Of(page),
          std::wstring(L"收聽人數：") += cuts.listeners.Of(page),
          L""};
}

}  // namespace

std::wstring PreparedShoutcast(std::wstring page) {
  constexpr std::wstring_view kId = L"id\"";
  constexpr std::wstring_view kColon = L"\":";
  return ReplacedMarkers(std::move(page), {kId, L"\r\nid", kId.find(L'"')},
                         {kColon, L":", kColon.find(L':')});
}

StationSearch GetShoutcast(std::wstring page) {
  StationSearch stations = {StationRows(std::move(page), RowOf), true};
  StationRows& rows = stations.rows;
  Markers markers(rows.Page());
  StationCuts cuts;
  size_t last = 0;
  size_t resume = 0;
  while (rows.size() < kMostShoutcastRows) {
    const size_t start = markers.Id(resume + 1);
    if (start == 0) break;
    // The page does not hold what the last station needed: the search went back for it.
    if (start <= last) stations.isWhole = false;
    last = start;
    size_t a = markers.Quote(start) + 1;
    size_t b = markers.Quote(a);
    markers.Take(cuts.url, a, b);
    // Behind a quote that was not found nothing is searched, and `a` stays.
    if (b != 0) a = markers.Type(b) + 4;
    b = markers.Quote(a);
    markers.Take(cuts.type, a, b);
    if (b != 0) a = markers.Name(b) + 6;
    b = markers.Quote(a);
    markers.Take(cuts.name, a, b);
    // From the name's beginning: the count may stand in the name's own text.
    a = markers.Listeners(a) + 3;
    b = markers.Comma(a);
    markers.Take(cuts.listeners, a, b);
    a = markers.BitRate(a) + 3;
    b = markers.Comma(a);
    markers.Take(cuts.bitRate, a, b);
    resume = b;
    rows.Append(cuts);
  }
  return stations;
}

}  // namespace tellurvane

#include <algorithm>

#include "base/Text.h"
#include "radio/DirectoryHosts.h"
#include "radio/StationParsers.h"
#include "radio/TextScan.h"

namespace tellurvane {
namespace {

// Positions count from 1, as the rules of this page do: a marker that is not found is at 0, and the
// places that are reckoned from it are small numbers.
class Markers {
 public:
  explicit Markers(std::wstring_view text)
      : text_(text),
        ids_(text, L"id:", true),
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
  void Cut(std::wstring& field, size_t from, size_t end) const {
    if (end < from) return;
    if (from > text_.size()) {
      field.clear();
    } else {
      field = text_.substr(from - 1, end - from);
    }
  }

 private:
  static size_t Position(Occurrences& marker, size_t from) {
    const size_t found = marker.From(std::max<size_t>(from, 1) - 1);
    return found == kNotFound ? 0 : found + 1;
  }

  std::wstring_view text_;
  Occurrences ids_;
  Occurrences quotes_;
  Occurrences types_;
  Occurrences names_;
  Occurrences listeners_;
  Occurrences bitRates_;
  Occurrences commas_;
};

}  // namespace

std::wstring PreparedShoutcast(std::wstring_view page) {
  return Replaced(Replaced(page, L"id\"", L"\r\nid"), L"\":", L":");
}

StationRows GetShoutcast(std::wstring_view page) {
  Markers markers(page);
  StationRows rows;
  std::wstring id;
  std::wstring type;
  std::wstring name;
  std::wstring listeners;
  std::wstring bitRate;
  size_t resume = 0;
  while (rows.size() < kMostShoutcastRows) {
    const size_t start = markers.Id(resume + 1);
    if (start == 0) break;
    size_t a = markers.Quote(start) + 1;
    size_t b = markers.Quote(a);
    markers.Cut(id, a, b);
    a = markers.Type(b) + 4;
    b = markers.Quote(a);
    markers.Cut(type, a, b);
    a = markers.Name(b) + 6;
    b = markers.Quote(a);
    markers.Cut(name, a, b);
    // From the name's beginning: the count may stand in the name's own text.
    a = markers.Listeners(a) + 3;
    b = markers.Comma(a);
    markers.Cut(listeners, a, b);
    a = markers.BitRate(a) + 3;
    b = markers.Comma(a);
    markers.Cut(bitRate, a, b);
    resume = b;
    rows.push_back({name, type, bitRate + L" kbps",
                    std::wstring(kShoutcastTuneIn) + L"/sbin/tunein-station.pls?id=" + id,
                    L"收聽人數：" + listeners, L""});
  }
  return rows;
}

}  // namespace tellurvane

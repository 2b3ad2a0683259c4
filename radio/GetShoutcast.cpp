#include <algorithm>
#include <utility>
#include <vector>

#include "base/Text.h"
#include "radio/DirectoryHosts.h"
#include "radio/StationParsers.h"

namespace tellurvane {
namespace {

// Positions count from 1. A marker that is not found is at 0, and positions computed from it are
// small numbers. The results for broken pages depend on that.

// The places of a marker, as far as they were asked for. They are remembered, because on a broken
// page each of 200 rows begins its searches at the page's beginning.
class Places {
 public:
  Places(std::wstring_view text, std::wstring_view marker) : text_(text), marker_(marker) {}

  // The first one at `from` or after it.
  size_t From(size_t from) {
    while (searched_ < text_.size() && (places_.empty() || places_.back() < from)) {
      const size_t found = text_.find(marker_, searched_);
      if (found != std::wstring_view::npos) places_.push_back(found + 1);
      searched_ = found == std::wstring_view::npos ? text_.size() : found + 1;
    }
    const auto place = std::ranges::lower_bound(places_, from);
    return place == places_.end() ? 0 : *place;
  }

 private:
  std::wstring_view text_;
  std::wstring_view marker_;
  size_t searched_ = 0;
  std::vector<size_t> places_;
};

// Reads one station's record after the other.
class RecordReader {
 public:
  explicit RecordReader(std::wstring_view text) : text_(text) {}

  // Reads the record that begins here into the fields. Returns the last place that it read.
  size_t Read(size_t start, StationTexts& fields) {
    size_t a = quotes_.From(start) + 1;
    size_t b = quotes_.From(a);
    Take(fields.url, a, b);
    // If the quote was not found, nothing more is searched, and `a` stays.
    if (b != 0) a = types_.From(b) + 4;
    b = quotes_.From(a);
    Take(fields.type, a, b);
    if (b != 0) a = names_.From(b) + 6;
    b = quotes_.From(a);
    Take(fields.name, a, b);
    // From the name's beginning: the count may be in the name's own text.
    a = listeners_.From(a) + 3;
    b = commas_.From(a);
    Take(fields.listeners, a, b);
    a = bitRates_.From(a) + 3;
    b = commas_.From(a);
    Take(fields.bitRate, a, b);
    return b;
  }

 private:
  // A cut whose length comes out negative leaves the field as it is.
  void Take(std::wstring_view& field, size_t from, size_t end) const {
    if (end >= from) field = text_.substr(from - 1, end - from);
  }

  std::wstring_view text_;
  Places quotes_{text_, L"\""};
  Places types_{text_, L"mt:"};
  Places names_{text_, L"name:"};
  Places listeners_{text_, L"lc:"};
  Places bitRates_{text_, L"br:"};
  Places commas_{text_, L","};
};

StationRow RowOf(const StationTexts& texts) {
  return {std::wstring(texts.name),
          std::wstring(texts.type),
          std::wstring(texts.bitRate) += L" kbps",
          (std::wstring(kShoutcastTuneIn) += L"/sbin/tunein-station.pls?id=") += texts.url,
          std::wstring(L"收聽人數：") += texts.listeners,
          L""};
}

}  // namespace

std::wstring PreparedShoutcast(std::wstring_view page) {
  return Replaced(Replaced(page, L"id\"", L"\r\nid"), L"\":", L":");
}

StationSearch GetShoutcast(std::wstring page) {
  StationSearch stations = {StationRows(std::move(page), RowOf), true};
  StationRows& rows = stations.rows;
  const std::wstring_view text = rows.Page();
  const std::wstring lowered = AsciiLoweredText(text);
  Places ids(lowered, L"id:");
  RecordReader records(text);
  StationTexts latest;
  size_t last = 0;
  size_t resume = 0;
  while (rows.size() < kMostShoutcastRows) {
    const size_t start = ids.From(resume + 1);
    if (start == 0) break;
    // The search went back, because the page lacks a part of the last station.
    if (start <= last) stations.isWhole = false;
    last = start;
    resume = records.Read(start, latest);
    rows.Append(latest);
  }
  return stations;
}

}  // namespace tellurvane

// The stations that were found on a page.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "radio/StationRow.h"

namespace tellurvane {

// A station's texts as parts of the page. One that was never found has no data().
struct StationTexts {
  std::wstring_view name = {};
  std::wstring_view type = {};
  std::wstring_view bitRate = {};
  std::wstring_view channel = {};
  std::wstring_view url = {};
  std::wstring_view listeners = {};
};

// Keeps the page, and makes a row when it is asked for. Rows with copies of the texts could take
// hundreds of times the page's size: a station that lacks a text has that of the station before.
class StationRows {
 public:
  using MakeRow = std::function<StationRow(const StationTexts& texts)>;

  StationRows() = default;
  StationRows(std::wstring page, MakeRow makeRow)
      : page_(std::make_shared<const std::wstring>(std::move(page))),
        makeRow_(std::move(makeRow)) {}

  std::wstring_view Page() const { return *page_; }
  void Append(const StationTexts& texts) { stations_.push_back(texts); }

  bool empty() const { return stations_.empty(); }
  size_t size() const { return stations_.size(); }
  StationRow operator[](size_t row) const { return makeRow_(stations_[row]); }
  // A row from the first `most` characters of each text, for painting.
  StationRow Head(size_t row, size_t most) const {
    StationTexts texts = stations_[row];
    for (std::wstring_view* const text :
         {&texts.name, &texts.type, &texts.bitRate, &texts.channel, &texts.url, &texts.listeners}) {
      *text = text->substr(0, most);
    }
    return makeRow_(texts);
  }
  void clear() { *this = StationRows(); }

 private:
  // Shared, so that the texts stay where they are when the rows are moved.
  std::shared_ptr<const std::wstring> page_;
  MakeRow makeRow_;
  std::vector<StationTexts> stations_;
};

}  // namespace tellurvane

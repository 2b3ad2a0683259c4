// The stations of one page.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "radio/StationRow.h"

namespace tellurvane {

// A part of a page, in UTF-16 units; of a page that is shorter than 4 billion of them.
class Cut {
 public:
  Cut() = default;
  Cut(size_t begin, size_t size)
      : begin_(static_cast<std::uint32_t>(begin)), size_(static_cast<std::uint32_t>(size)) {}

  // False for one that was never made, which is not the same as an empty one.
  bool IsMade() const { return begin_ != kNever; }
  // Its first characters.
  Cut Head(size_t most) const {
    Cut head = *this;
    if (head.size_ > most) head.size_ = static_cast<std::uint32_t>(most);
    return head;
  }
  std::wstring_view Of(std::wstring_view page) const {
    return IsMade() ? page.substr(begin_, size_) : std::wstring_view();
  }

 private:
  static constexpr std::uint32_t kNever = UINT32_MAX;
  std::uint32_t begin_ = kNever;
  std::uint32_t size_ = 0;
};

// Where a station's texts stand on the page.
struct StationCuts {
  Cut name = {};
  Cut type = {};
  Cut bitRate = {};
  Cut channel = {};
  Cut url = {};
  Cut listeners = {};
};

// Keeps the page and, for each station, only where its texts stand. A row is put together when it
// is asked for: rows that held their texts could take hundreds of times the page's size, because a
// station that lacks a text has that of the station before, however long it is.
class StationRows {
 public:
  using Composer = std::function<StationRow(std::wstring_view page, const StationCuts& cuts)>;

  StationRows() = default;
  StationRows(std::wstring page, Composer composer)
      : page_(std::move(page)), composer_(std::move(composer)) {}

  const std::wstring& Page() const { return page_; }
  void Append(const StationCuts& cuts) { stations_.push_back(cuts); }

  bool empty() const { return stations_.empty(); }
  size_t size() const { return stations_.size(); }
  StationRow operator[](size_t row) const { return composer_(page_, stations_[row]); }
  // Put together of no more than the first characters of each text: to be looked at.
  StationRow Head(size_t row, size_t most) const {
    StationCuts cuts = stations_[row];
    for (Cut* const cut :
         {&cuts.name, &cuts.type, &cuts.bitRate, &cuts.channel, &cuts.url, &cuts.listeners}) {
      *cut = cut->Head(most);
    }
    return composer_(page_, cuts);
  }
  void clear() { *this = StationRows(); }

 private:
  std::wstring page_;
  Composer composer_;
  std::vector<StationCuts> stations_;
};

}  // namespace tellurvane

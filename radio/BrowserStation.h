// One station of Radio Browser's answer, and the rows of a list of them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "radio/StationRows.h"

namespace tellurvane {

// The attributes as the answer has them; empty when one is missing.
struct BrowserStation {
  std::wstring name = {};
  std::wstring codec = {};
  std::wstring bitRate = {};
  std::wstring url = {};
  std::wstring resolvedUrl = {};  // where `url` leads
  std::wstring hls = {};          // "1" for a stream in pieces

  bool operator==(const BrowserStation&) const = default;
};

// Whether the program can use an address as a radio task's source.
using IsUsableAddress = std::function<bool(const std::wstring& address)>;

// In the order of the answer. Leaves out streams in pieces, which the player cannot play, and
// stations without a usable address. An address with a line break inside is not usable.
StationRows RowsOf(const std::vector<BrowserStation>& stations, const IsUsableAddress& isUsable);

}  // namespace tellurvane

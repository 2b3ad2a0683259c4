// The directory rules once more, step by step as they are worded and as slowly as that is: one cut,
// one comparison, one replacement at a time. What the fast ones are held against.
#pragma once

#include <string>
#include <vector>

#include "radio/StationRow.h"

namespace tellurvane::literal {

struct Search {
  std::vector<StationRow> rows;
  bool isWhole = true;
};

std::wstring ReplaceHTML(std::wstring text);
Search GetShoutcast(const std::wstring& text);
std::vector<StationRow> GetIcecast(const std::wstring& page);
std::vector<StationRow> GetLiveDoor(const std::wstring& page);
Search GetHinet(const std::wstring& text, const std::wstring& urlPrefix);

}  // namespace tellurvane::literal

// The directories' rules once more, step by step as they are worded, with tables of their own. The
// product's rules are compared with these.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "radio/StationRow.h"

namespace tellurvane::literal {

struct Search {
  std::vector<StationRow> rows;
  bool isWhole = true;
};

std::wstring ReplaceHTML(std::wstring text);
Search GetShoutcast(const std::wstring& text);
Search GetIcecast(const std::wstring& page);
Search GetLiveDoor(const std::wstring& page, std::wstring (*capitals)(std::wstring_view text));
Search GetHinet(const std::wstring& text, const std::wstring& urlPrefix);

}  // namespace tellurvane::literal

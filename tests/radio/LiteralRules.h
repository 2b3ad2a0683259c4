// The directories' rules once more, step by step as they are worded, with tables of their own. The
// product's rules are compared with these.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "radio/StationRow.h"

namespace tellurvane::literal {

using Capitals = std::function<std::wstring(std::wstring_view)>;

struct Search {
  std::vector<StationRow> rows;
  bool isWhole = true;
};

std::wstring ReplaceHTML(std::wstring text);
Search GetShoutcast(const std::wstring& text);
std::vector<StationRow> GetIcecast(const std::wstring& page);
std::vector<StationRow> GetLiveDoor(const std::wstring& page, const Capitals& capitals);
Search GetHinet(const std::wstring& text, const std::wstring& urlPrefix);

}  // namespace tellurvane::literal

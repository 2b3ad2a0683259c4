// The directory rules once more, step by step as they are worded and as slowly as that is: one cut,
// one comparison, one replacement at a time. What the fast ones are held against.
#pragma once

#include <string>

#include "radio/StationParsers.h"

namespace tellurvane::literal {

std::wstring ReplaceHTML(std::wstring text);
StationRows GetShoutcast(const std::wstring& text);
StationRows GetIcecast(const std::wstring& page);
StationRows GetLiveDoor(const std::wstring& page);
StationSearch GetHinet(const std::wstring& text, const std::wstring& urlPrefix);

}  // namespace tellurvane::literal

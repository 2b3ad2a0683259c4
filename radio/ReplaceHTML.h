// HTML text as plain text.
#pragma once

#include <string>
#include <string_view>

namespace tellurvane {

// Decodes "&#65;", then removes "<b>" and "</b>", then replaces a fixed list of named entities,
// each everywhere before the next: "&amp;lt;" becomes "<", because "&amp;" comes first in the list,
// while "&amp;quot;" becomes "&quot;". Malformed text stays. Values from 128 to 255 are those of
// Windows-1252, whatever the system's code page is.
std::wstring ReplaceHTML(std::wstring_view text);

}  // namespace tellurvane

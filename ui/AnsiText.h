// Text for interfaces of the platform that take no Unicode.
#pragma once

#include <string>
#include <string_view>

namespace tellurvane {

// In the user's ANSI code page; a character outside it becomes a question mark. Empty on failure.
std::string AnsiText(std::wstring_view text);

}  // namespace tellurvane

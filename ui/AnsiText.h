// Text for those of the platform's interfaces that take no Unicode.
#pragma once

#include <string>
#include <string_view>

namespace tellurvane {

// In the user's ANSI code page; what that has no character for becomes a question mark. Empty where
// the system refuses.
std::string AnsiText(std::wstring_view text);

}  // namespace tellurvane

// The platform's letter case. The same in every locale.
#pragma once

#include <string>
#include <string_view>

namespace tellurvane {

// Without regard to the case of letters of any script.
bool EqualsIgnoringCase(std::wstring_view left, std::wstring_view right);
// Each letter that has a capital of one unit becomes that capital.
std::wstring Capitals(std::wstring_view text);

}  // namespace tellurvane

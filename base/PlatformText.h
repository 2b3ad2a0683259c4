// Comparing texts as the platform does.
#pragma once

#include <string_view>

namespace tellurvane {

// Without regard to the case of letters of any script. The same in every locale.
bool EqualsIgnoringCase(std::wstring_view left, std::wstring_view right);

}  // namespace tellurvane

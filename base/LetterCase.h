// Letters in capitals, as the platform makes them in every locale.
#pragma once

#include <string>
#include <string_view>

namespace tellurvane {

// The same unit where there is no capital of one unit.
wchar_t Capital(wchar_t unit);
std::wstring Capitals(std::wstring_view text);

}  // namespace tellurvane

// Text inside an address.
#pragma once

#include <string>
#include <string_view>

namespace tellurvane {

// The text as UTF-8 with every byte as %XX except letters, digits and "-._~". Half a surrogate
// pair, which UTF-8 does not have, becomes U+FFFD.
std::wstring PercentEncoded(std::wstring_view text);

}  // namespace tellurvane

// Text as bytes of a code page.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tellurvane {

enum class Strictness { kValidOnly, kAnyBytes };

// Nothing when the bytes are not valid in the code page; with kAnyBytes the platform replaces what
// is not valid.
std::optional<std::wstring> FromCodePage(unsigned codePage, std::string_view bytes,
                                         Strictness strictness = Strictness::kValidOnly);

std::string Utf8(std::wstring_view text);

}  // namespace tellurvane

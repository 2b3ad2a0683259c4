// The part of an XML text that a parser of decoded text takes.
#pragma once

#include <string_view>

namespace tellurvane {

// The text without a byte order mark and without its XML declaration. The declaration names the
// encoding of the bytes. For decoded text Windows' parser is documented to accept UTF-16 only;
// Wine's parser ignores the declaration.
std::wstring_view XmlBody(std::wstring_view text);

}  // namespace tellurvane

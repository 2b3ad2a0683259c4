// What holds for every text that Radio Browser's rules are given; shared by the fuzz target and the
// tests.
#pragma once

#include <string>

namespace tellurvane {

// Each rule describes what does not hold; empty when everything does.

// The encoded text has only the characters of an address, and gives the text back when it is
// decoded; half a surrogate pair comes back as U+FFFD.
std::string EncodingFault(const std::wstring& text);

// The text parts the attributes of stations at line feeds. Each row is one trimmed line with a name
// and an accepted address, which is a part of the text.
std::string RowsFault(const std::wstring& text);

// The body is the end of the text, and nothing but a declaration is missing.
std::string BodyFault(const std::wstring& text);

}  // namespace tellurvane

// The rules compared with the literal ones; shared by the fuzz target and the tests.
#pragma once

#include <string>
#include <string_view>

namespace tellurvane {

// Gives the page to both rules and says what differs; empty when nothing does.
using Rule = std::string (*)(const std::wstring& page);

std::string DecodingDifference(const std::wstring& page);
std::string ShoutcastDifference(const std::wstring& page);
std::string IcecastDifference(const std::wstring& page);
std::string LiveDoorDifference(const std::wstring& page);
std::string HinetDifference(const std::wstring& page);

// The page of a seed: each byte is one character, and the bytes 1 to 8 are characters above 255.
std::wstring PageOfSeed(std::string_view bytes);

// Capitals of ASCII letters and of "é".
std::wstring FakeCapitals(std::wstring_view text);

}  // namespace tellurvane

// The fast rules held against the literal ones; shared by the fuzz target and the tests.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "radio/StationRows.h"

namespace tellurvane {

using Rule = std::string (*)(const std::wstring& page);

// Each gives the page to both rules and says what differs; empty when nothing does.
std::string DecodingDifference(const std::wstring& page);
std::string ShoutcastDifference(const std::wstring& page);
std::string IcecastDifference(const std::wstring& page);
std::string LiveDoorDifference(const std::wstring& page);
std::string HinetDifference(const std::wstring& page);

inline constexpr std::array<Rule, 5> kAllRules = {DecodingDifference, ShoutcastDifference,
                                                  IcecastDifference, LiveDoorDifference,
                                                  HinetDifference};

// The page of a seed: bytes as they are, so that every one of them is one character; the Chinese
// ones that the rules know stand for the bytes 1 to 3.
std::wstring PageOfSeed(std::string_view bytes);

std::vector<StationRow> Listed(const StationRows& rows);

}  // namespace tellurvane

#include "tests/radio/RuleDifference.h"

#include <array>

#include "base/Text.h"
#include "radio/ReplaceHTML.h"
#include "radio/StationParsers.h"
#include "tests/radio/LiteralRules.h"

namespace tellurvane {
namespace {

std::string Difference(const std::vector<StationRow>& rows,
                       const std::vector<StationRow>& expected) {
  if (rows.size() != expected.size()) {
    return std::to_string(rows.size()) + " rows instead of " + std::to_string(expected.size());
  }
  for (size_t i = 0; i < rows.size(); ++i) {
    if (rows[i] != expected[i]) return "row " + std::to_string(i) + " differs";
  }
  return {};
}

std::string Difference(const StationSearch& search, const literal::Search& expected) {
  if (search.isWhole != expected.isWhole) return "isWhole differs";
  return Difference(Listed(search.rows), expected.rows);
}

}  // namespace

std::string DecodingDifference(const std::wstring& page) {
  return ReplaceHTML(page) == literal::ReplaceHTML(page) ? "" : "the decoded page differs";
}

std::string ShoutcastDifference(const std::wstring& page) {
  return Difference(GetShoutcast(page), literal::GetShoutcast(page));
}

std::string IcecastDifference(const std::wstring& page) {
  return Difference(Listed(GetIcecast(page)), literal::GetIcecast(page));
}

std::string LiveDoorDifference(const std::wstring& page) {
  return Difference(Listed(GetLiveDoor(page, FakeCapitals)),
                    literal::GetLiveDoor(page, FakeCapitals));
}

std::string HinetDifference(const std::wstring& page) {
  return Difference(GetHinet(page, L"p"), literal::GetHinet(page, L"p"));
}

std::wstring FakeCapitals(std::wstring_view text) {
  std::wstring capitals(text);
  for (wchar_t& unit : capitals) {
    if ((unit >= L'a' && unit <= L'z') || unit == L'é') unit = static_cast<wchar_t>(unit - 32);
  }
  return capitals;
}

std::wstring PageOfSeed(std::string_view bytes) {
  std::wstring page;
  for (const char byte : bytes) {
    // Characters of the pages; some with an ampersand, a semicolon or a letter as their lower byte;
    // the two halves of one character.
    constexpr std::array<char16_t, 9> kWide = {0,      u'細',  u'大',  u'愛', 0x0126,
                                               0x013B, 0x0150, 0xD83D, 0xDE00};
    const auto code = static_cast<unsigned char>(byte);
    page += static_cast<wchar_t>(code < kWide.size() ? kWide[code] : code);
  }
  return page;
}

std::vector<StationRow> Listed(const StationRows& rows) {
  std::vector<StationRow> listed;
  for (size_t i = 0; i < rows.size(); ++i) listed.push_back(rows[i]);
  return listed;
}

}  // namespace tellurvane

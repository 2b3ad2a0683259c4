#include "tests/radio/RuleDifference.h"

#include <array>

#include "radio/ReplaceHTML.h"
#include "radio/StationParsers.h"
#include "tests/radio/LiteralRules.h"

namespace tellurvane {
namespace {

std::string Difference(bool isWhole, const StationRows& rows, const literal::Search& expected) {
  if (isWhole != expected.isWhole) return "isWhole differs";
  if (rows.size() != expected.rows.size()) return "the number of rows differs";
  for (size_t i = 0; i < rows.size(); ++i) {
    if (rows[i] != expected.rows[i]) return "row " + std::to_string(i) + " differs";
  }
  return {};
}

}  // namespace

std::string DecodingDifference(const std::wstring& page) {
  return ReplaceHTML(page) == literal::ReplaceHTML(page) ? "" : "the decoded page differs";
}

std::string ShoutcastDifference(const std::wstring& page) {
  const StationSearch found = GetShoutcast(page);
  return Difference(found.isWhole, found.rows, literal::GetShoutcast(page));
}

std::string IcecastDifference(const std::wstring& page) {
  return Difference(true, GetIcecast(page), literal::GetIcecast(page));
}

std::string LiveDoorDifference(const std::wstring& page) {
  return Difference(true, GetLiveDoor(page, FakeCapitals),
                    literal::GetLiveDoor(page, FakeCapitals));
}

std::string HinetDifference(const std::wstring& page) {
  const StationSearch found = GetHinet(page, L"p");
  return Difference(found.isWhole, found.rows, literal::GetHinet(page, L"p"));
}

std::wstring FakeCapitals(std::wstring_view text) {
  std::wstring capitals(text);
  for (wchar_t& unit : capitals) {
    if ((unit >= L'a' && unit <= L'z') || unit == L'é') unit = static_cast<wchar_t>(unit - 32);
  }
  return capitals;
}

std::wstring PageOfSeed(std::string_view bytes) {
  // Characters of the pages; some with an ampersand, a semicolon or a letter as their lower byte;
  // the two halves of one character.
  constexpr std::array<char16_t, 9> kWide = {0,      u'細',  u'大',  u'愛', 0x0126,
                                             0x013B, 0x0150, 0xD83D, 0xDE00};
  std::wstring page;
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    page += static_cast<wchar_t>(code < kWide.size() ? kWide[code] : code);
  }
  return page;
}

}  // namespace tellurvane

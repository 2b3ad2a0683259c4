#include "tests/radio/RuleDifference.h"

#include <array>

#include "base/LetterCase.h"
#include "base/Text.h"
#include "radio/ReplaceHTML.h"
#include "radio/StationParsers.h"
#include "tests/radio/LiteralRules.h"

namespace tellurvane {
namespace {

std::string Difference(const std::vector<StationRow>& fast, const std::vector<StationRow>& slow) {
  if (fast.size() != slow.size()) {
    return std::to_string(fast.size()) + " rows instead of " + std::to_string(slow.size());
  }
  for (size_t i = 0; i < fast.size(); ++i) {
    if (fast[i] != slow[i]) return "row " + std::to_string(i) + " is another one";
  }
  return {};
}

std::string Difference(const StationSearch& fast, const literal::Search& slow) {
  if (fast.isWhole != slow.isWhole) return "the end is told otherwise";
  return Difference(Listed(fast.rows), slow.rows);
}

}  // namespace

std::string DecodingDifference(const std::wstring& page) {
  return ReplaceHTML(page) == literal::ReplaceHTML(page) ? "" : "decoded otherwise";
}

std::string ShoutcastDifference(const std::wstring& page) {
  const std::wstring prepared = Replaced(Replaced(page, L"id\"", L"\r\nid"), L"\":", L":");
  if (PreparedShoutcast(page) != prepared) return "prepared otherwise";
  return Difference(GetShoutcast(page), literal::GetShoutcast(page));
}

std::string IcecastDifference(const std::wstring& page) {
  return Difference(Listed(GetIcecast(page)), literal::GetIcecast(page));
}

std::string LiveDoorDifference(const std::wstring& page) {
  const std::wstring prepared = Replaced(page, L"<span class=\"many\">", L"");
  if (PreparedLiveDoor(page) != prepared) return "prepared otherwise";
  return Difference(Listed(GetLiveDoor(page)), literal::GetLiveDoor(page, Capitals));
}

std::string HinetDifference(const std::wstring& page) {
  return Difference(GetHinet(page, L"p"), literal::GetHinet(page, L"p"));
}

std::wstring PageOfSeed(std::string_view bytes) {
  std::wstring page;
  for (const char byte : bytes) {
    // Characters of the pages; such as have an ampersand, a semicolon or a letter for their lower
    // byte; the two halves of one.
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

#include "base/Text.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace tellurvane {
namespace {

TEST(TrimBlanksTest, TakesBlanksOffBothEndsAndNothingElse) {
  const std::pair<const wchar_t*, const wchar_t*> rows[] = {
      {L"", L""},
      {L"   ", L""},
      {L"name", L"name"},
      {L" two words ", L"two words"},
      {L"\tname\t", L"\tname\t"},
      {L" \r\n ", L"\r\n"},
      {L"\u3000name\u00A0", L"\u3000name\u00A0"}};
  for (const auto& [text, expected] : rows) EXPECT_EQ(TrimBlanks(text), expected) << text;
}

TEST(DigitsAtFrontTest, EndWithTheFirstUnitThatIsNoDigit) {
  const std::pair<const wchar_t*, const wchar_t*> rows[] = {
      {L"", L""}, {L"2011", L"2011"}, {L"14/2", L"14"}, {L"/2", L""}, {L"\uFF11", L""}};
  for (const auto& [text, expected] : rows) EXPECT_EQ(DigitsAtFront(text), expected) << text;
}

TEST(TakeFieldTest, TakesOneFieldAfterTheOther) {
  const struct {
    const wchar_t* text;
    std::vector<std::wstring> expected;
    const wchar_t* rest = L"";
  } rows[] = {
      {L"", {L"", L"", L""}},       {L"a", {L"a", L"", L""}},
      {L"|", {L"", L"", L""}},      {L"a|b|c", {L"a", L"b", L"c"}},
      {L"a||c", {L"a", L"", L"c"}}, {L"a|b|c|d", {L"a", L"b", L"c"}, L"d"},
  };
  for (const auto& row : rows) {
    std::wstring_view rest = row.text;
    for (const std::wstring& field : row.expected) EXPECT_EQ(TakeField(rest, L'|'), field);
    EXPECT_EQ(rest, row.rest) << row.text;
  }
}

TEST(AsciiLoweredTextTest, ChangesAsciiCapitalsOnly) {
  EXPECT_EQ(AsciiLoweredText(L"@AZ[ az É\u212A細"), L"@az[ az É\u212A細");
}

TEST(EqualsIgnoringAsciiCaseTest, ComparesLettersOfAsciiOnly) {
  const struct {
    const wchar_t* left;
    const wchar_t* right;
    bool expected;
  } rows[] = {
      {L"", L"", true},         {L"True", L"tRUE", true},
      {L"az", L"AZ", true},     {L"[", L"{", false},  // beside the letters, 32 apart
      {L"@", L"`", false},      {L"true", L"tru", false},
      {L"tru", L"true", false}, {L"\u00C4", L"\u00E4", false},
      {L"下午", L"下午", true}, {L"下午", L"上午", false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(EqualsIgnoringAsciiCase(row.left, row.right), row.expected) << row.left << row.right;
  }
}

}  // namespace
}  // namespace tellurvane

#include "radio/ReplaceHTML.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

#include "radio/Entities.h"
#include "tests/radio/ExpectedEntities.h"
#include "tests/radio/LiteralRules.h"

namespace tellurvane {
namespace {

using namespace std::string_literals;

struct Decoded {
  std::wstring text;
  std::wstring decoded;
};

TEST(ReplaceHTMLTest, DecodesStepByStep) {
  const Decoded rows[] = {
      {L"", L""},
      {L"plain", L"plain"},
      // References.
      {L"A&#66;C", L"ABC"},
      {L"&#9;", L"\t"},
      {L"x&#9;", L"x\t"},
      {L"&#9", L"&#9"},
      {L"&#;", L"&#;"},
      {L"&#;;", L"&#;;"},
      {L"&#x41;", L"&#x41;"},
      {L"&#00000000065;", L"A"},
      {L"&#256;", L"&#256;"},
      {L"&#99999999999999999999;", L"&#99999999999999999999;"},
      {L"&#128;", L"\u20AC"},
      {L"&#255;", L"\u00FF"},
      {L"&#39;&#039;", L"''"},
      {L"&#&#57;;", L"&#9;"},  // the pass is already behind the first "&#"
      // Tags.
      {L"<b>x</b><B>", L"x<B>"},
      {L"<<b>b>", L"<b>"},  // what a removal makes is not removed
      {L"<</b>b>", L"<b>"},
      {L"</<b>b>", L""},  // but "</b>" is removed after "<b>"
      // Names, and what the steps before them make.
      {L"&amp;lt;b&amp;gt;", L"<b>"},
      {L"&amp;#65;", L"&#65;"},
      {L"&amp;quot;", L"&quot;"},
      {L"&amp;amp;lt;", L"&amp;lt;"},
      {L"&hellip;", L"\u2026;"},
      {L"&hellipsis", L"\u2026sis"},
      {L"a&nbsp;b&amp;nbsp;", L"a b "},
      {L"&l<b>t;", L"<"},
      {L"&&num;039;", L"'"},
      {L"&lt&semi;", L"<"},
      {L"&excl&semi;", L"&excl;"},  // comes before "&semi;"
      {L"&#38;lt;", L"<"},
      {L"&&#108;t;", L"<"},
      {L"&lt&#59;", L"<"},
      {L"&per&#0000000099;ent;", L"%"},
      {L"&l&#256;t;", L"&l&#256;t;"},
      {L"&amp&amp;;", L"&amp&;"},
      {L"&l<b>t;&#065;&amp;gt;&#65", L"<A>&#65"},
      {L"&rsquor;&lsquo;", L"\u2018\u2018"},
      {L"&AMP;&Lt;", L"&AMP;&Lt;"},
      {L"&unknown;&", L"&unknown;&"},
      // No parts of names: a NUL, and characters whose lower byte is "&" or "a".
      {L"&l\0t&semi;"s, L"&l\0t;"s},
      {L"&lt&#133;lt;", L"&lt\u2026lt;"},
      {L"&m&#154;cr;", L"&m\u0161cr;"},
  };
  for (const Decoded& row : rows) {
    EXPECT_EQ(ReplaceHTML(row.text), row.decoded) << testing::PrintToString(row.text);
    EXPECT_EQ(literal::ReplaceHTML(row.text), row.decoded) << testing::PrintToString(row.text);
  }
}

TEST(ReplaceHTMLTest, GivesEachNamesCharacter) {
  EXPECT_EQ(kEntities.size(), std::size(expected::kNamed));
  for (const auto& [name, character] : expected::kNamed) {
    EXPECT_EQ(ReplaceHTML(std::wstring(L"<") + name + L">"),
              std::wstring(L"<") + static_cast<wchar_t>(character) + L">")
        << testing::PrintToString(std::wstring(name));
  }
}

TEST(ReplaceHTMLTest, DecodesTheNamesAfterTheAmpersandTwice) {
  bool isAfter = false;
  for (const auto& [name, character] : expected::kNamed) {
    const std::wstring once = name;
    const std::wstring twice(1, static_cast<wchar_t>(character));
    EXPECT_EQ(ReplaceHTML(L"&amp;" + once.substr(1)), isAfter ? twice : once)
        << testing::PrintToString(once);
    isAfter = isAfter || once == L"&amp;";
  }
}

TEST(FromWindows1252Test, GivesTheWesternCharacters) {
  for (const int value : {0, 65, 127, 160, 233, 255}) {
    EXPECT_EQ(FromWindows1252(value), static_cast<wchar_t>(value));
  }
  for (int value = 128; value < 160; ++value) {
    const char16_t expected = expected::kWindows1252From128[value - 128];
    EXPECT_EQ(FromWindows1252(value), static_cast<wchar_t>(expected)) << value;
  }
}

}  // namespace
}  // namespace tellurvane

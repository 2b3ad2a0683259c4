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

TEST(ReplaceHTMLTest, DecodesStepByStep) {
  const struct {
    std::wstring text;
    std::wstring decoded;
  } rows[] = {
      {L"A&#66;C&#00000000065;", L"ABCA"},
      {L"&#9;", L"\t"},
      {L"&#128; &#255; &#39; &#039;", L"\u20AC \u00FF ' '"},
      {L"&#&#57;;", L"&#9;"},  // the pass does not go back
      {L"<b>x</b><B>", L"x<B>"},
      {L"<<b>b> <</b>b>", L"<b> <b>"},
      {L"</<b>b>", L""},  // "</b>" is removed after "<b>"
      {L"&amp;lt;b&amp;gt;", L"<b>"},
      {L"&amp;#65; &amp;quot; &amp;amp;lt;", L"&#65; &quot; &amp;lt;"},
      {L"&hellip; &hellipsis", L"\u2026; \u2026sis"},
      {L"a&nbsp;b&amp;nbsp;", L"a b "},
      {L"&l<b>t; &lt&semi; &#38;lt; &&#108;t; &lt&#59;", L"< < < < <"},
      {L"&&num;039; &per&#0000000099;ent;", L"' %"},
      {L"&excl&semi; &amp&amp;;", L"&excl; &amp&;"},  // "&excl;" and "&amp;" come before
      {L"&l<b>t;&#065;&amp;gt;&#65", L"<A>&#65"},
      {L"&rsquor;&lsquo;", L"\u2018\u2018"},
      // No parts of names: a NUL, and characters whose lower byte is "&" or "a".
      {L"&l\0t&semi;"s, L"&l\0t;"s},
      {L"&lt&#133;lt; &m&#154;cr;", L"&lt\u2026lt; &m\u0161cr;"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ReplaceHTML(row.text), row.decoded) << testing::PrintToString(row.text);
    EXPECT_EQ(literal::ReplaceHTML(row.text), row.decoded) << testing::PrintToString(row.text);
  }
}

TEST(ReplaceHTMLTest, LeavesWhatItDoesNotKnow) {
  for (const std::wstring text :
       {L"", L"plain", L"&#9", L"&#;", L"&#;;", L"&#x41;", L"&#256;", L"&#99999999999999999999;",
        L"&l&#256;t;", L"&AMP;&Lt;", L"&unknown;&", L"</ b>"}) {
    EXPECT_EQ(ReplaceHTML(text), text);
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

#include "radio/ReplaceHTML.h"

#include <gmock/gmock.h>

#include <string>

#include "radio/Entities.h"
#include "tests/radio/LiteralRules.h"

namespace tellurvane {
namespace {

using namespace std::string_literals;

struct Decoded {
  const wchar_t* text;
  const wchar_t* decoded;
};
constexpr Decoded kDecoded[] = {
    {L"", L""},
    {L"plain", L"plain"},
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
    {L"&#39;", L"'"},
    {L"&#039;", L"'"},
    {L"&amp;lt;b&amp;gt;", L"<b>"},
    {L"&amp;#65;", L"&#65;"},
    {L"&amp;quot;", L"&quot;"},
    {L"&amp;amp;lt;", L"&amp;lt;"},
    {L"&amp;nbsp;", L" "},
    {L"&hellip;", L"\u2026;"},
    {L"&hellipsis", L"\u2026sis"},
    {L"a&nbsp;b", L"a b"},
    {L"<b>x</b><B>", L"x<B>"},
    {L"<<b>b>", L"<b>"},  // what a removal makes is not looked at again
    {L"<</b>b>", L"<b>"},
    {L"</<b>b>", L""},  // but the second tag's turn comes later
    {L"&l<b>t;", L"<"},
    {L"&&num;039;", L"'"},
    {L"&lt&semi;", L"<"},
    {L"&excl&semi;", L"&excl;"},  // its turn was before
    {L"&#38;lt;", L"<"},
    {L"&&#108;t;", L"<"},
    {L"&lt&#59;", L"<"},
    {L"&per&#99;ent;", L"%"},
    {L"&per&#0000000099;ent;", L"%"},
    {L"&l&#256;t;", L"&l&#256;t;"},
    {L"&lt&#133;lt;", L"&lt\u2026lt;"},  // low byte of an ampersand
    {L"&m&#154;cr;", L"&m\u0161cr;"},    // low byte of an "a"
    {L"&#&#57;;", L"&#9;"},              // its place was passed already
    {L"&amp&amp;;", L"&amp&;"},
    {L"&l<b>t;&#065;&amp;gt;&#65", L"<A>&#65"},
    {L"&rsquor;&lsquo;", L"\u2018\u2018"},
    {L"&AMP;&Lt;", L"&AMP;&Lt;"},
    {L"&unknown;&", L"&unknown;&"},
};

TEST(ReplaceHTML, DecodesAsTheListHasIt) {
  for (const auto& [text, decoded] : kDecoded) {
    EXPECT_EQ(ReplaceHTML(text), decoded) << testing::PrintToString(std::wstring(text));
    EXPECT_EQ(literal::ReplaceHTML(text), decoded) << testing::PrintToString(std::wstring(text));
  }
}

TEST(ReplaceHTML, ANulIsNoPartOfAName) {
  for (const std::wstring& name : {L"&\0lt"s, L"&l\0t"s, L"&lt\0"s}) {
    EXPECT_EQ(ReplaceHTML(name + L"&semi;"), name + L";");
    EXPECT_EQ(ReplaceHTML(name + L"&#59;"), name + L";");
  }
}

TEST(ReplaceHTML, KnowsEveryNameOfTheList) {
  EXPECT_EQ(kEntities.size(), 162U);
  for (const Entity& entity : kEntities) {
    EXPECT_EQ(ReplaceHTML(L"a" + std::wstring(entity.name) + L"z"),
              std::wstring(L"a") + FromWindows1252(entity.value) + L"z")
        << testing::PrintToString(std::wstring(entity.name));
  }
}

TEST(FromWindows1252, GivesTheWesternCharacters) {
  EXPECT_EQ(FromWindows1252(65), L'A');
  // The five without a character keep their code.
  constexpr char16_t kFrom128[] = {0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021,
                                   0x2C6,  0x2030, 0x160,  0x2039, 0x152,  0x8D,   0x17D,  0x8F,
                                   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                   0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178};
  for (int value = 128; value < 160; ++value) {
    EXPECT_EQ(FromWindows1252(value), static_cast<wchar_t>(kFrom128[value - 128])) << value;
  }
  EXPECT_EQ(FromWindows1252(160), L'\u00A0');
  EXPECT_EQ(FromWindows1252(233), L'\u00E9');
}

}  // namespace
}  // namespace tellurvane

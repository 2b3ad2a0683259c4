#include "tests/radio/RandomPages.h"

#include <gtest/gtest.h>

#include "tests/radio/RuleDifference.h"

namespace tellurvane {
namespace {

constexpr std::wstring_view kDecodingPieces[] = {
    L"&",
    L"#",
    L";",
    L"amp;",
    L"&amp;",
    L"&num;",
    L"&semi;",
    L"&#3",
    L"8;",
    L"&#59",
    L"&#59;",
    L"lt;",
    L"&lt",
    L"039;",
    L"&#039",
    L"<b>",
    L"</b>",
    L"<",
    L"b>",
    L"/",
    L" ",
    L"hellip",
    L"&helli",
    L"p",
    L"&hellip",
    L"nbsp",
    L"&#",
    L"0",
    L"65;",
    L"quot;",
    L"excl",
    L"&quot",
    L"x",
    L"&gt;",
    L"é",
    L"&#108;",
    L"&#112;",
    L"&#62;",
    L"&#60;",
    L"</",
    L"<b",
    L">",
    L"&#98;",
    L"&#256;",
    L"&apos;b",
    L"&#000065",
    // Of these, a key of too few bits would not see what they are.
    {L"\0", 1},
    L"\x016C",
    L"&#233;"};
constexpr std::wstring_view kDecodingPage =
    L"<p>Rock &amp; Roll&nbsp;&#39;n&#39; <b>more</b> &amp;lt;b&amp;gt; &copy; 2&frac12; "
    L"&hellip; Caf&eacute; &amp;#65; &num;1 &quot;x&quot; &#x41; &#300; &AMP; &semi;</p>";

constexpr std::wstring_view kShoutcastPieces[] = {
    L"id:",    L"ID:",        L"\"",       L"7",
    L"\"12\"", L"mt:",        L"mt:\"a\"", L"name",
    L"name:",  L"lc:",        L"lc:3,",    L"br:",
    L",",      L"name:\"b\"", L" ",        L"br:64,",
    L"Lc:",    L"\r\n",       L"id\"",     L"\":",
    L"d",      L"i",          L"d:",       L"id:\"1\",mt:\"t\",name:\"n\",lc:2,br:3,"};
constexpr std::wstring_view kShoutcastPage =
    L"[{\"\r\nid:\"7\",\"mt:\"audio/mpeg\",\"name:\"Smooth lc:9, "
    L"Jazz\",\"lc:5,\"br:128,\"ct:\"x\"},"
    L"{\"\r\nid:\"8\",\"mt:\"audio/aacp\",\"name:\"\",\"lc:0,\"br:64,\"genre:\"Pop\"}]";

constexpr std::wstring_view kIcecastPieces[] = {L"listeners\">[",
                                                L"LISTENERS\">[5 ",
                                                L"-description\">",
                                                L"name<",
                                                L"/listen/",
                                                L".m3u",
                                                L"/listen/1.m3u",
                                                L"format\" title=\"",
                                                L"0 kbps\"",
                                                L"streams\">",
                                                L"Aac+<",
                                                L"ogg vorbis<",
                                                L"<",
                                                L"\"",
                                                L" ",
                                                L"&amp;",
                                                L"&lt;",
                                                L"&#60;",
                                                L"<b>",
                                                L"\">",
                                                L"n/",
                                                L"t\"",
                                                L"listeners&quot;>[",
                                                L"Streams&#34;&gt;"};
constexpr std::wstring_view kIcecastPage =
    L"<td class=\"stream-description\">Caf&eacute; R&amp;B</td><span class=\"listeners\">[5 "
    L"listeners]</span><a href=\"/listen/12/a.m3u\"><p class=\"format\" title=\"128 kbps\">"
    L"<a class=\"streams\">Ogg Vorbis</a>";

constexpr std::wstring_view kLiveDoorPieces[] = {L"button\"><a href=\"",
                                                 L"http://h/\"",
                                                 L"細\">",
                                                 L"名<",
                                                 L"tool/kbps_",
                                                 L"64.gif",
                                                 L"TOOL/CH_",
                                                 L"tool/ch_stereo.gif",
                                                 L"tool/type_",
                                                 L"mp3.gif",
                                                 L".gif",
                                                 L"é.gif",
                                                 L"listener\"><span>",
                                                 L"12<",
                                                 L"<",
                                                 L"\"",
                                                 L"</strong>",
                                                 L"<span class=\"many\">",
                                                 L" ",
                                                 L"l/",
                                                 L"r\">",
                                                 L"LISTENER\"><SPAN>",
                                                 L"n\"><a href=\"x\"",
                                                 L"</a></li><li class=\"user\"><strong>DJ"};
constexpr std::wstring_view kLiveDoorPage =
    L"<li class=\"button\"><a href=\"http://host:8000/a.m3u\">聴く</a></li>"
    L"<a title=\"詳細\">深夜</a></li><li class=\"user\"><strong>DJ</strong> 太郎</li>"
    L"<img src=\"/tool/kbps_64.gif\"><img src=\"/tool/ch_stereo.gif\">"
    L"<img src=\"/tool/type_mp3.gif\"><li class=\"listener\"><span>12é</span>";

constexpr std::wstring_view kHinetPieces[] = {L"item id",
                                              L"Item Id=",
                                              L"\"",
                                              L"12",
                                              L"\"12\"",
                                              L"myTitle=",
                                              L"myTitle=\"大愛\"",
                                              L"myTitle=\"大\"",
                                              L"MYTITLE=",
                                              L" ",
                                              L"item",
                                              L" id",
                                              L"Br",
                                              L"<item id=\"1\" myTitle=\"x\"/>"};
constexpr std::wstring_view kHinetPage =
    L"<list><item id=\"205\" myTitle=\"中廣流行網\"/><ITEM ID=\"1\" myTitle=\"大愛\"/>"
    L"<item id=\"7\" myTitle=\"飛揚\"/></list>";

struct Format {
  const char* name;
  Rule difference;
  std::span<const std::wstring_view> pieces;
  std::wstring_view page;
};

void PrintTo(const Format& format, std::ostream* out) { *out << format.name; }

constexpr Format kFormats[] = {
    {"ReplaceHTML", DecodingDifference, kDecodingPieces, kDecodingPage},
    {"GetShoutcast", ShoutcastDifference, kShoutcastPieces, kShoutcastPage},
    {"GetIcecast", IcecastDifference, kIcecastPieces, kIcecastPage},
    {"GetLiveDoor", LiveDoorDifference, kLiveDoorPieces, kLiveDoorPage},
    {"GetHinet", HinetDifference, kHinetPieces, kHinetPage},
};

class RandomPagesTest : public testing::TestWithParam<Format> {
 protected:
  static constexpr int kPages = 500;
};

TEST_P(RandomPagesTest, GeneratedOnesGiveWhatTheLiteralRuleGives) {
  RandomPages pages(GetParam().pieces);
  for (int i = PageCount(kPages); i > 0; --i) {
    const std::wstring page = pages.Generated();
    ASSERT_EQ(GetParam().difference(page), "") << testing::PrintToString(page);
  }
}

TEST_P(RandomPagesTest, MutatedOnesGiveWhatTheLiteralRuleGives) {
  RandomPages pages(GetParam().pieces);
  const std::wstring whole = std::wstring(GetParam().page);
  for (int i = PageCount(kPages); i > 0; --i) {
    const std::wstring page = pages.Mutated(whole + whole);
    ASSERT_EQ(GetParam().difference(page), "") << testing::PrintToString(page);
  }
}

INSTANTIATE_TEST_SUITE_P(, RandomPagesTest, testing::ValuesIn(kFormats),
                         [](const auto& format) { return std::string(format.param.name); });

}  // namespace
}  // namespace tellurvane

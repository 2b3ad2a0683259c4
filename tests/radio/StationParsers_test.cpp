#include "radio/StationParsers.h"

#include <gmock/gmock.h>

#include <random>
#include <span>

#include "tests/radio/LiteralRules.h"
#include "tests/radio/RandomPages.h"

namespace tellurvane {

void PrintTo(const StationRow& row, std::ostream* out) {
  for (const auto& field : {row.name, row.type, row.bitRate, row.url, row.listeners}) {
    *out << testing::PrintToString(field) << " ";
  }
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::wstring ShoutcastRecord(int number) {
  const std::wstring n = std::to_wstring(number);
  return L"{\"id\":\"" + n + L"\",\"mt\":\"audio/mpeg\",\"name\":\"Station " + n + L"\",\"lc\":" +
         n + L",\"br\":128,\"genre\":\"Jazz\"},";
}

TEST(GetShoutcast, CutsEachRecord) {
  const std::wstring page =
      PreparedShoutcast(L"[" + ShoutcastRecord(7) + ShoutcastRecord(8) + L"]");
  EXPECT_THAT(GetShoutcast(page),
              ElementsAre(StationRow{L"Station 7", L"audio/mpeg", L"128 kbps",
                                     L"http://yp.shoutcast.com/sbin/tunein-station.pls?id=7",
                                     L"收聽人數：7", L""},
                          StationRow{L"Station 8", L"audio/mpeg", L"128 kbps",
                                     L"http://yp.shoutcast.com/sbin/tunein-station.pls?id=8",
                                     L"收聽人數：8", L""}));
}

TEST(GetShoutcast, PreparesTheAnswer) {
  EXPECT_EQ(PreparedShoutcast(L"{\"id\":\"1\",\"mt\":\"a\"}"), L"{\"\r\nid:\"1\",\"mt:\"a\"}");
}

TEST(GetShoutcast, ListsTwoHundredOfMore) {
  std::wstring page;
  for (int i = 0; i < 250; ++i) page += ShoutcastRecord(i);
  const StationRows rows = GetShoutcast(PreparedShoutcast(page));
  ASSERT_THAT(rows, SizeIs(200));
  EXPECT_EQ(rows.back().name, L"Station 199");
}

TEST(GetShoutcast, KnowsTheMarkerInCapitals) {
  EXPECT_THAT(GetShoutcast(L"ID:\"1\" mt:\"t\" name:\"n\" lc:2,br:3,"), SizeIs(1));
  EXPECT_THAT(GetShoutcast(L"id:\"1\" MT:\"t\" name:\"n\" lc:2,br:3,"),
              ElementsAre(testing::Field(&StationRow::type, testing::Ne(L"t"))));
}

TEST(GetShoutcast, FindsNothingInAnEmptyAnswer) {
  EXPECT_THAT(GetShoutcast(L""), IsEmpty());
  EXPECT_THAT(GetShoutcast(L"an error page, 404"), IsEmpty());
}

TEST(GetShoutcast, KeepsTheFieldsThatItCannotCut) {
  const StationRows rows = GetShoutcast(L"id:\"1\" mt:\"t\" name:\"n\" lc:2,br:3, id:\"4\" mt:\"u");
  ASSERT_THAT(rows, testing::Not(IsEmpty()));
  EXPECT_EQ(
      rows.size(),
      literal::GetShoutcast(L"id:\"1\" mt:\"t\" name:\"n\" lc:2,br:3, id:\"4\" mt:\"u").size());
  EXPECT_EQ(rows[1].type, L"t");
}

std::wstring IcecastStation(const std::wstring& name, const std::wstring& bitRate,
                            const std::wstring& format) {
  return L"<td class=\"stream-description\">" + name +
         L"</td><span class=\"listeners\">[5 listeners]</span><a href=\"/listen/12/a.m3u\">"
         L"<p class=\"format\" title=\"" +
         bitRate + L"\"><a class=\"streams\">" + format + L"</a>";
}

TEST(GetIcecast, CutsEachStation) {
  EXPECT_THAT(GetIcecast(IcecastStation(L"Caf&eacute; R&amp;B", L"128 kbps", L"MP3")),
              ElementsAre(StationRow{L"Café R&B", L"MP3", L"128 kbps",
                                     L"http://dir.xiph.org/listen/12/a.m3u", L"收聽人數：5", L""}));
}

TEST(GetIcecast, NamesRatesAndFormats) {
  const struct {
    const wchar_t* bitRate;
    const wchar_t* format;
    const wchar_t* shownRate;
    const wchar_t* type;
  } cases[] = {
      {L"0 kbps", L"MP3", L"未知", L"MP3"},
      {L"", L"mp3", L"未知", L"MP3"},
      {L"64 kbps", L"Ogg Vorbis", L"64 kbps", L"OGG"},
      {L"64", L"OGG VORBIS", L"64", L"OGG"},
      {L"0 KBPS", L"AAC+", L"0 KBPS", L"AAC+"},
      {L"1", L"aac+", L"1", L"AAC+"},
      {L"1", L"AAC", L"1", L"MP3"},
      {L"1", L"", L"1", L"MP3"},
  };
  for (const auto& [bitRate, format, shownRate, type] : cases) {
    const StationRows rows = GetIcecast(IcecastStation(L"n", bitRate, format));
    ASSERT_THAT(rows, SizeIs(1));
    EXPECT_EQ(rows[0].bitRate, shownRate);
    EXPECT_EQ(rows[0].type, type);
  }
}

TEST(GetIcecast, MatchesMarkersInAnyCase) {
  EXPECT_EQ(GetIcecast(L"Listeners\">[17 x STREAMS\">MP3<").at(0).listeners, L"收聽人數：17");
}

TEST(GetIcecast, LooksForAnEndNoFurtherThanItsWindow) {
  const auto rows = [](size_t gap) {
    return GetIcecast(L"streams\">" + std::wstring(gap, L'x') + L"<").size();
  };
  EXPECT_EQ(rows(20), 1U);
  EXPECT_EQ(rows(21), 0U);
}

TEST(GetIcecast, KeepsWhatAStationLacks) {
  const StationRows rows =
      GetIcecast(IcecastStation(L"first", L"1", L"MP3") + L"<a class=\"streams\">aac+<");
  ASSERT_THAT(rows, SizeIs(2));
  EXPECT_EQ(rows[1].name, L"first");
  EXPECT_EQ(rows[1].type, L"AAC+");
}

std::wstring LiveDoorStation(const std::wstring& channel, const std::wstring& type) {
  return L"<li class=\"button\"><a href=\"http://host:8000/a.m3u\">聴く</a></li>"
         L"<a title=\"詳細\">深夜ラジオ</a></li><li class=\"user\"><strong>DJ</strong> 太郎</li>"
         L"<img src=\"/tool/kbps_64.gif\"><img src=\"/tool/ch_" +
         channel + L".gif\"><img src=\"/tool/type_" + type +
         L".gif\"><li class=\"listener\"><span><span class=\"many\">12</span>";
}

TEST(GetLiveDoor, CutsEachStation) {
  EXPECT_THAT(GetLiveDoor(PreparedLiveDoor(LiveDoorStation(L"stereo", L"mp3"))),
              ElementsAre(StationRow{L"深夜ラジオ DJ 太郎", L"MP3", L"64 kbps 雙聲道",
                                     L"http://host:8000/a.m3u", L"收聽人數：12", L""}));
}

TEST(GetLiveDoor, KnowsStereoInSmallLettersOnly) {
  for (const wchar_t* const channel : {L"Stereo", L"mono", L""}) {
    EXPECT_EQ(GetLiveDoor(PreparedLiveDoor(LiveDoorStation(channel, L"ogg"))).at(0).bitRate,
              L"64 kbps 單聲道");
  }
}

TEST(GetLiveDoor, FindsNothingWithoutTheCount) {
  EXPECT_THAT(GetLiveDoor(L"button\"><a href=\"http://host/\""), IsEmpty());
}

std::wstring HinetStation(const std::wstring& id, const std::wstring& title) {
  return L"<item id=\"" + id + L"\" myTitle=\"" + title + L"\"/>";
}

TEST(GetHinet, BuildsTheAddressFromTheId) {
  const StationSearch stations = GetHinet(HinetStation(L"205", L"中廣流行網"), L"mms://host/RA");
  EXPECT_TRUE(stations.isWhole);
  EXPECT_THAT(stations.rows, ElementsAre(StationRow{L"中廣流行網", L"WMA", L"48 kbps",
                                                    L"mms://host/RA205", L"收聽人數：未知", L""}));
  EXPECT_EQ(GetHinet(HinetStation(L"7", L"x"), L"").rows.at(0).url, L"7");
}

TEST(GetHinet, LeavesOutThirteenPrefixes) {
  for (const wchar_t* const title :
       {L"警廣交通", L"全國廣播", L"Bravo", L"news98", L"大愛", L"古都", L"真心", L"臺北電台",
        L"台灣", L"正義", L"快樂", L"非凡", L"新客家"}) {
    EXPECT_THAT(GetHinet(HinetStation(L"1", title), L"").rows, IsEmpty());
  }
  for (const wchar_t* const title : {L"愛大愛", L"bravo", L"News98", L"大", L"", L"新"}) {
    EXPECT_THAT(GetHinet(HinetStation(L"1", title), L"").rows, SizeIs(1));
  }
}

TEST(GetHinet, KnowsTheMarkerInCapitals) {
  EXPECT_THAT(GetHinet(L"ITEM ID=\"1\" myTitle=\"x\"", L"").rows, SizeIs(1));
}

TEST(GetHinet, EndsWhereAStationIsCutOff) {
  const std::wstring whole = HinetStation(L"1", L"x");
  for (const wchar_t* const rest : {L"<item id=", L"<item id=\"2", L"<item id=\"2\" other",
                                    L"<item id=\"2\" myTitle=", L"<item id=\"2\" myTitle=\"y"}) {
    const StationSearch stations = GetHinet(whole + rest, L"");
    EXPECT_THAT(stations.rows, SizeIs(1));
    EXPECT_FALSE(stations.isWhole);
  }
  EXPECT_TRUE(GetHinet(L"", L"").isWhole);
}

// Pages put together from the pieces of a rule's format, whole and broken.
class RandomPage {
 public:
  explicit RandomPage(std::span<const std::wstring_view> pieces) : pieces_(pieces) {}

  std::wstring Next() {
    std::wstring page;
    for (size_t i = Below(40); i > 0; --i) {
      page += pieces_[Below(pieces_.size())];
      if (Below(8) == 0) page += std::wstring(Below(120), L'x');
    }
    if (!page.empty() && Below(3) == 0) page.erase(Below(page.size()), 1);
    return page;
  }

 private:
  size_t Below(size_t limit) {
    return std::uniform_int_distribution<size_t>(0, limit - 1)(random_);
  }

  std::span<const std::wstring_view> pieces_;
  std::mt19937 random_{20'110'214};
};

constexpr int kPages = 1'000;

TEST(GetShoutcast, GivesWhatTheLiteralRuleGives) {
  static constexpr std::wstring_view kPieces[] = {L"id:",
                                                  L"ID:",
                                                  L"\"",
                                                  L"7",
                                                  L"\"12\"",
                                                  L"mt:",
                                                  L"mt:\"a\"",
                                                  L"name:",
                                                  L"name:\"b\"",
                                                  L"lc:",
                                                  L"lc:3,",
                                                  L"br:",
                                                  L"br:64,",
                                                  L",",
                                                  L" ",
                                                  L"\r\n",
                                                  L"id:\"1\",mt:\"t\",name:\"n\",lc:2,br:3,"};
  RandomPage pages(kPieces);
  for (int i = RandomPages(kPages); i > 0; --i) {
    const std::wstring page = pages.Next();
    ASSERT_EQ(GetShoutcast(page), literal::GetShoutcast(page)) << testing::PrintToString(page);
  }
}

TEST(GetIcecast, GivesWhatTheLiteralRuleGives) {
  static constexpr std::wstring_view kPieces[] = {L"listeners\">[",
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
                                                  L"<b>"};
  RandomPage pages(kPieces);
  for (int i = RandomPages(kPages / 5); i > 0; --i) {
    const std::wstring page = pages.Next();
    ASSERT_EQ(GetIcecast(page), literal::GetIcecast(page)) << testing::PrintToString(page);
  }
}

TEST(GetLiveDoor, GivesWhatTheLiteralRuleGives) {
  static constexpr std::wstring_view kPieces[] = {L"button\"><a href=\"",
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
                                                  L"listener\"><span>",
                                                  L"12<",
                                                  L"<",
                                                  L"\"",
                                                  L"</a></li><li class=\"user\"><strong>DJ",
                                                  L"</strong>",
                                                  L" "};
  RandomPage pages(kPieces);
  for (int i = RandomPages(kPages); i > 0; --i) {
    const std::wstring page = pages.Next();
    ASSERT_EQ(GetLiveDoor(page), literal::GetLiveDoor(page)) << testing::PrintToString(page);
  }
}

TEST(GetHinet, GivesWhatTheLiteralRuleGives) {
  static constexpr std::wstring_view kPieces[] = {L"item id",
                                                  L"Item Id=",
                                                  L"\"",
                                                  L"12",
                                                  L"\"12\"",
                                                  L"myTitle=",
                                                  L"myTitle=\"大愛\"",
                                                  L"myTitle=\"大\"",
                                                  L"<item id=\"1\" myTitle=\"x\"/>",
                                                  L"MYTITLE=",
                                                  L" "};
  RandomPage pages(kPieces);
  for (int i = RandomPages(kPages); i > 0; --i) {
    const std::wstring page = pages.Next();
    const StationSearch fast = GetHinet(page, L"p");
    const StationSearch slow = literal::GetHinet(page, L"p");
    ASSERT_EQ(fast.rows, slow.rows) << testing::PrintToString(page);
    ASSERT_EQ(fast.isWhole, slow.isWhole) << testing::PrintToString(page);
  }
}

}  // namespace
}  // namespace tellurvane

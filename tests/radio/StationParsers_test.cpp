#include "radio/StationParsers.h"

#include <gmock/gmock.h>

#include "base/Text.h"
#include "tests/radio/RuleDifference.h"

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

std::vector<StationRow> Shoutcast(const std::wstring& page) {
  return Listed(GetShoutcast(page).rows);
}
std::vector<StationRow> Icecast(const std::wstring& page) { return Listed(GetIcecast(page)); }
std::vector<StationRow> LiveDoor(const std::wstring& page) { return Listed(GetLiveDoor(page)); }
std::vector<StationRow> Hinet(const std::wstring& page, const std::wstring& prefix) {
  return Listed(GetHinet(page, prefix).rows);
}

std::wstring ShoutcastRecord(int number) {
  const std::wstring n = std::to_wstring(number);
  return L"{\"id\":\"" + n + L"\",\"mt\":\"audio/mpeg\",\"name\":\"Station " + n + L"\",\"lc\":" +
         n + L",\"br\":128,\"genre\":\"Jazz\"},";
}

TEST(GetShoutcast, CutsEachRecord) {
  const std::wstring page =
      PreparedShoutcast(L"[" + ShoutcastRecord(7) + ShoutcastRecord(8) + L"]");
  EXPECT_THAT(Shoutcast(page),
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

// What the page grows by has no room on it until enough has been taken out.
TEST(GetShoutcast, PreparesAnAnswerThatGrowsFirst) {
  for (const int grown : {1, 3, 1000, 2000, 20'000}) {
    std::wstring page = L"x";
    for (int i = 0; i < grown; ++i) page += L"id\"";
    EXPECT_EQ(PreparedShoutcast(page), Replaced(page, L"id\"", L"\r\nid")) << grown;
    for (int i = 0; i < 2 * grown; ++i) page += L"ab\":";
    page += std::wstring(20, L'y') + L"id\"z";
    const std::wstring prepared = Replaced(Replaced(page, L"id\"", L"\r\nid"), L"\":", L":");
    EXPECT_EQ(PreparedShoutcast(page), prepared) << grown;
  }
}

// More than what waits is given room for at a time.
TEST(GetShoutcast, PreparesAnAnswerWithALongTextBehindWhatGrows) {
  for (const size_t size : {4000, 5000, 9000, 100'000}) {
    const std::wstring page = L"id\"" + std::wstring(size, L'y') + L"id\"z";
    EXPECT_EQ(PreparedShoutcast(page), Replaced(page, L"id\"", L"\r\nid")) << size;
  }
}

TEST(GetShoutcast, ListsTwoHundredOfMore) {
  std::wstring page;
  for (int i = 0; i < 250; ++i) page += ShoutcastRecord(i);
  const std::vector<StationRow> rows = Shoutcast(PreparedShoutcast(page));
  ASSERT_THAT(rows, SizeIs(200));
  EXPECT_EQ(rows.back().name, L"Station 199");
}

TEST(GetShoutcast, KnowsTheMarkerInCapitals) {
  EXPECT_THAT(Shoutcast(L"ID:\"1\" mt:\"t\" name:\"n\" lc:2,br:3,"), SizeIs(1));
  EXPECT_THAT(Shoutcast(L"id:\"1\" MT:\"t\" name:\"n\" lc:2,br:3,"),
              ElementsAre(testing::Field(&StationRow::type, testing::Ne(L"t"))));
}

TEST(GetShoutcast, FindsNothingInAnEmptyAnswer) {
  EXPECT_THAT(Shoutcast(L""), IsEmpty());
  EXPECT_THAT(Shoutcast(L"an error page, 404"), IsEmpty());
}

// After a station that is cut off the search goes back to the page's beginning.
TEST(GetShoutcast, KeepsTheFieldsThatItCannotCut) {
  const StationSearch stations =
      GetShoutcast(L"id:\"1\" mt:\"t\" name:\"n\" lc:2,br:3, id:\"4\" mt:\"u");
  EXPECT_FALSE(stations.isWhole);
  const std::wstring url = L"http://yp.shoutcast.com/sbin/tunein-station.pls?id=";
  std::vector<StationRow> expected = {{L"n", L"t", L"3 kbps", url + L"1", L"收聽人數：2", L""}};
  expected.resize(
      200, {L"n", L"t", L"3 kbps", url + L"4", L"收聽人數：:\"1\" mt:\"t\" name:\"n\" lc:2", L""});
  EXPECT_EQ(Listed(stations.rows), expected);
}

TEST(GetShoutcast, SearchesNothingAfterAQuoteThatIsMissing) {
  const StationSearch stations = GetShoutcast(L"id:id:\"");
  EXPECT_FALSE(stations.isWhole);
  const StationRow row = {L"",           L"",
                          L" kbps",      L"http://yp.shoutcast.com/sbin/tunein-station.pls?id=",
                          L"收聽人數：", L""};
  EXPECT_EQ(Listed(stations.rows), std::vector<StationRow>(200, row));
}

TEST(GetShoutcast, TellsAPageThatIsCutOff) {
  const std::wstring whole = ShoutcastRecord(1) + ShoutcastRecord(2);
  std::wstring many;
  for (int i = 0; i < 199; ++i) many += ShoutcastRecord(i);
  const std::wstring noComma = L"{\"id\":\"3\",\"mt\":\"t\",\"name\":\"n\",\"lc\":1,\"br\":64}]";
  const struct {
    std::wstring page;
    bool isWhole;
    size_t rows;
  } cases[] = {
      {L"", true, 0},
      {L"[" + whole + L"]", true, 2},
      {many + ShoutcastRecord(199) + ShoutcastRecord(200), true, 200},
      {whole + noComma, false, 200},
      // The last one that is listed: nothing is searched after it.
      {many + noComma, true, 200},
      {many.substr(0, many.size() - 60), false, 200},
      {whole + L"{\"id\":", false, 200},
      {whole + L"{\"id\":\"3\",\"mt\":\"audio/mp", false, 200},
      {whole + L"{\"id\":\"3\",\"mt\":\"t\",\"name\":\"n\",\"lc\":", false, 200},
  };
  for (const auto& [page, isWhole, rows] : cases) {
    const StationSearch stations = GetShoutcast(PreparedShoutcast(page));
    EXPECT_EQ(stations.isWhole, isWhole) << testing::PrintToString(page);
    EXPECT_EQ(stations.rows.size(), rows) << testing::PrintToString(page);
  }
}

// Without a comma the search goes on at the beginning each time.
TEST(GetShoutcast, ListsAStationThatIsFoundAgainAndAgainWithoutCopies) {
  const std::wstring name(1'000'000, L'n');
  const StationRows rows = GetShoutcast(L"id:\"1\" mt:\"t\" name:\"" + name + L"\" lc:2 br:3").rows;
  ASSERT_EQ(rows.size(), 200U);
  EXPECT_EQ(rows[199].name, name);
  EXPECT_LE(sizeof(StationCuts), 48U);
}

std::wstring IcecastStation(const std::wstring& name, const std::wstring& bitRate,
                            const std::wstring& format) {
  return L"<td class=\"stream-description\">" + name +
         L"</td><span class=\"listeners\">[5 listeners]</span><a href=\"/listen/12/a.m3u\">"
         L"<p class=\"format\" title=\"" +
         bitRate + L"\"><a class=\"streams\">" + format + L"</a>";
}

TEST(GetIcecast, CutsEachStation) {
  EXPECT_THAT(Icecast(IcecastStation(L"Caf&eacute; R&amp;B", L"128 kbps", L"MP3")),
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
    const std::vector<StationRow> rows = Icecast(IcecastStation(L"n", bitRate, format));
    ASSERT_THAT(rows, SizeIs(1));
    EXPECT_EQ(rows[0].bitRate, shownRate);
    EXPECT_EQ(rows[0].type, type);
  }
}

TEST(GetIcecast, MatchesMarkersInAnyCase) {
  EXPECT_THAT(
      Icecast(
          L"Listeners\">[17 x -DESCRIPTION\">n< /Listen/9.m3u FORMAT\" Title=\"1\" STREAMS\">MP3<"),
      ElementsAre(StationRow{L"n", L"MP3", L"1", L"http://dir.xiph.org/Listen/9.m3u",
                             L"收聽人數：17", L""}));
}

TEST(GetIcecast, LooksForAnEndNoFurtherThanItsWindow) {
  const auto rows = [](size_t gap) {
    return Icecast(L"streams\">" + std::wstring(gap, L'x') + L"<").size();
  };
  EXPECT_EQ(rows(20), 1U);
  EXPECT_EQ(rows(21), 0U);
}

TEST(GetIcecast, LooksForEachEndNoFurtherThanItsWindow) {
  const auto gap = [](size_t length) { return std::wstring(length, L'x'); };
  const auto row = [](const std::wstring& field) {
    return Icecast(field + L"\" streams\"><").at(0);
  };
  EXPECT_EQ(row(L"listeners\">[" + gap(500) + L" ").listeners, L"收聽人數：" + gap(500));
  EXPECT_EQ(row(L"listeners\">[" + gap(501) + L" ").listeners, L"收聽人數：");
  EXPECT_EQ(row(L"-description\">" + gap(100) + L"<").name, gap(100));
  EXPECT_EQ(row(L"-description\">" + gap(101) + L"<").name, L"");
  const std::wstring host = L"http://dir.xiph.org/listen/";
  EXPECT_EQ(row(L"/listen/" + gap(92) + L".m3u").url, host + gap(92) + L".m3u");
  EXPECT_EQ(row(L"/listen/" + gap(93) + L".m3u").url, L"");
  EXPECT_EQ(row(L"format\" title=\"" + gap(20) + L"\"").bitRate, gap(20));
  EXPECT_EQ(row(L"format\" title=\"" + gap(21) + L"\"").bitRate, L"");
}

TEST(GetIcecast, KeepsWhatAStationLacks) {
  const std::vector<StationRow> rows =
      Icecast(IcecastStation(L"first", L"1", L"MP3") + L"<a class=\"streams\">aac+<");
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
  EXPECT_THAT(LiveDoor(PreparedLiveDoor(LiveDoorStation(L"stereo", L"mp3"))),
              ElementsAre(StationRow{L"深夜ラジオ DJ 太郎", L"MP3", L"64 kbps 雙聲道",
                                     L"http://host:8000/a.m3u", L"收聽人數：12", L""}));
}

TEST(GetLiveDoor, KnowsStereoInSmallLettersOnly) {
  EXPECT_EQ(LiveDoor(PreparedLiveDoor(LiveDoorStation(L"stereo", L"ogg"))).at(0).bitRate,
            L"64 kbps 雙聲道");
  for (const wchar_t* const channel : {L"Stereo", L"mono", L""}) {
    EXPECT_EQ(LiveDoor(PreparedLiveDoor(LiveDoorStation(channel, L"ogg"))).at(0).bitRate,
              L"64 kbps 單聲道");
  }
}

TEST(GetLiveDoor, ListsTheTypeInCapitals) {
  EXPECT_EQ(LiveDoor(PreparedLiveDoor(LiveDoorStation(L"mono", L"oggé"))).at(0).type, L"OGGÉ");
}

TEST(GetLiveDoor, LooksForEachEndNoFurtherThanItsWindow) {
  const auto gap = [](size_t length) { return std::wstring(length, L'x'); };
  const auto row = [](const std::wstring& field) {
    return LiveDoor(field + L" listener\"><span><").at(0);
  };
  EXPECT_EQ(row(L"button\"><a href=\"" + gap(500) + L"\"").url, gap(500));
  EXPECT_EQ(row(L"button\"><a href=\"" + gap(501) + L"\"").url, L"");
  EXPECT_EQ(row(L"細\">" + gap(100) + L"<").name, gap(100));
  EXPECT_EQ(row(L"細\">" + gap(101) + L"<").name, L"");
  EXPECT_EQ(row(L"tool/type_" + gap(100) + L".gif").type, std::wstring(100, L'X'));
  EXPECT_EQ(row(L"tool/type_" + gap(101) + L".gif").type, L"");
  EXPECT_EQ(row(L"tool/kbps_" + gap(100) + L".gif").bitRate, gap(100) + L" kbps 單聲道");
  EXPECT_EQ(row(L"tool/kbps_" + gap(101) + L".gif").bitRate, L" kbps 單聲道");
}

TEST(GetLiveDoor, LooksForTheChannelNoFurtherThanItsWindow) {
  // One that is not cut leaves the one before.
  const auto rate = [](size_t gap) {
    return LiveDoor(L"tool/ch_stereo.gif tool/ch_" + std::wstring(gap, L'x') +
                    L".gif listener\"><span><")
        .at(0)
        .bitRate;
  };
  EXPECT_EQ(rate(100), L" kbps 單聲道");
  EXPECT_EQ(rate(101), L" kbps 雙聲道");
}

TEST(GetLiveDoor, FindsNothingWithoutTheCount) {
  EXPECT_THAT(LiveDoor(L"button\"><a href=\"http://host/\""), IsEmpty());
  const auto stations = [](size_t gap) {
    return LiveDoor(L"listener\"><span>" + std::wstring(gap, L'x') + L"<");
  };
  EXPECT_THAT(stations(100), SizeIs(1));
  EXPECT_THAT(stations(101), IsEmpty());
}

TEST(GetLiveDoor, KeepsWhatAStationLacks) {
  const std::vector<StationRow> rows =
      LiveDoor(PreparedLiveDoor(LiveDoorStation(L"stereo", L"mp3") + L"listener\"><span>7<"));
  ASSERT_THAT(rows, SizeIs(2));
  StationRow expected = rows[0];
  expected.listeners = L"收聽人數：7";
  EXPECT_EQ(rows[1], expected);
}

std::wstring HinetStation(const std::wstring& id, const std::wstring& title) {
  return L"<item id=\"" + id + L"\" myTitle=\"" + title + L"\"/>";
}

TEST(GetHinet, BuildsTheAddressFromTheId) {
  const StationSearch stations = GetHinet(HinetStation(L"205", L"中廣流行網"), L"mms://host/RA");
  EXPECT_TRUE(stations.isWhole);
  EXPECT_THAT(Listed(stations.rows),
              ElementsAre(StationRow{L"中廣流行網", L"WMA", L"48 kbps", L"mms://host/RA205",
                                     L"收聽人數：未知", L""}));
  EXPECT_EQ(Hinet(HinetStation(L"7", L"x"), L"").at(0).url, L"7");
}

TEST(GetHinet, GivesEveryStationTheSameTypeRateAndListeners) {
  const auto rows = Hinet(HinetStation(L"1", L"a") + HinetStation(L"2", L"b"), L"");
  ASSERT_THAT(rows, SizeIs(2));
  for (const StationRow& row : rows) {
    EXPECT_EQ(row.type + row.bitRate + row.listeners, L"WMA48 kbps收聽人數：未知");
  }
}

TEST(GetHinet, LeavesOutThirteenPrefixes) {
  for (const wchar_t* const title :
       {L"警廣交通", L"全國廣播", L"Bravo", L"news98", L"大愛", L"古都", L"真心", L"臺北電台",
        L"台灣", L"正義", L"快樂", L"非凡", L"新客家"}) {
    EXPECT_THAT(Hinet(HinetStation(L"1", title), L""), IsEmpty());
  }
  for (const wchar_t* const title : {L"愛大愛", L"bravo", L"News98", L"大", L"", L"新"}) {
    EXPECT_THAT(Hinet(HinetStation(L"1", title), L""), SizeIs(1));
  }
}

TEST(GetHinet, KnowsTheMarkerInCapitals) {
  EXPECT_THAT(Hinet(L"ITEM ID=\"1\" myTitle=\"x\"", L""), SizeIs(1));
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

}  // namespace
}  // namespace tellurvane

#include "radio/StationParsers.h"

#include <gmock/gmock.h>

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

const std::wstring kTuneIn = L"http://yp.shoutcast.com/sbin/tunein-station.pls?id=";

std::vector<StationRow> Shoutcast(const std::wstring& page) {
  return Listed(GetShoutcast(page).rows);
}
std::vector<StationRow> Icecast(const std::wstring& page) { return Listed(GetIcecast(page)); }
std::vector<StationRow> LiveDoor(const std::wstring& page) {
  return Listed(GetLiveDoor(PreparedLiveDoor(page), FakeCapitals));
}
std::vector<StationRow> Hinet(const std::wstring& page, const std::wstring& prefix = L"") {
  return Listed(GetHinet(page, prefix).rows);
}

std::wstring Gap(size_t length) { return std::wstring(length, L'x'); }

std::wstring ShoutcastRecord(int number) {
  const std::wstring n = std::to_wstring(number);
  return L"{\"id\":\"" + n + L"\",\"mt\":\"audio/mpeg\",\"name\":\"Station " + n + L"\",\"lc\":" +
         n + L",\"br\":128,\"genre\":\"Jazz\"},";
}

TEST(GetShoutcastTest, CutsEachRecordOfThePreparedAnswer) {
  EXPECT_EQ(PreparedShoutcast(L"{\"id\":\"1\",\"mt\":\"a\"}"), L"{\"\r\nid:\"1\",\"mt:\"a\"}");
  EXPECT_THAT(Shoutcast(PreparedShoutcast(L"[" + ShoutcastRecord(7) + ShoutcastRecord(8) + L"]")),
              ElementsAre(StationRow{L"Station 7", L"audio/mpeg", L"128 kbps", kTuneIn + L"7",
                                     L"收聽人數：7", L""},
                          StationRow{L"Station 8", L"audio/mpeg", L"128 kbps", kTuneIn + L"8",
                                     L"收聽人數：8", L""}));
}

TEST(GetShoutcastTest, FindsTheIdInAnyCaseAndTheOtherMarkersExactly) {
  EXPECT_EQ(Shoutcast(L"ID:\"1\" mt:\"t\" name:\"n\" lc:2,br:3,").at(0).type, L"t");
  EXPECT_NE(Shoutcast(L"id:\"1\" MT:\"t\" name:\"n\" lc:2,br:3,").at(0).type, L"t");
}

TEST(GetShoutcastTest, FindsNothingInAnEmptyAnswer) {
  EXPECT_THAT(Shoutcast(L""), IsEmpty());
  EXPECT_THAT(Shoutcast(L"an error page, 404"), IsEmpty());
}

// After a station that is cut off the search goes back to the page's beginning.
TEST(GetShoutcastTest, KeepsTheFieldsThatItCannotCut) {
  std::vector<StationRow> expected = {{L"n", L"t", L"3 kbps", kTuneIn + L"1", L"收聽人數：2", L""}};
  expected.resize(200, {L"n", L"t", L"3 kbps", kTuneIn + L"4",
                        L"收聽人數：:\"1\" mt:\"t\" name:\"n\" lc:2", L""});
  EXPECT_EQ(Shoutcast(L"id:\"1\" mt:\"t\" name:\"n\" lc:2,br:3, id:\"4\" mt:\"u"), expected);
}

TEST(GetShoutcastTest, SearchesNothingAfterAQuoteThatIsMissing) {
  const StationRow row = {L"", L"", L" kbps", kTuneIn, L"收聽人數：", L""};
  EXPECT_EQ(Shoutcast(L"id:id:\""), std::vector<StationRow>(200, row));
}

TEST(GetShoutcastTest, ListsAtMostTwoHundredAndReportsAPageThatIsCutOff) {
  const std::wstring whole = ShoutcastRecord(1) + ShoutcastRecord(2);
  std::wstring many;
  for (int i = 0; i < 199; ++i) many += ShoutcastRecord(i);
  std::wstring more = many;
  for (int i = 199; i < 250; ++i) more += ShoutcastRecord(i);
  const std::wstring noComma = L"{\"id\":\"3\",\"mt\":\"t\",\"name\":\"n\",\"lc\":1,\"br\":64}]";
  const struct {
    std::wstring page;
    bool isWhole;
    size_t rows;
  } cases[] = {
      {L"", true, 0},
      {L"[" + whole + L"]", true, 2},
      {more, true, 200},
      {whole + noComma, false, 200},
      {many + noComma, true, 200},  // nothing is searched after the last row
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
  EXPECT_EQ(Shoutcast(PreparedShoutcast(more)).back().name, L"Station 199");
}

std::wstring IcecastStation(const std::wstring& bitRate, const std::wstring& format) {
  return L"<td class=\"stream-description\">Caf&eacute; R&amp;B</td>"
         L"<span class=\"listeners\">[5 listeners]</span><a href=\"/listen/12/a.m3u\">"
         L"<p class=\"format\" title=\"" +
         bitRate + L"\"><a class=\"streams\">" + format + L"</a>";
}

TEST(GetIcecastTest, CutsEachStationAndKeepsWhatTheNextOneLacks) {
  const std::wstring url = L"http://dir.xiph.org/listen/12/a.m3u";
  EXPECT_THAT(Icecast(IcecastStation(L"128 kbps", L"MP3") + L"<a class=\"streams\">aac+<"),
              ElementsAre(StationRow{L"Café R&B", L"MP3", L"128 kbps", url, L"收聽人數：5", L""},
                          StationRow{L"Café R&B", L"AAC+", L"128 kbps", url, L"收聽人數：5", L""}));
  EXPECT_THAT(Icecast(L"streams\">MP3<"),
              ElementsAre(StationRow{L"", L"MP3", L"", L"", L"收聽人數：", L""}));
}

TEST(GetIcecastTest, NamesRatesAndFormats) {
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
    const StationRow row = Icecast(IcecastStation(bitRate, format)).at(0);
    EXPECT_EQ(row.bitRate, shownRate);
    EXPECT_EQ(row.type, type);
  }
}

TEST(GetIcecastTest, MatchesMarkersInAnyCase) {
  EXPECT_THAT(Icecast(L"Listeners\">[17 x -DESCRIPTION\">n< /Listen/9.m3u FORMAT\" Title=\"1\" "
                      L"STREAMS\">MP3<"),
              ElementsAre(StationRow{L"n", L"MP3", L"1", L"http://dir.xiph.org/Listen/9.m3u",
                                     L"收聽人數：17", L""}));
}

TEST(GetIcecastTest, LooksForEachEndNoFurtherThanItsWindow) {
  const auto row = [](const std::wstring& field) {
    return Icecast(field + L"\" streams\"><").at(0);
  };
  EXPECT_EQ(row(L"listeners\">[" + Gap(500) + L" ").listeners, L"收聽人數：" + Gap(500));
  EXPECT_EQ(row(L"listeners\">[" + Gap(501) + L" ").listeners, L"收聽人數：");
  EXPECT_EQ(row(L"-description\">" + Gap(100) + L"<").name, Gap(100));
  EXPECT_EQ(row(L"-description\">" + Gap(101) + L"<").name, L"");
  const std::wstring host = L"http://dir.xiph.org/listen/";
  EXPECT_EQ(row(L"/listen/" + Gap(92) + L".m3u").url, host + Gap(92) + L".m3u");
  EXPECT_EQ(row(L"/listen/" + Gap(93) + L".m3u").url, L"");
  EXPECT_EQ(row(L"format\" title=\"" + Gap(20) + L"\"").bitRate, Gap(20));
  EXPECT_EQ(row(L"format\" title=\"" + Gap(21) + L"\"").bitRate, L"");
  EXPECT_THAT(Icecast(L"streams\">" + Gap(20) + L"<"), SizeIs(1));
  EXPECT_THAT(Icecast(L"streams\">" + Gap(21) + L"<"), IsEmpty());
}

std::wstring LiveDoorStation(const std::wstring& channel) {
  return L"<li class=\"button\"><a href=\"http://host:8000/a.m3u\">聴く</a></li>"
         L"<a title=\"詳細\">深夜ラジオ</a></li><li class=\"user\"><strong>DJ</strong> 太郎</li>"
         L"<img src=\"/tool/kbps_64.gif\"><img src=\"/tool/ch_" +
         channel +
         L".gif\"><img src=\"/tool/type_oggé.gif\">"
         L"<li class=\"listener\"><span><span class=\"many\">12</span>";
}

TEST(GetLiveDoorTest, CutsEachStationAndKeepsWhatTheNextOneLacks) {
  const std::wstring name = L"深夜ラジオ DJ 太郎";
  const std::wstring url = L"http://host:8000/a.m3u";
  EXPECT_THAT(LiveDoor(LiveDoorStation(L"stereo") + L"LISTENER\"><SPAN>7é<"),
              ElementsAre(StationRow{name, L"OGGÉ", L"64 kbps 雙聲道", url, L"收聽人數：12", L""},
                          StationRow{name, L"OGGÉ", L"64 kbps 雙聲道", url, L"收聽人數：7É", L""}));
}

TEST(GetLiveDoorTest, KnowsStereoInSmallLettersOnly) {
  for (const wchar_t* const channel : {L"Stereo", L"mono", L""}) {
    EXPECT_EQ(LiveDoor(LiveDoorStation(channel)).at(0).bitRate, L"64 kbps 單聲道");
  }
}

TEST(GetLiveDoorTest, LooksForEachEndNoFurtherThanItsWindow) {
  const auto row = [](const std::wstring& field) {
    return LiveDoor(field + L" listener\"><span><").at(0);
  };
  EXPECT_EQ(row(L"button\"><a href=\"" + Gap(500) + L"\"").url, Gap(500));
  EXPECT_EQ(row(L"button\"><a href=\"" + Gap(501) + L"\"").url, L"");
  EXPECT_EQ(row(L"細\">" + Gap(100) + L"<").name, Gap(100));
  EXPECT_EQ(row(L"細\">" + Gap(101) + L"<").name, L"");
  EXPECT_EQ(row(L"tool/type_" + Gap(100) + L".gif").type, std::wstring(100, L'X'));
  EXPECT_EQ(row(L"tool/type_" + Gap(101) + L".gif").type, L"");
  EXPECT_EQ(row(L"tool/kbps_" + Gap(100) + L".gif").bitRate, Gap(100) + L" kbps 單聲道");
  EXPECT_EQ(row(L"tool/kbps_" + Gap(101) + L".gif").bitRate, L" kbps 單聲道");
  const std::wstring stereo = L"tool/ch_stereo.gif tool/ch_";
  EXPECT_EQ(row(stereo + Gap(100) + L".gif").bitRate, L" kbps 單聲道");
  EXPECT_EQ(row(stereo + Gap(101) + L".gif").bitRate, L" kbps 雙聲道");
  EXPECT_THAT(LiveDoor(L"listener\"><span>" + Gap(100) + L"<"), SizeIs(1));
  EXPECT_THAT(LiveDoor(L"listener\"><span>" + Gap(101) + L"<"), IsEmpty());
  EXPECT_THAT(LiveDoor(L"button\"><a href=\"http://host/\""), IsEmpty());
}

std::wstring HinetStation(const std::wstring& id, const std::wstring& title) {
  return L"<item id=\"" + id + L"\" myTitle=\"" + title + L"\"/>";
}

TEST(GetHinetTest, ListsIdAndTitleWithAFixedTypeRateAndListeners) {
  const std::wstring listeners = L"收聽人數：未知";
  EXPECT_THAT(
      Hinet(HinetStation(L"205", L"中廣流行網") + L"ITEM ID=\"7\" myTitle=\"x\"", L"mms://host/RA"),
      ElementsAre(
          StationRow{L"中廣流行網", L"WMA", L"48 kbps", L"mms://host/RA205", listeners, L""},
          StationRow{L"x", L"WMA", L"48 kbps", L"mms://host/RA7", listeners, L""}));
  EXPECT_EQ(Hinet(HinetStation(L"7", L"x")).at(0).url, L"7");
}

TEST(GetHinetTest, LeavesOutThirteenPrefixes) {
  for (const wchar_t* const title :
       {L"警廣交通", L"全國廣播", L"Bravo", L"news98", L"大愛", L"古都", L"真心", L"臺北電台",
        L"台灣", L"正義", L"快樂", L"非凡", L"新客家"}) {
    EXPECT_THAT(Hinet(HinetStation(L"1", title)), IsEmpty());
  }
  for (const wchar_t* const title : {L"愛大愛", L"bravo", L"News98", L"大", L"", L"新"}) {
    EXPECT_THAT(Hinet(HinetStation(L"1", title)), SizeIs(1));
  }
}

TEST(GetHinetTest, EndsAtAStationThatIsCutOff) {
  for (const wchar_t* const rest : {L"<item id=", L"<item id=\"2", L"<item id=\"2\" other",
                                    L"<item id=\"2\" myTitle=", L"<item id=\"2\" myTitle=\"y"}) {
    const StationSearch stations = GetHinet(HinetStation(L"1", L"x") + rest, L"");
    EXPECT_THAT(stations.rows, SizeIs(1));
    EXPECT_FALSE(stations.isWhole);
  }
  EXPECT_TRUE(GetHinet(L"", L"").isWhole);
}

TEST(StationRowsTest, MakeRowsOfThePageEvenAfterTheyWereMoved) {
  StationRows found = GetHinet(L"item id=\"1\" myTitle=\"jazz\"", L"").rows;
  const StationRows rows = std::move(found);
  EXPECT_EQ(rows[0].name, L"jazz");
  EXPECT_EQ(rows.Head(0, 3).name, L"jaz");
  EXPECT_EQ(rows.Head(0, 4), rows[0]);
  EXPECT_TRUE(StationRows().empty());
  EXPECT_FALSE(rows.empty());
}

}  // namespace
}  // namespace tellurvane

#include "radio/StationParsers.h"

#include <gmock/gmock.h>

#include "tests/radio/RuleDifference.h"
#include "tests/radio/SamplePages.h"

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

std::vector<StationRow> Listed(const StationRows& rows) {
  std::vector<StationRow> listed;
  for (size_t i = 0; i < rows.size(); ++i) listed.push_back(rows[i]);
  return listed;
}

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
  // The search for the listeners begins with the name.
  EXPECT_THAT(
      Shoutcast(PreparedShoutcast(kShoutcastSample)),
      ElementsAre(StationRow{L"Smooth lc:9, Jazz", L"audio/mpeg", L"128 kbps", kTuneIn + L"7",
                             L"收聽人數：9", L""},
                  StationRow{L"", L"audio/aacp", L"64 kbps", kTuneIn + L"8", L"收聽人數：0", L""}));
}

TEST(GetShoutcastTest, FindsTheIdInAnyCaseAndTheOtherMarkersExactly) {
  EXPECT_EQ(Shoutcast(L"ID:\"1\" mt:\"t\" name:\"n\" lc:2,br:3,").at(0).type, L"t");
  EXPECT_NE(Shoutcast(L"id:\"1\" MT:\"t\" name:\"n\" lc:2,br:3,").at(0).type, L"t");
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
      {whole + L"{\"id\":\"3\",\"mt\":\"t\",\"name\":\"n\",\"lc\":", false, 200},
  };
  for (const auto& [page, isWhole, rows] : cases) {
    const StationSearch stations = GetShoutcast(PreparedShoutcast(page));
    EXPECT_EQ(stations.isWhole, isWhole) << testing::PrintToString(page);
    EXPECT_EQ(stations.rows.size(), rows) << testing::PrintToString(page);
  }
  EXPECT_EQ(Shoutcast(PreparedShoutcast(more)).back().name, L"Station 199");
}

TEST(GetIcecastTest, CutsEachStationAndKeepsWhatTheNextOneLacks) {
  const StationRow first = {L"Rock & Roll, Café…; 'n' more",
                            L"OGG",
                            L"128 kbps",
                            L"http://dir.xiph.org/listen/12/listen.m3u",
                            L"收聽人數：5",
                            L""};
  StationRow second = first;
  second.type = L"AAC+";
  EXPECT_THAT(Icecast(std::wstring(kIcecastSample) + L"streams\">aac+<"),
              ElementsAre(first, second));
  EXPECT_THAT(Icecast(L"streams\">MP3<"),
              ElementsAre(StationRow{L"", L"MP3", L"", L"", L"收聽人數：", L""}));
}

TEST(GetIcecastTest, NamesRatesAndFormats) {
  const struct {
    std::wstring bitRate;
    std::wstring format;
    const wchar_t* shownRate;
    const wchar_t* type;
  } rows[] = {
      {L"0 kbps", L"MP3", L"未知", L"MP3"},  {L"", L"AAC", L"未知", L"MP3"},
      {L"64", L"Ogg Vorbis", L"64", L"OGG"}, {L"0 KBPS", L"AAC+", L"0 KBPS", L"AAC+"},
      {L"1", L"aac+", L"1", L"AAC+"},        {L"1", L"", L"1", L"MP3"},
  };
  for (const auto& row : rows) {
    const StationRow found =
        Icecast(L"format\" title=\"" + row.bitRate + L"\" streams\">" + row.format + L"<").at(0);
    EXPECT_EQ(found.bitRate, row.shownRate);
    EXPECT_EQ(found.type, row.type);
  }
}

TEST(GetIcecastTest, MatchesMarkersInAnyCase) {
  EXPECT_THAT(Icecast(L"Listeners\">[17 x -DESCRIPTION\">n< /Listen/9.m3u FORMAT\" Title=\"1\" "
                      L"STREAMS\">MP3<"),
              ElementsAre(StationRow{L"n", L"MP3", L"1", L"http://dir.xiph.org/Listen/9.m3u",
                                     L"收聽人數：17", L""}));
  EXPECT_EQ(Icecast(L"/listen/1.M3U streams\">MP3<").at(0).url, L"") << "but ends exactly";
}

TEST(GetLiveDoorTest, CutsEachStationAndKeepsWhatTheNextOneLacks) {
  const StationRow first = {
      L"深夜のアニメソング放送局 DJ 太郎", L"MP3",           L"128 kbps 雙聲道",
      L"http://host.example:8000/a.m3u",   L"收聽人數：12É", L""};
  StationRow second = first;
  second.listeners = L"收聽人數：7";
  EXPECT_THAT(LiveDoor(std::wstring(kLiveDoorSample) + L"LISTENER\"><SPAN>7<"),
              ElementsAre(first, second));
}

TEST(GetLiveDoorTest, JoinsTheNamesBeforeItRemovesTheTags) {
  const std::wstring page = L"細\">a</a></li><li class=\"user\"></strong><strong>DJ x< ";
  EXPECT_EQ(LiveDoor(page + L"listener\"><span>1<").at(0).name, L"a");
}

TEST(GetLiveDoorTest, KnowsStereoInSmallLettersOnly) {
  for (const std::wstring channel : {L"Stereo", L"mono", L""}) {
    EXPECT_EQ(LiveDoor(L"tool/ch_" + channel + L".gif listener\"><span><").at(0).bitRate,
              L" kbps 單聲道");
  }
}

TEST(StationFieldsTest, EndWithinTheirWindowsOrKeepTheirTexts) {
  constexpr const wchar_t* kIcecastRow = L"\" streams\"><";
  constexpr const wchar_t* kLiveDoorRow = L" listener\"><span><";
  const struct {
    std::vector<StationRow> (*parser)(const std::wstring& page);
    std::wstring marker;
    size_t window;
    std::wstring end;
    const wchar_t* row;
    std::wstring StationRow::*field;
    std::wstring start;  // of the field's text
  } rows[] = {
      {Icecast, L"listeners\">[", 500, L" ", kIcecastRow, &StationRow::listeners, L"收聽人數："},
      {Icecast, L"-description\">", 100, L"<", kIcecastRow, &StationRow::name, L""},
      {Icecast, L"/listen/", 92, L".m3u", kIcecastRow, &StationRow::url,
       L"http://dir.xiph.org/listen/"},
      {Icecast, L"format\" title=\"", 20, L"\"", kIcecastRow, &StationRow::bitRate, L""},
      {LiveDoor, L"button\"><a href=\"", 500, L"\"", kLiveDoorRow, &StationRow::url, L""},
      {LiveDoor, L"細\">", 100, L"<", kLiveDoorRow, &StationRow::name, L""},
      {LiveDoor, L"tool/type_", 100, L".gif", kLiveDoorRow, &StationRow::type, L""},
      {LiveDoor, L"tool/kbps_", 100, L".gif", kLiveDoorRow, &StationRow::bitRate, L""},
  };
  for (const auto& row : rows) {
    const auto text = [&](size_t gap) {
      return row.parser(row.marker + std::wstring(gap, L'X') + row.end + row.row).at(0).*row.field;
    };
    const std::wstring expected = row.start + std::wstring(row.window, L'X');
    EXPECT_THAT(text(row.window), testing::StartsWith(expected));
    EXPECT_THAT(text(row.window + 1), testing::Not(testing::HasSubstr(L"X"))) << row.window;
  }
  const std::wstring stereo = L"tool/ch_stereo.gif tool/ch_";
  EXPECT_EQ(LiveDoor(stereo + Gap(100) + L".gif" + kLiveDoorRow).at(0).bitRate, L" kbps 單聲道");
  EXPECT_EQ(LiveDoor(stereo + Gap(101) + L".gif" + kLiveDoorRow).at(0).bitRate, L" kbps 雙聲道");
}

TEST(StationFieldsTest, GiveNoRowWithoutTheEndOfTheLastOne) {
  EXPECT_THAT(Icecast(L"streams\">" + Gap(20) + L"<"), SizeIs(1));
  EXPECT_THAT(Icecast(L"streams\">" + Gap(21) + L"<"), IsEmpty());
  EXPECT_THAT(LiveDoor(L"listener\"><span>" + Gap(100) + L"<"), SizeIs(1));
  EXPECT_THAT(LiveDoor(L"listener\"><span>" + Gap(101) + L"<"), IsEmpty());
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

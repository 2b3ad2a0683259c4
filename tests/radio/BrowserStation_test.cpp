#include "radio/BrowserStation.h"

#include <gmock/gmock.h>

#include "tests/radio/BrowserRules.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Stations = std::vector<BrowserStation>;

bool IsHttp(const std::wstring& address) { return address.starts_with(L"http"); }

std::vector<StationRow> Rows(const Stations& stations) {
  const StationRows rows = RowsOf(stations, IsHttp);
  std::vector<StationRow> texts;
  for (size_t i = 0; i < rows.size(); ++i) texts.push_back(rows[i]);
  return texts;
}

TEST(BrowserStationTest, ShowsAStationAsARow) {
  const struct {
    BrowserStation station;
    StationRow row;
  } rows[] = {
      {{L"臺灣之音", L"MP3", L"128", L"http://a", L"https://b/stream", L"0"},
       {L"臺灣之音", L"MP3", L"128 kbps", L"https://b/stream", L"收聽人數：未知", L""}},
      {{L" \t A\r\nB\x2028\x85"
        L"C\x2029\x01 ",
        L" AAC+ ", L"0", L" http://a\n", L"", L""},
       {L"A  B  C", L"AAC+", L"未知", L"http://a", L"收聽人數：未知", L""}},
      {{L"", L"", L"", L"http://a", L"", L""},
       {L"（沒有名稱）", L"", L"未知", L"http://a", L"收聽人數：未知", L""}},
      {{L" \n ", L"OGG", L"-5", L"http://a", L" ", L"0"},
       {L"（沒有名稱）", L"OGG", L"未知", L"http://a", L"收聽人數：未知", L""}},
      {{L"n", L"FLAC", L"fast", L"http://a", L"rtsp://b", L""},
       {L"n", L"FLAC", L"未知", L"http://a", L"收聽人數：未知", L""}},
      {{L"n", L"MP3", L"320", L"rtsp://a", L"http://b", L""},
       {L"n", L"MP3", L"320 kbps", L"http://b", L"收聽人數：未知", L""}},
      {{L"n", L"MP3", L"320", L"\thttp://a b\r\n", L"http://b\nc", L""},
       {L"n", L"MP3", L"320 kbps", L"http://a b", L"收聽人數：未知", L""}},
  };
  for (const auto& row : rows) EXPECT_THAT(Rows({row.station}), ElementsAre(row.row));
}

TEST(BrowserStationTest, LeavesOutWhatCannotBePlayed) {
  EXPECT_THAT(Rows({}), IsEmpty());
  EXPECT_THAT(Rows({{L"in pieces", L"AAC", L"64", L"http://a", L"http://b", L"1"},
                    {L"no address", L"MP3", L"64", L"", L" ", L"0"},
                    {L"rejected", L"MP3", L"64", L"rtsp://a", L"ftp://b", L"0"},
                    {L"line breaks", L"MP3", L"64", L"http://a\tb", L"http://a\x85\x2028z", L"0"}}),
              IsEmpty());
}

TEST(BrowserStationTest, KeepsTheOrderAndRepeatedStations) {
  std::wstring names;
  for (const StationRow& row : Rows({{.name = L"z", .url = L"http://1"},
                                     {.name = L"b", .url = L"http://2"},
                                     {.name = L"z", .url = L"http://1"},
                                     {.name = L"a", .url = L"http://2"}})) {
    names += row.name;
  }
  EXPECT_EQ(names, L"zbza");
}

TEST(BrowserStationTest, CutsLongTextsForPainting) {
  const StationRows rows =
      RowsOf({{.name = L"abc", .codec = L"MP3", .bitRate = L"64", .url = L"http://1"}}, IsHttp);
  EXPECT_EQ(rows.Head(0, 2).name, L"ab");
  EXPECT_EQ(rows.Head(0, 2).type, L"MP");
}

TEST(BrowserStationTest, KeepsItsRulesForOddAttributes) {
  for (const wchar_t* const text :
       {L"", L"\n\n\n\n", L"a\rb\nMP3\n1e99\nhttp://a\n\n0\na\nb\n\nhttp://a",
        L"\t\n\x7F\n\nhttp\t", L"n\nc\n 12 \nhttp:// \nhttp://\t\n2"}) {
    EXPECT_EQ(RowsFault(text), "") << testing::PrintToString(std::wstring(text));
  }
}

}  // namespace
}  // namespace tellurvane

#include "radio/DirectorySearch.h"

#include <gtest/gtest.h>

#include "tests/radio/RuleDifference.h"

namespace tellurvane {
namespace {

using enum DirectorySource;
using enum SearchMode;

TEST(DirectorySearchTest, SendsTheTermAsItIs) {
  const struct {
    DirectoryQuery query;
    const wchar_t* address;
  } rows[] = {
      {{kShoutcast, kGenre, L"new age"},
       L"http://www.shoutcast.com/embed_module?reqType=GENRE_SEARCH&cnt=999&s=new age"},
      {{kShoutcast, kKeyword, L" 台北 R&B?"},
       L"http://www.shoutcast.com/embed_module?reqType=KEYWORD_SEARCH&cnt=999&s= 台北 R&B?"},
      {{kIcecast, kGenre, L"R&B"}, L"http://dir.xiph.org/search?search=R&B"},
      {{kLiveDoor, kKeyword, L"x"}, L"http://live.ladio.livedoor.com/list/a"},
      {{kHinet, kGenre, L"x"}, L"http://hichannel.hinet.net/xml/radioList.jsp"},
  };
  for (const auto& row : rows) {
    std::wstring address;
    const auto fetch = [&](const std::wstring& url) {
      address = url;
      return std::wstring();
    };
    SearchDirectory(row.query, {fetch, FakeCapitals, L""});
    EXPECT_EQ(address, row.address);
  }
}

TEST(DirectorySearchTest, ReadsEachDirectorysPage) {
  const struct {
    DirectorySource source;
    const wchar_t* page;
    const wchar_t* url;
    bool isWhole;
  } rows[] = {
      {kShoutcast, L"{\"id\":\"7\",\"mt\":\"t\",\"name\":\"n\",\"lc\":1,\"br\":64,}",
       L"http://yp.shoutcast.com/sbin/tunein-station.pls?id=7", true},
      {kIcecast, L"/listen/12/a.m3u\"><a class=\"streams\">MP3<",
       L"http://dir.xiph.org/listen/12/a.m3u", true},
      {kLiveDoor, L"button\"><a href=\"u\">listener\"><span><span class=\"many\">12<", L"u", true},
      {kHinet, L"<item id=\"205\" myTitle=\"n\"/><item id=\"2", L"mms://host/RA205", false},
  };
  for (const auto& row : rows) {
    const auto fetch = [&](const std::wstring& /*url*/) { return row.page; };
    const StationSearch found =
        SearchDirectory({row.source, kGenre, L""}, {fetch, FakeCapitals, L"mms://host/RA"});
    EXPECT_EQ(found.isWhole, row.isWhole) << row.page;
    ASSERT_EQ(found.rows.size(), 1U) << row.page;
    EXPECT_EQ(found.rows[0].url, row.url);
  }
}

TEST(DirectorySearchTest, LeavesRadioBrowserToItsOwnSearch) {
  for (const DirectorySource source : {kRadioBrowser, kRadioBrowserTaiwan}) {
    DirectoryQuery asked;
    const auto search = [&](const DirectoryQuery& query) {
      asked = query;
      return StationSearch{{}, false};
    };
    const StationSearch found = SearchDirectory({source, kKeyword, L"台北"}, {{}, {}, {}, search});
    EXPECT_FALSE(found.isWhole);
    EXPECT_EQ(asked.source, source);
    EXPECT_EQ(asked.mode, kKeyword);
    EXPECT_EQ(asked.term, L"台北");
  }
}

TEST(GenresTest, HaveTheirLabelsAndKeysInOrder) {
  std::wstring labels, keys;
  for (const Genre& genre : kGenres) {
    (labels += genre.label) += L"|";
    (keys += genre.key) += L"|";
  }
  EXPECT_EQ(
      labels,
      L"Top 精選 (Top Streams)|另類音樂 (Alternative)|古典音樂 (Classical)|當代音樂 "
      L"(Contemporary)|喜劇音樂 (Comedy)|鄉村音樂 (Country)|心靈音樂 (Spiritual)|新世紀音樂 (New "
      L"Age)|懷舊音樂 (Oldies)|日本音樂 (Japan)|舞曲音樂 (Dance/House)|斯卡音樂 (Ska)|瘋克音樂 "
      L"(Funk)|爵士音樂 (Jazz)|重金屬音樂 (Metal)|混合音樂 (Mixed)|饒舌音樂 (Rap)|流行音樂 "
      L"(Pop)|節奏藍調 (R&B)|搖滾音樂 (Rock)|說唱音樂 (Talk)|數位音樂 (Techno)|拉丁音樂 "
      L"(Latin)|70 年代音樂 (The '70s)|80 年代音樂 (The '80s)|90 年代音樂 (The '90s)|國家音樂 "
      L"(World)|遊戲音樂 (Game)|");
  EXPECT_EQ(keys,
            L"top|alternative|classical|contemporary|comedy|country|spiritual|new age|oldies|jpop|"
            L"dance|ska|funk|jazz|metal|mixed|rap|pop|R&B|rock|talk|techno|latin|70s|80s|90s|"
            L"world|game|");
}

}  // namespace
}  // namespace tellurvane

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
      {{kIcecast, kKeyword, L""}, L"http://dir.xiph.org/search?search="},
      {{kLiveDoor, kKeyword, L"x"}, L"http://live.ladio.livedoor.com/list/a"},
      {{kHinet, kGenre, L"x"}, L"http://hichannel.hinet.net/xml/radioList.jsp"},
  };
  for (const auto& row : rows) EXPECT_EQ(AddressOf(row.query), row.address);
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

TEST(DirectorySearchTest, OnlyShoutcastAndIcecastCanSearch) {
  EXPECT_TRUE(CanSearch(kShoutcast));
  EXPECT_TRUE(CanSearch(kIcecast));
  EXPECT_FALSE(CanSearch(kLiveDoor));
  EXPECT_FALSE(CanSearch(kHinet));
}

TEST(GenresTest, HaveTheirLabelsAndKeysInOrder) {
  const Genre expected[] = {
      {L"Top 精選 (Top Streams)", L"top"},
      {L"另類音樂 (Alternative)", L"alternative"},
      {L"古典音樂 (Classical)", L"classical"},
      {L"當代音樂 (Contemporary)", L"contemporary"},
      {L"喜劇音樂 (Comedy)", L"comedy"},
      {L"鄉村音樂 (Country)", L"country"},
      {L"心靈音樂 (Spiritual)", L"spiritual"},
      {L"新世紀音樂 (New Age)", L"new age"},
      {L"懷舊音樂 (Oldies)", L"oldies"},
      {L"日本音樂 (Japan)", L"jpop"},
      {L"舞曲音樂 (Dance/House)", L"dance"},
      {L"斯卡音樂 (Ska)", L"ska"},
      {L"瘋克音樂 (Funk)", L"funk"},
      {L"爵士音樂 (Jazz)", L"jazz"},
      {L"重金屬音樂 (Metal)", L"metal"},
      {L"混合音樂 (Mixed)", L"mixed"},
      {L"饒舌音樂 (Rap)", L"rap"},
      {L"流行音樂 (Pop)", L"pop"},
      {L"節奏藍調 (R&B)", L"R&B"},
      {L"搖滾音樂 (Rock)", L"rock"},
      {L"說唱音樂 (Talk)", L"talk"},
      {L"數位音樂 (Techno)", L"techno"},
      {L"拉丁音樂 (Latin)", L"latin"},
      {L"70 年代音樂 (The '70s)", L"70s"},
      {L"80 年代音樂 (The '80s)", L"80s"},
      {L"90 年代音樂 (The '90s)", L"90s"},
      {L"國家音樂 (World)", L"world"},
      {L"遊戲音樂 (Game)", L"game"},
  };
  ASSERT_EQ(kGenres.size(), std::size(expected));
  for (size_t i = 0; i < kGenres.size(); ++i) {
    EXPECT_STREQ(kGenres[i].label, expected[i].label);
    EXPECT_STREQ(kGenres[i].key, expected[i].key);
  }
}

}  // namespace
}  // namespace tellurvane

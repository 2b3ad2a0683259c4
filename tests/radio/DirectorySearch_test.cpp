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

TEST(GenresTest, HaveTheirKeysInOrder) {
  std::wstring keys;
  for (const Genre& genre : kGenres) keys += std::wstring(genre.key) + L"|";
  EXPECT_EQ(keys,
            L"top|alternative|classical|contemporary|comedy|country|spiritual|new age|oldies|jpop|"
            L"dance|ska|funk|jazz|metal|mixed|rap|pop|R&B|rock|talk|techno|latin|70s|80s|90s|world|"
            L"game|");
  EXPECT_STREQ(kGenres.front().label, L"Top 精選 (Top Streams)");
  EXPECT_STREQ(kGenres.back().label, L"遊戲音樂 (Game)");
}

}  // namespace
}  // namespace tellurvane

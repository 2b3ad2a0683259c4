#include "radio/DirectorySearch.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "tests/radio/RuleDifference.h"

namespace tellurvane {
namespace {

using enum DirectorySource;
using enum SearchMode;

StationSearch SearchPage(const DirectoryQuery& query, const std::wstring& page,
                         std::wstring& fetched) {
  return SearchDirectory(query, {.fetch =
                                     [&](const std::wstring& url) {
                                       fetched = url;
                                       return page;
                                     },
                                 .toCapitals = FakeCapitals,
                                 .hinetUrl = L"mms://host/RA"});
}

TEST(DirectorySearchTest, FetchesTheDirectorysPageWithTheTermAsItIsAndReadsIt) {
  const std::wstring shoutcast = L"{\"id\":\"7\",\"mt\":\"t\",\"name\":\"n\",\"lc\":1,\"br\":64,}";
  const std::wstring icecast = L"<a href=\"/listen/12/a.m3u\"><a class=\"streams\">MP3</a>";
  const struct {
    DirectoryQuery query;
    const wchar_t* address;
    std::wstring page;
    const wchar_t* url;
    const wchar_t* type;
  } rows[] = {
      {{kShoutcast, kGenre, L"new age"},
       L"http://www.shoutcast.com/embed_module?reqType=GENRE_SEARCH&cnt=999&s=new age",
       shoutcast,
       L"http://yp.shoutcast.com/sbin/tunein-station.pls?id=7",
       L"t"},
      {{kShoutcast, kKeyword, L" 台北 R&B?"},
       L"http://www.shoutcast.com/embed_module?reqType=KEYWORD_SEARCH&cnt=999&s= 台北 R&B?",
       shoutcast,
       L"http://yp.shoutcast.com/sbin/tunein-station.pls?id=7",
       L"t"},
      {{kIcecast, kGenre, L"R&B"},
       L"http://dir.xiph.org/search?search=R&B",
       icecast,
       L"http://dir.xiph.org/listen/12/a.m3u",
       L"MP3"},
      {{kIcecast, kKeyword, L""},
       L"http://dir.xiph.org/search?search=",
       icecast,
       L"http://dir.xiph.org/listen/12/a.m3u",
       L"MP3"},
      {{kLiveDoor, kKeyword, L"x"},
       L"http://live.ladio.livedoor.com/list/a",
       L"button\"><a href=\"http://host/a.m3u\">tool/type_ogg.gif "
       L"listener\"><span><span class=\"many\">12</span>",
       L"http://host/a.m3u",
       L"OGG"},
      {{kHinet, kGenre, L"x"},
       L"http://hichannel.hinet.net/xml/radioList.jsp",
       L"<item id=\"205\" myTitle=\"n\"/>",
       L"mms://host/RA205",
       L"WMA"},
  };
  for (const auto& row : rows) {
    std::wstring fetched;
    const StationSearch found = SearchPage(row.query, row.page, fetched);
    EXPECT_EQ(fetched, row.address);
    EXPECT_TRUE(found.isWhole);
    ASSERT_EQ(found.rows.size(), 1U) << row.page;
    EXPECT_EQ(found.rows[0].url, row.url);
    EXPECT_EQ(found.rows[0].type, row.type);
  }
}

TEST(DirectorySearchTest, ReportsAPageThatIsCutOff) {
  std::wstring fetched;
  EXPECT_FALSE(SearchPage({kHinet, kGenre, L""}, L"<item id=\"2", fetched).isWhole);
  EXPECT_FALSE(SearchPage({kShoutcast, kGenre, L""}, L"{\"id\":\"8\"},{\"id\":", fetched).isWhole);
}

TEST(DirectorySearchTest, LetsTheFetchThrow) {
  const auto fetch = [](const std::wstring& /*url*/) -> std::wstring {
    throw std::runtime_error("no answer");
  };
  EXPECT_THROW(SearchDirectory({}, {fetch, FakeCapitals, L""}), std::runtime_error);
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
  EXPECT_STREQ(kGenres[7].label, L"新世紀音樂 (New Age)");
  EXPECT_STREQ(kGenres.back().label, L"遊戲音樂 (Game)");
}

}  // namespace
}  // namespace tellurvane

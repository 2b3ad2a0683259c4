#include "radio/DirectorySearch.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace tellurvane {
namespace {

using enum DirectorySource;
using enum SearchMode;

TEST(DirectorySearchTest, AsksEachDirectoryAtItsAddressForTheTermAsItStands) {
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

TEST(DirectorySearchTest, ReadsThePageAsTheDirectoryWritesIt) {
  const struct {
    DirectorySource source;
    const wchar_t* page;
    const wchar_t* url;
  } rows[] = {
      {kShoutcast, L"{\"id\":\"7\",\"mt\":\"t\",\"name\":\"n\",\"lc\":1,\"br\":64,}",
       L"http://yp.shoutcast.com/sbin/tunein-station.pls?id=7"},
      {kIcecast, L"<a href=\"/listen/12/a.m3u\"><a class=\"streams\">MP3</a>",
       L"http://dir.xiph.org/listen/12/a.m3u"},
      {kLiveDoor,
       L"<li class=\"button\"><a href=\"http://host/a.m3u\">"
       L"<li class=\"listener\"><span><span class=\"many\">12</span>",
       L"http://host/a.m3u"},
      {kHinet, L"<item id=\"205\" myTitle=\"n\"/>", L"mms://host/RA205"},
  };
  for (const auto& row : rows) {
    const DirectoryQuery query = {row.source, kGenre, L"pop"};
    std::wstring asked;
    const auto fetch = [&](const std::wstring& url) -> std::wstring {
      asked = url;
      return row.page;
    };
    const StationSearch found = SearchDirectory(query, L"mms://host/RA", fetch);
    EXPECT_EQ(asked, AddressOf(query));
    EXPECT_TRUE(found.isWhole);
    ASSERT_EQ(found.rows.size(), 1U) << row.page;
    EXPECT_EQ(found.rows[0].url, row.url);
  }
}

TEST(DirectorySearchTest, TellsAPageThatWasCutOff) {
  const struct {
    DirectorySource source;
    const wchar_t* page;
    size_t rows;
  } cases[] = {
      {kHinet, L"<item id=\"1\" myTitle=\"a\"/><item id=\"2", 1},
      {kShoutcast,
       L"{\"id\":\"7\",\"mt\":\"t\",\"name\":\"n\",\"lc\":1,\"br\":64,},{\"id\":\"8\",\"mt", 200},
  };
  for (const auto& [source, page, rows] : cases) {
    const StationSearch found = SearchDirectory({source, kGenre, L""}, L"",
                                                [&](const std::wstring& /*url*/) { return page; });
    EXPECT_FALSE(found.isWhole) << page;
    EXPECT_EQ(found.rows.size(), rows) << page;
  }
}

TEST(DirectorySearchTest, LetsThroughWhatTheFetchThrows) {
  const auto fetch = [](const std::wstring& /*url*/) -> std::wstring {
    throw std::runtime_error("no answer");
  };
  EXPECT_THROW(SearchDirectory({}, L"", fetch), std::runtime_error);
}

TEST(DirectorySearchTest, SearchesOnlyTheTwoDirectoriesThatCan) {
  EXPECT_TRUE(CanSearch(kShoutcast));
  EXPECT_TRUE(CanSearch(kIcecast));
  EXPECT_FALSE(CanSearch(kLiveDoor));
  EXPECT_FALSE(CanSearch(kHinet));
}

}  // namespace
}  // namespace tellurvane

// Fetches that fail. The black-box tests of the directory fetch pages from a server.
#include "radio/HttpGetText.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <wininet.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "ui/Com.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kNobodyListens = L"http://127.0.0.1:9/";

TEST(HttpGetTextTest, RemovesTheAddressFromTheSystemsCache) {
  const ComApartment apartment;
  wchar_t file[MAX_PATH] = {};
  ASSERT_TRUE(CreateUrlCacheEntryW(kNobodyListens, 1, L"htm", file, 0));
  { const std::ofstream content(std::filesystem::path{file}); }
  ASSERT_TRUE(CommitUrlCacheEntryW(kNobodyListens, file, {}, {}, NORMAL_CACHE_ENTRY, nullptr, 0,
                                   nullptr, nullptr));
  const auto isKept = [] {
    DWORD size = 0;
    (void)GetUrlCacheEntryInfoW(kNobodyListens, nullptr, &size);
    return GetLastError() == ERROR_INSUFFICIENT_BUFFER;
  };
  ASSERT_TRUE(isKept());
  // The fetch fails, so no new page replaced the old one.
  EXPECT_THROW(HttpGetText(kNobodyListens), FetchError);
  EXPECT_FALSE(isKept());
}

TEST(HttpGetTextTest, ThrowsForAnAddressThatCannotBeFetched) {
  const ComApartment apartment;
  for (const wchar_t* const address : {kNobodyListens, L"", L"no address", L"http://", L"none:x"}) {
    EXPECT_THROW(HttpGetText(address), FetchError) << testing::PrintToString(address);
  }
}

TEST(HttpGetTextTest, ThrowsOnAThreadWithoutCom) {
  std::thread([] { EXPECT_THROW(HttpGetText(kNobodyListens), FetchError); }).join();
}

}  // namespace
}  // namespace tellurvane

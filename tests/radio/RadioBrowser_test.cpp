#include "radio/RadioBrowser.h"

#include <gmock/gmock.h>

#include "radio/DirectoryError.h"

namespace tellurvane {
namespace {

using namespace std::chrono_literals;
using enum DirectorySource;
using enum SearchMode;
using testing::ElementsAre;

constexpr const wchar_t* kAnyStation =
    L"/xml/stations/search?hidebroken=true&order=clickcount&reverse=true&limit=200";

TEST(RadioBrowserPathTest, AsksForAGenreAKeywordOrTaiwan) {
  const struct {
    DirectoryQuery query;
    const wchar_t* filter;
  } rows[] = {
      {{kRadioBrowser, kGenre, L"jazz"}, L"&tag=jazz&tagExact=true"},
      {{kRadioBrowser, kGenre, L"new age"}, L"&tag=new%20age&tagExact=true"},
      {{kRadioBrowser, kGenre, L"R&B"}, L"&tag=rnb&tagExact=true"},
      {{kRadioBrowser, kGenre, L"contemporary"}, L"&tag=adult%20contemporary&tagExact=true"},
      {{kRadioBrowser, kGenre, L"top"}, L""},
      {{kRadioBrowser, kGenre, L""}, L""},
      {{kRadioBrowser, kKeyword, L" 台北 R&B?"}, L"&name=%20%E5%8F%B0%E5%8C%97%20R%26B%3F"},
      {{kRadioBrowser, kKeyword, L"top"}, L"&name=top"},
      {{kRadioBrowser, kKeyword, L""}, L"&name="},
      {{kRadioBrowserTaiwan, kGenre, L"jazz"}, L"&countrycode=TW"},
      {{kRadioBrowserTaiwan, kKeyword, L"台北"}, L"&countrycode=TW"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(RadioBrowserPath(row.query), std::wstring(kAnyStation) + row.filter);
  }
}

TEST(RadioBrowserPathTest, SendsEveryGenreButTopAsATag) {
  for (const Genre& genre : kGenres) {
    const std::wstring path = RadioBrowserPath({kRadioBrowser, kGenre, genre.key});
    const bool isTop = genre.key == std::wstring(L"top");
    EXPECT_EQ(path.find(L"&tag=") == std::wstring::npos, isTop) << genre.key;
  }
}

// Servers that answer from a script, and a clock that only they move.
class RadioBrowserTest : public testing::Test {
 protected:
  enum Answer { kStations, kFails, kIsSilent, kIsNoList };

  // Searches with these servers, and lists the first parts of the addresses and the time limits.
  std::vector<std::string> Ask(RadioBrowser& browser) {
    asked_.clear();
    reason_.clear();
    found_ = 0;
    try {
      found_ = browser.Search({kRadioBrowserTaiwan, kGenre, L""}).rows.size();
    } catch (const DirectoryError& error) {
      reason_ = error.Text();
    }
    return asked_;
  }

  RadioBrowser Browser() {
    return RadioBrowser(
        {.fetch = [this](const std::wstring& host, const std::wstring& path,
                         std::chrono::milliseconds limit) { return Fetch(host, path, limit); },
         .read = [this](const std::string& answer) { return Read(answer); },
         .elapsed = [this] { return now_; },
         .isUsable = [](const std::wstring& address) { return address == L"usable"; }});
  }

  std::map<std::string, Answer> answers_ = {
      {"all", kStations}, {"de1", kStations}, {"de2", kStations}, {"fi1", kStations}};
  std::chrono::milliseconds failingTakes_ = 0ms;
  size_t found_ = 0;
  std::wstring reason_;

 private:
  std::string Fetch(const std::wstring& host, const std::wstring& path,
                    std::chrono::milliseconds limit) {
    EXPECT_EQ(host.substr(3), L".api.radio-browser.info");
    EXPECT_EQ(path, std::wstring(kAnyStation) + L"&countrycode=TW");
    const std::string server(host.begin(), host.begin() + 3);
    asked_.push_back(server + " " + std::to_string(limit.count()));
    switch (answers_.at(server)) {
      case kFails:
        now_ += failingTakes_;
        throw DirectoryError(L"failed: " + std::wstring(server.begin(), server.end()));
      case kIsSilent:
        now_ += limit;
        throw DirectoryError(L"silent: " + std::wstring(server.begin(), server.end()));
      case kIsNoList:
        return "none";
      case kStations:
        break;
    }
    return "stations";
  }

  std::vector<BrowserStation> Read(const std::string& answer) const {
    if (answer != "stations") throw DirectoryError(L"no list");
    return {{.name = L"n", .url = L"usable"}, {.name = L"m", .url = L"of no use"}};
  }

  std::chrono::milliseconds now_ = 70s;
  std::vector<std::string> asked_;
};

TEST_F(RadioBrowserTest, ListsTheStationsOfTheFirstServer) {
  RadioBrowser browser = Browser();
  EXPECT_THAT(Ask(browser), ElementsAre("all 5000"));
  EXPECT_EQ(found_, 1U);
  EXPECT_EQ(reason_, L"");
}

TEST_F(RadioBrowserTest, AsksTheNextServerUntilOneAnswers) {
  const struct {
    Answer all, de1, de2, fi1;
    std::chrono::milliseconds failingTakes;
    std::vector<std::string> asked;
    const wchar_t* reason;
  } rows[] = {
      {kFails, kStations, kStations, kStations, 0s, {"all 5000", "de1 5000"}, L""},
      {kIsNoList, kStations, kStations, kStations, 0s, {"all 5000", "de1 5000"}, L""},
      {kFails, kIsNoList, kStations, kStations, 0s, {"all 5000", "de1 5000", "de2 5000"}, L""},
      {kFails,
       kFails,
       kFails,
       kStations,
       2s,
       {"all 5000", "de1 5000", "de2 5000", "fi1 4000"},
       L""},
      {kFails,
       kFails,
       kFails,
       kFails,
       0s,
       {"all 5000", "de1 5000", "de2 5000", "fi1 5000"},
       L"failed: fi1"},
      {kFails,
       kFails,
       kFails,
       kIsNoList,
       0s,
       {"all 5000", "de1 5000", "de2 5000", "fi1 5000"},
       L"no list"},
      {kIsSilent, kStations, kStations, kStations, 0s, {"all 5000", "de1 5000"}, L""},
      {kIsSilent, kFails, kStations, kStations, 3s, {"all 5000", "de1 5000", "de2 2000"}, L""},
      {kIsSilent, kIsSilent, kStations, kStations, 0s, {"all 5000", "de1 5000"}, L"silent: de1"},
      {kFails, kFails, kStations, kStations, 6s, {"all 5000", "de1 4000"}, L"failed: de1"},
  };
  for (const auto& row : rows) {
    answers_ = {{"all", row.all}, {"de1", row.de1}, {"de2", row.de2}, {"fi1", row.fi1}};
    failingTakes_ = row.failingTakes;
    RadioBrowser browser = Browser();
    EXPECT_EQ(Ask(browser), row.asked);
    EXPECT_EQ(reason_, row.reason);
    EXPECT_EQ(found_, *row.reason == L'\0' ? 1U : 0U);
  }
}

TEST_F(RadioBrowserTest, AsksTheServerThatAnsweredFirstTheNextTime) {
  RadioBrowser browser = Browser();
  answers_["all"] = answers_["de1"] = kFails;
  EXPECT_THAT(Ask(browser), ElementsAre("all 5000", "de1 5000", "de2 5000"));
  EXPECT_THAT(Ask(browser), ElementsAre("de2 5000"));
  answers_["de2"] = kFails;
  answers_["de1"] = kStations;
  EXPECT_THAT(Ask(browser), ElementsAre("de2 5000", "all 5000", "de1 5000"));
  answers_["de1"] = answers_["fi1"] = kFails;
  EXPECT_THAT(Ask(browser), ElementsAre("de1 5000", "de2 5000", "all 5000", "fi1 5000"));
  answers_["de1"] = kStations;
  EXPECT_THAT(Ask(browser), ElementsAre("de1 5000")) << "no server answered, so the order stays";
}

}  // namespace
}  // namespace tellurvane

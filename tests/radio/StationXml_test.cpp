// Answers written by hand after the documented structure.
#include "radio/StationXml.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <thread>

#include "radio/DirectoryError.h"
#include "tests/support/FailingImport.h"
#include "ui/Com.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const wchar_t* kNoList = L"電台目錄回應的不是電台清單，或資料不完整。";
constexpr const wchar_t* kNoParser = L"無法使用系統的 XML 元件讀取電台目錄。";
constexpr const wchar_t* kNotUtf8 = L"電台目錄的資料不是 UTF-8 編碼，無法讀取。";

class StationXmlTest : public testing::Test {
 protected:
  // Empty when there is a list.
  static std::wstring ReasonFor(const std::string& answer) {
    try {
      ReadStationXml(answer);
      return L"";
    } catch (const DirectoryError& error) {
      return error.Text();
    }
  }

  ComApartment apartment;
};

TEST_F(StationXmlTest, ReadsTheAttributesOfEachStation) {
  const std::string answer =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<result>\n"
      "<station changeuuid=\"1\" stationuuid=\"2\" name=\"臺灣之音 😀\" "
      "url=\"http://a/?x=1&amp;y=2\" "
      "url_resolved=\"https://b/\" homepage=\"h\" tags=\"news,台灣\" countrycode=\"TW\" "
      "codec=\"MP3\" "
      "bitrate=\"128\" hls=\"0\" clickcount=\"12\" geo_lat=\"\"/>\n"
      "<station name='R&amp;B &#x4E2D;&#22283; &quot;Live&quot; &lt;b&gt; &apos;n' url='mms://c' "
      "url_resolved='' codec='' bitrate='0' hls='1'></station>"
      "<station name=\"臺灣之音 😀\" url=\"http://a/?x=1&amp;y=2\"/>\n"
      "<!-- a comment --><other name=\"x\"/><station>text<station name=\"inside\"/></station>\n"
      "<station name=\"two&#10;lines\tand\na tab\"/></result>\n";
  EXPECT_THAT(
      ReadStationXml(answer),
      ElementsAre(
          BrowserStation{L"臺灣之音 😀", L"MP3", L"128", L"http://a/?x=1&y=2", L"https://b/", L"0"},
          BrowserStation{L"R&B 中國 \"Live\" <b> 'n", L"", L"0", L"mms://c", L"", L"1"},
          BrowserStation{L"臺灣之音 😀", L"", L"", L"http://a/?x=1&y=2", L"", L""}, BrowserStation{},
          BrowserStation{.name = L"two\nlines and a tab"}));
}

TEST_F(StationXmlTest, AcceptsEveryFormOfAListWithoutStations) {
  for (const char* const answer :
       {"<result/>", "<result></result>", "\xEF\xBB\xBF<result>\r\n</result>",
        "<?xml version='1.0' encoding='utf-8' standalone='yes'?><result/>",
        "<?xml version='1.0' encoding='UTF-16'?><result/>", "<result><a/></result>"}) {
    EXPECT_THAT(ReadStationXml(answer), IsEmpty()) << answer;
  }
}

TEST_F(StationXmlTest, GivesAReasonForEveryOtherAnswer) {
  using namespace std::string_literals;
  const std::string entity = "<result><station name=\"&e;\"/></result>";
  const struct {
    std::string answer;
    const wchar_t* reason;
  } rows[] = {
      {"", kNoList},
      {"  ", kNoList},
      {"sorry", kNoList},
      {"{\"stations\":[]}", kNoList},
      {"<html><body>502</body></html>", kNoList},
      {"<!DOCTYPE html><html></html>", kNoList},
      {"<Result/>", kNoList},
      {"<list><result><station/></result></list>", kNoList},
      {"<result><station name=\"a\" url=\"http://a\"/>", kNoList},
      {"<result><station name=\"a\" url=\"htt", kNoList},
      {"<result><station name=\"a\" name=\"b\"/></result>", kNoList},
      {"<result><station name=a/></result>", kNoList},
      {"<result><station name=\"R&B\"/></result>", kNoList},
      {"<result/><result/>", kNoList},
      {"<result><station name=\"\x01\"/></result>", kNoList},
      {"<result>\0</result>"s, kNoList},
      {entity, kNoList},
      {"<!DOCTYPE result [<!ENTITY e \"x\">]>" + entity, kNoList},
      {"<?xml version='1.0'?>\n<!DOCTYPE result SYSTEM \"file:///c:/windows/win.ini\"><result/>",
       kNoList},
      {"<result><station name=\"\xBB\x4F\xA5\x5F\"/></result>", kNotUtf8},
      {"<?xml version='1.0' encoding='Big5'?><result><station name=\"\xA5\x78\"/></result>",
       kNotUtf8},
      {"<result><station name=\"\xC0\xAF\"/></result>", kNotUtf8},
      {"<result><station name=\"\xED\xA0\x80\"/></result>", kNotUtf8},
      {"<result><station name=\"\xE5\x8F", kNotUtf8},
      {"\xFF\xFE<\0r\0"s, kNotUtf8},
  };
  for (const auto& row : rows) EXPECT_EQ(ReasonFor(row.answer), row.reason) << row.answer;
}

TEST_F(StationXmlTest, ReadsLargeAnswersAndRejectsDeepOnes) {
  std::string answer = "<result>";
  for (int i = 0; i < 20'000; ++i) answer += "<station name=\"n\" url=\"http://a\"/>";
  EXPECT_THAT(ReadStationXml(answer + "</result>"), SizeIs(20'000));
  std::string begins;
  std::string ends;
  for (int i = 0; i < 300'000; ++i) {
    begins += "<a>";
    ends += "</a>";
  }
  EXPECT_EQ(ReasonFor("<result>" + begins + ends + "</result>"), kNoList);
}

TEST_F(StationXmlTest, ReportsAMissingParser) {
  std::wstring reason;
  // A thread without COM has no parser.
  std::thread([&] { reason = ReasonFor("<result/>"); }).join();
  EXPECT_EQ(reason, kNoParser);
  FailingImport classes({"CLSIDFromProgID", static_cast<DWORD>(REGDB_E_CLASSNOTREG)});
  classes.Fail(1);
  EXPECT_EQ(ReasonFor("<result/>"), kNoParser);
  FailingImport objects({"CoCreateInstance", static_cast<DWORD>(E_OUTOFMEMORY)});
  objects.Fail(1);
  EXPECT_EQ(ReasonFor("<result/>"), kTooLargeAnswer);
}

}  // namespace
}  // namespace tellurvane

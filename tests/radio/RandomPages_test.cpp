// The rules against their literal twins: on random pages, and on the seeds of the fuzz target.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "base/Text.h"
#include "tests/radio/RuleDifference.h"
#include "tests/radio/SamplePages.h"
#include "tests/support/SourceTree.h"

namespace tellurvane {
namespace {

using namespace std::string_view_literals;

struct Format {
  const char* name;
  Rule difference;
  std::wstring_view sample;
  std::wstring_view pieces;  // parted by "|"
};

void PrintTo(const Format& format, std::ostream* out) { *out << format.name; }

constexpr Format kFormats[] = {
    {"ReplaceHTML", DecodingDifference, kIcecastSample,
     L"&|#|;|amp;|&amp;|&num;|&semi;|&#3|8;|&#59|&#59;|lt;|&lt|039;|&#039|<b>|</b>|<|b>|/| |hellip|"
     L"&helli|p|&hellip|nbsp|&#|0|65;|quot;|excl|&quot|x|&gt;|é|&#108;|&#112;|&#62;|&#60;|</|<b|>|"
     L"&#98;|&#256;|&apos;b|&#000065|\0|\x016C|&#233;"sv},
    {"GetShoutcast", ShoutcastDifference, kShoutcastSample,
     L"id:|ID:|\"|7|\"12\"|mt:|mt:\"a\"|name|name:|lc:|lc:3,|br:|,|name:\"b\"| "
     L"|br:64,|Lc:|\r\n|id\"|"
     L"\":|d|i|d:|id:\"1\",mt:\"t\",name:\"n\",lc:2,br:3,"},
    {"GetIcecast", IcecastDifference, kIcecastSample,
     L"listeners\">[|LISTENERS\">[5 |-description\">|name<|/listen/|.m3u|/listen/1.m3u|"
     L"format\" title=\"|0 kbps\"|streams\">|Aac+<|ogg vorbis<|<|\"| |&amp;|&lt;|&#60;|<b>|\">|n/|"
     L"t\"|listeners&quot;>[|Streams&#34;&gt;"},
    {"GetLiveDoor", LiveDoorDifference, kLiveDoorSample,
     L"button\"><a href=\"|http://h/\"|細\">|名<|tool/kbps_|64.gif|TOOL/CH_|tool/ch_stereo.gif|"
     L"tool/type_|mp3.gif|.gif|É.gif|listener\"><span>|12<|<|\"|</strong>|<span class=\"many\">| "
     L"|l/|"
     L"r\">|LISTENER\"><SPAN>|n\"><a href=\"x\"|</a></li><li class=\"user\"><strong>DJ"},
    {"GetHinet", HinetDifference, kHinetSample,
     L"item id|Item Id=|\"|12|\"12\"|myTitle=|myTitle=\"大愛\"|myTitle=\"大\"|MYTITLE=| |item| "
     L"id|Br|"
     L"<item id=\"1\" myTitle=\"x\"/>"},
};

class RandomPages {
 public:
  explicit RandomPages(const Format& format) : sample_(format.sample) {
    for (std::wstring_view rest = format.pieces; !rest.empty();) {
      pieces_.push_back(TakeField(rest, L'|'));
    }
  }

  // Pieces one after another, so that they complete each other, or two samples; with some changes.
  std::wstring Next() {
    std::wstring page;
    if (Below(2) == 0) {
      page = std::wstring(sample_) + std::wstring(sample_);
    } else {
      for (size_t i = Below(40); i > 0; --i) page += pieces_[Below(pieces_.size())];
    }
    for (size_t i = Below(6); i > 0; --i) Change(page);
    return page;
  }

 private:
  size_t Below(size_t limit) {
    return std::uniform_int_distribution<size_t>(0, limit - 1)(random_);
  }

  void Change(std::wstring& page) {
    const size_t at = Below(page.size() + 1);
    switch (Below(5)) {
      case 0:
        page.erase(at, Below(12));
        break;
      case 1:
        page.insert(at, pieces_[Below(pieces_.size())]);
        break;
      case 2:
        page.resize(at);
        break;
      case 3:
        // Often about as long as a window.
        page.insert(at, Below(2) == 0 ? Below(25) : 90 + Below(25) + Below(2) * 400, L'x');
        break;
      default:
        // Turns a letter's case, and other characters into something else.
        if (at < page.size()) page[at] = static_cast<wchar_t>(page[at] ^ 0x20);
        break;
    }
  }

  std::wstring_view sample_;
  std::vector<std::wstring_view> pieces_;
  std::mt19937 random_{20'110'214};
};

class RandomPagesTest : public testing::TestWithParam<Format> {};

TEST_P(RandomPagesTest, GiveWhatTheLiteralRuleGives) {
  RandomPages pages(GetParam());
  for (int i = 0; i < 500; ++i) {
    const std::wstring page = pages.Next();
    ASSERT_EQ(GetParam().difference(page), "") << testing::PrintToString(page);
  }
}

INSTANTIATE_TEST_SUITE_P(, RandomPagesTest, testing::ValuesIn(kFormats),
                         testing::PrintToStringParamName());

TEST(RadioCorpus, EverySeedGivesWhatTheLiteralRulesGive) {
  int seeds = 0;
  for (const auto& entry : std::filesystem::directory_iterator(SourceFile("fuzz/corpus/radio"))) {
    std::ifstream file(entry.path(), std::ios::binary);
    ASSERT_TRUE(file) << entry.path();
    const std::wstring page = PageOfSeed(std::string(std::istreambuf_iterator<char>(file), {}));
    for (const Format& format : kFormats) {
      EXPECT_EQ(format.difference(page), "") << entry.path() << " " << format.name;
    }
    ++seeds;
  }
  EXPECT_GE(seeds, 50);
}

}  // namespace
}  // namespace tellurvane

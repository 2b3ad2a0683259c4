// Replays the seeds of the fuzz target.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/radio/RuleDifference.h"

namespace tellurvane {
namespace {

TEST(RadioCorpus, EverySeedGivesWhatTheLiteralRulesGive) {
  int seeds = 0;
  for (const auto& entry :
       std::filesystem::directory_iterator(TELLURVANE_SOURCE_DIR "/fuzz/corpus/radio")) {
    std::ifstream file(entry.path(), std::ios::binary);
    ASSERT_TRUE(file) << entry.path();
    const std::wstring page = PageOfSeed(std::string(std::istreambuf_iterator<char>(file), {}));
    for (size_t rule = 0; rule < kAllRules.size(); ++rule) {
      EXPECT_EQ(kAllRules[rule](page), "") << entry.path() << ", rule " << rule;
    }
    ++seeds;
  }
  EXPECT_GE(seeds, 50);
}

}  // namespace
}  // namespace tellurvane

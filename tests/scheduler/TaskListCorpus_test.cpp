// Replays the seeds of the fuzz target.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/support/SourceTree.h"
#include "tests/support/TaskListRoundTrip.h"

namespace tellurvane {
namespace {

TEST(TaskListCorpusTest, EverySeedIsReadWrittenAndReadTheSame) {
  int seeds = 0;
  for (const auto& entry :
       std::filesystem::directory_iterator(SourceFile("fuzz/corpus/task_list"))) {
    std::ifstream file(entry.path(), std::ios::binary);
    ASSERT_TRUE(file) << entry.path();
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    for (const HostLocale* locale : {&ZhTw(), &ZhTwUnderWine(), &EnUs()}) {
      EXPECT_EQ(TaskListRoundTripFault(bytes, *locale), "") << entry.path();
    }
    ++seeds;
  }
  EXPECT_GE(seeds, 12);
}

}  // namespace
}  // namespace tellurvane

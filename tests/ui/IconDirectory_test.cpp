#include "ui/IconDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "tests/support/IconDirectoryFault.h"
#include "tests/support/SourceTree.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string Word(unsigned value) {
  return {static_cast<char>(value & 0xFF), static_cast<char>((value >> 8) & 0xFF)};
}

std::string DoubleWord(std::uint32_t value) { return Word(value & 0xFFFF) + Word(value >> 16); }

// The reserved field and the type are not checked.
std::string Header(unsigned count) { return Word(7) + Word(99) + Word(count); }

TEST(IconDirectoryTest, ReadsEachEntry) {
  const std::string bytes = Header(2) + std::string("\x10\x20\x30\x40", 4) + Word(0x0102) +
                            Word(0x2018) + DoubleWord(0x89ABCDEF) + DoubleWord(0xFEDCBA98) +
                            std::string(12, '\0') + DoubleWord(300);
  EXPECT_THAT(ParseIconDirectory(bytes), ElementsAre(IconEntry{.width = 0x10,
                                                               .height = 0x20,
                                                               .colorCount = 0x30,
                                                               .reserved = 0x40,
                                                               .planes = 0x0102,
                                                               .bitCount = 0x2018,
                                                               .length = 0x89ABCDEF,
                                                               .offset = 0xFEDCBA98},
                                                     IconEntry{.offset = 300}));
}

TEST(IconDirectoryTest, IsEmptyUnlessAllEntriesAreThere) {
  const std::string whole = Header(2) + std::string(32, '\1');
  ASSERT_THAT(ParseIconDirectory(whole), SizeIs(2));
  for (size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THAT(ParseIconDirectory(whole.substr(0, length)), IsEmpty()) << length;
  }
  EXPECT_THAT(ParseIconDirectory(Header(0) + std::string(16, '\1')), IsEmpty());
  const std::string most(size_t{16} * 0xFFFF, '\1');
  EXPECT_THAT(ParseIconDirectory(Header(0xFFFF) + most), SizeIs(0xFFFF));
  EXPECT_THAT(ParseIconDirectory(Header(0xFFFF) + most.substr(1)), IsEmpty());
}

TEST(IconDirectoryTest, GivesAnImageOnlyWhereAllOfItIsInside) {
  struct Case {
    std::uint32_t offset, length;
    std::string_view expected;
  };
  constexpr std::uint32_t kMost = 0xFFFFFFFF;
  const Case cases[] = {{0, 10, "0123456789"}, {3, 4, "3456"}, {9, 1, "9"},       {10, 0, ""},
                        {0, 11, ""},           {10, 1, ""},    {11, 0, ""},       {kMost, 1, ""},
                        {1, kMost, ""},        {5, 6, ""},     {kMost, kMost, ""}};
  for (const Case& row : cases) {
    const IconEntry entry = {.length = row.length, .offset = row.offset};
    EXPECT_EQ(IconImage("0123456789", entry), row.expected) << row.offset << " + " << row.length;
  }
}

TEST(IconDirectoryTest, EachIconOfTheTaskListHasAnImageForEachDensity) {
  // At 96, 120, 144, 168, 192, 216, 240 and 288 dpi.
  const std::vector<int> large = {32, 40, 48, 56, 64, 72, 80, 96};
  const std::vector<int> small = {16, 20, 24, 28, 32, 36, 40, 48};
  for (int number = 101; number <= 107; ++number) {
    const std::string bytes =
        ReadFile(SourceFile("resources/icon" + std::to_string(number) + ".ico"));
    std::vector<int> widths, heights;
    for (const IconEntry& entry : ParseIconDirectory(bytes)) {
      widths.push_back(entry.width);
      heights.push_back(entry.height);
      EXPECT_THAT(IconImage(bytes, entry), SizeIs(entry.length)) << number;
    }
    EXPECT_EQ(widths, number <= 104 ? large : small) << number;
    EXPECT_EQ(heights, widths) << number;
    EXPECT_EQ(IconDirectoryFault(bytes), "") << number;
  }
}

TEST(IconDirectoryTest, HoldsForEachInputOfTheFuzzer) {
  int files = 0;
  for (const auto& file : std::filesystem::directory_iterator(SourceFile("fuzz/corpus/icon"))) {
    EXPECT_EQ(IconDirectoryFault(ReadFile(file.path())), "") << file.path();
    ++files;
  }
  EXPECT_GE(files, 8);
}

}  // namespace
}  // namespace tellurvane

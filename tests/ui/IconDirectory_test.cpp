#include "ui/IconDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "tests/support/IconDirectoryFault.h"

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

std::string Header(unsigned count) { return Word(0) + Word(1) + Word(count); }

std::string Entry(std::uint32_t length, std::uint32_t offset) {
  return std::string("\x10\x20\x03\x04", 4) + Word(1) + Word(32) + DoubleWord(length) +
         DoubleWord(offset);
}

TEST(IconDirectoryTest, ReadsEachField) {
  const std::string bytes = Header(1) + std::string("\x10\x20\x30\x40", 4) + Word(0x0102) +
                            Word(0x2018) + DoubleWord(0x89ABCDEF) + DoubleWord(0xFEDCBA98);
  EXPECT_THAT(ParseIconDirectory(bytes), ElementsAre(IconEntry{.width = 0x10,
                                                               .height = 0x20,
                                                               .colorCount = 0x30,
                                                               .reserved = 0x40,
                                                               .planes = 0x0102,
                                                               .bitCount = 0x2018,
                                                               .length = 0x89ABCDEF,
                                                               .offset = 0xFEDCBA98}));
}

TEST(IconDirectoryTest, ReadsTheEntriesInTheirOrder) {
  const auto entries =
      ParseIconDirectory(Header(3) + Entry(1, 100) + Entry(2, 200) + Entry(3, 300));
  ASSERT_THAT(entries, SizeIs(3));
  EXPECT_EQ(entries[0].offset, 100U);
  EXPECT_EQ(entries[1].offset, 200U);
  EXPECT_EQ(entries[2].offset, 300U);
}

TEST(IconDirectoryTest, DoesNotCheckTheReservedFieldAndTheType) {
  EXPECT_THAT(ParseIconDirectory(Word(7) + Word(99) + Word(1) + Entry(0, 0)), SizeIs(1));
}

TEST(IconDirectoryTest, IsEmptyWhereThereIsNoDirectory) {
  const std::string whole = Header(2) + Entry(1, 1) + Entry(2, 2);
  ASSERT_THAT(ParseIconDirectory(whole), SizeIs(2));
  for (size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THAT(ParseIconDirectory(whole.substr(0, length)), IsEmpty()) << length;
  }
  EXPECT_THAT(ParseIconDirectory(Header(0) + Entry(1, 1)), IsEmpty());
  EXPECT_THAT(ParseIconDirectory(Header(0xFFFF) + Entry(1, 1)), IsEmpty());
}

TEST(IconDirectoryTest, TakesTheLargestCount) {
  std::string bytes = Header(0xFFFF);
  for (int i = 0; i < 0xFFFF; ++i) bytes += Entry(0, 0);
  EXPECT_THAT(ParseIconDirectory(bytes), SizeIs(0xFFFF));
}

TEST(IconDirectoryTest, GivesAnImageOnlyWhereAllOfItIsInside) {
  const std::string bytes = "0123456789";
  struct Row {
    std::uint32_t offset, length;
    std::string_view expected;
  };
  constexpr std::uint32_t kMost = 0xFFFFFFFF;
  const Row rows[] = {{0, 10, "0123456789"}, {3, 4, "3456"}, {9, 1, "9"},       {10, 0, ""},
                      {0, 11, ""},           {10, 1, ""},    {11, 0, ""},       {kMost, 1, ""},
                      {1, kMost, ""},        {5, 6, ""},     {kMost, kMost, ""}};
  for (const Row& row : rows) {
    const IconEntry entry = {.length = row.length, .offset = row.offset};
    EXPECT_EQ(IconImage(bytes, entry), row.expected) << row.offset << " + " << row.length;
  }
}

TEST(IconDirectoryTest, EveryIconOfOursHasAnImageForEveryDensity) {
  const std::filesystem::path resources = TELLURVANE_SOURCE_DIR "/resources";
  // What takes 16 or 32 pixels at 96 dpi, at 96, 120, 144, 168, 192, 216, 240 and 288 dpi.
  const std::vector<int> small = {16, 20, 24, 28, 32, 36, 40, 48};
  const std::vector<int> large = {32, 40, 48, 56, 64, 72, 80, 96};
  const std::vector<int> window = {16, 20, 24, 28, 32, 36, 40, 48, 56, 64, 72, 80, 96, 0};
  const struct {
    const char* file;
    const std::vector<int>& sides;
  } icons[] = {{"icon101.ico", large},    {"icon102.ico", large}, {"icon103.ico", large},
               {"icon104.ico", large},    {"icon105.ico", small}, {"icon106.ico", small},
               {"icon107.ico", small},    {"close.ico", small},   {"close_hot.ico", small},
               {"Tellurvane.ico", window}};
  for (const auto& [file, sides] : icons) {
    const std::string bytes = ReadFile(resources / file);
    std::vector<int> widths, heights;
    for (const IconEntry& entry : ParseIconDirectory(bytes)) {
      widths.push_back(entry.width);
      heights.push_back(entry.height);
      EXPECT_THAT(IconImage(bytes, entry), SizeIs(entry.length)) << file;
    }
    EXPECT_EQ(widths, sides) << file;
    EXPECT_EQ(heights, sides) << file;
    EXPECT_EQ(IconDirectoryFault(bytes), "") << file;
  }
}

TEST(IconDirectoryTest, HoldsForEveryKeptInputOfTheFuzzer) {
  const std::filesystem::path corpus = TELLURVANE_SOURCE_DIR "/fuzz/corpus/icon";
  int files = 0;
  for (const auto& file : std::filesystem::directory_iterator(corpus)) {
    EXPECT_EQ(IconDirectoryFault(ReadFile(file.path())), "") << file.path();
    ++files;
  }
  EXPECT_GE(files, 8);
}

}  // namespace
}  // namespace tellurvane

#include "radio/StationRows.h"

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

StationRow NameAndType(std::wstring_view page, const StationCuts& cuts) {
  return {std::wstring(cuts.name.Of(page)), std::wstring(cuts.type.Of(page)), L"", L"", L"", L""};
}

TEST(StationRowsTest, ComposesEachRowFromThePageWhenItIsAskedFor) {
  StationRows rows(L"jazz MP3 rock", NameAndType);
  rows.Append({.name = Cut(0, 4), .type = Cut(5, 3)});
  rows.Append({.name = Cut(9, 4)});
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0], (StationRow{L"jazz", L"MP3", L"", L"", L"", L""}));
  EXPECT_EQ(rows[1], (StationRow{L"rock", L"", L"", L"", L"", L""}));
}

TEST(StationRowsTest, ComposesARowOfTheFirstCharacters) {
  StationRows rows(L"jazz MP3", NameAndType);
  rows.Append({.name = Cut(0, 4), .type = Cut(5, 3)});
  rows.Append({.name = Cut(0, 4)});
  EXPECT_EQ(rows.Head(0, 3), (StationRow{L"jaz", L"MP3", L"", L"", L"", L""}));
  EXPECT_EQ(rows.Head(1, 4), rows[1]);
  EXPECT_FALSE(Cut().Head(0).IsMade());
}

TEST(StationRowsTest, IsEmptyBeforeTheFirstStationAndAfterItWasCleared) {
  EXPECT_TRUE(StationRows().empty());
  StationRows rows(L"jazz", NameAndType);
  EXPECT_TRUE(rows.empty());
  rows.Append({.name = Cut(0, 4)});
  EXPECT_FALSE(rows.empty());
  rows.clear();
  EXPECT_TRUE(rows.empty());
  EXPECT_EQ(rows.Page(), L"");
}

TEST(StationRowsTest, TellsACutThatWasNeverMadeFromAnEmptyOne) {
  EXPECT_FALSE(Cut().IsMade());
  EXPECT_TRUE(Cut(0, 0).IsMade());
  EXPECT_EQ(Cut().Of(L"page"), L"");
  EXPECT_EQ(Cut(0, 0).Of(L"page"), L"");
  EXPECT_EQ(Cut(4, 0).Of(L"page"), L"");
}

}  // namespace
}  // namespace tellurvane

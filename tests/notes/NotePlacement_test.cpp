#include "notes/NotePlacement.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace tellurvane {

void PrintTo(const NotePlace& place, std::ostream* out) { *out << place.left << ", " << place.top; }

namespace {

// 1920 x 1080 pixels of 15 twips.
constexpr double kScreenWidth = 28'800;
constexpr double kScreenHeight = 16'200;

std::vector<NotePlace> PlacesOf(const std::vector<double>& heights) {
  std::vector<OpenNote> standing;
  std::vector<NotePlace> places;
  for (const double height : heights) {
    places.push_back(PlaceOfNote(standing, kNoteWidth, height, kScreenWidth, kScreenHeight));
    standing.push_back({places.back().top, height});
  }
  return places;
}

std::vector<NotePlace> PlacesOf(size_t count, double height) {
  return PlacesOf(std::vector<double>(count, height));
}

TEST(NotePlacementTest, PutsTheFirstOnesNineHundredTwipsApart) {
  // 0.87 x (28800 - 2700); 0.2 x 16200 - 900 + 900.
  EXPECT_EQ(PlacesOf(3, 1'800),
            (std::vector<NotePlace>{{22'707, 3'240}, {22'707, 4'140}, {22'707, 5'040}}));
}

TEST(NotePlacementTest, BeginsTheNextColumnBehindTheOneThatPassesNineTenths) {
  // The eleventh ends at 14,040, the twelfth at 14,940, and nine tenths are 14,580.
  const std::vector<NotePlace> places = PlacesOf(26, 1'800);
  EXPECT_EQ(places[10], (NotePlace{22'707, 12'240}));
  EXPECT_EQ(places[11], (NotePlace{22'707, 13'140}));
  // A note's width and 150 twips to the left.
  EXPECT_EQ(places[12], (NotePlace{17'157, 3'240}));
  EXPECT_EQ(places[13], (NotePlace{17'157, 4'140}));
  EXPECT_EQ(places[23], (NotePlace{17'157, 13'140}));
  EXPECT_EQ(places[24], (NotePlace{11'607, 3'240}));
  EXPECT_EQ(places[25], (NotePlace{11'607, 4'140}));
}

TEST(NotePlacementTest, EndingExactlyAtNineTenthsIsNotPassingThem) {
  const OpenNote atTheLimit[] = {{12'780, 1'800}};
  EXPECT_EQ(PlaceOfNote(atTheLimit, kNoteWidth, 1'800, kScreenWidth, kScreenHeight),
            (NotePlace{22'707, 4'140}));
  const OpenNote beyond[] = {{12'795, 1'800}};
  EXPECT_EQ(PlaceOfNote(beyond, kNoteWidth, 1'800, kScreenWidth, kScreenHeight),
            (NotePlace{17'157, 3'240}));
}

TEST(NotePlacementTest, ALargerNoteStandsHalfOfTheDifferenceHigher) {
  EXPECT_EQ(
      PlacesOf({1'800, 3'000, 1'800, 2'400}),
      (std::vector<NotePlace>{{22'707, 3'240}, {22'707, 3'540}, {22'707, 5'040}, {22'707, 5'640}}));
}

TEST(NotePlacementTest, TheHeightOfEachNoteCountsForItsColumn) {
  // The tenth is at 3,240 - 600 + 8,100 = 10,740 and ends at 13,740, the eleventh at 14,640.
  const std::vector<NotePlace> places = PlacesOf(12, 3'000);
  EXPECT_EQ(places[10], (NotePlace{22'707, 11'640}));
  EXPECT_EQ(places[11], (NotePlace{17'157, 2'640}));
}

TEST(NotePlacementTest, ANoteThatWasDraggedBelowBeginsANewColumnToo) {
  const OpenNote standing[] = {{3'240, 1'800}, {14'000, 1'800}, {5'040, 1'800}};
  EXPECT_EQ(PlaceOfNote(standing, kNoteWidth, 1'800, kScreenWidth, kScreenHeight),
            (NotePlace{17'157, 4'140}));
}

TEST(NotePlacementTest, FollowsTheScreensSizeAndTheNotesWidth) {
  // 1280 x 900 pixels of 15 twips: partly beyond the right edge, which is another rule's matter.
  EXPECT_EQ(PlaceOfNote({}, kNoteWidth, 1'800, 19'200, 13'500), (NotePlace{14'355, 2'700}));
  EXPECT_EQ(PlaceOfNote({}, 3'000, 1'800, 19'200, 13'500), (NotePlace{15'399, 2'700}));
}

}  // namespace
}  // namespace tellurvane

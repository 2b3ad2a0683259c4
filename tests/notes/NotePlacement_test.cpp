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

// The places of notes of these heights, one after another.
std::vector<NotePlace> PlacesOf(const std::vector<double>& heights) {
  std::vector<OpenNote> open;
  std::vector<NotePlace> places;
  for (const double height : heights) {
    places.push_back(PlaceOfNote(open, kNoteWidth, height, kScreenWidth, kScreenHeight));
    open.push_back({places.back().top, height});
  }
  return places;
}

// 0.87 x (28800 - 2700), and for each further column a note's width and 150 twips less.
constexpr double kFirstColumn = 22'707;
constexpr double kSecondColumn = 17'157;
constexpr double kThirdColumn = 11'607;

TEST(NotePlacementTest, StacksNotesInColumns) {
  const std::vector<NotePlace> places = PlacesOf(std::vector<double>(26, 1'800));
  const struct {
    size_t note;
    NotePlace place;
  } rows[] = {
      {0, {kFirstColumn, 3'240}},  // 0.2 x 16200 - 900 + 900
      {1, {kFirstColumn, 4'140}},   {2, {kFirstColumn, 5'040}},   {10, {kFirstColumn, 12'240}},
      {11, {kFirstColumn, 13'140}},  // ends after nine tenths, 14,580
      {12, {kSecondColumn, 3'240}}, {13, {kSecondColumn, 4'140}}, {23, {kSecondColumn, 13'140}},
      {24, {kThirdColumn, 3'240}},  {25, {kThirdColumn, 4'140}},
  };
  for (const auto& [note, place] : rows) EXPECT_EQ(places[note], place) << note;
}

TEST(NotePlacementTest, CountsTheHeightOfEachNote) {
  EXPECT_EQ(PlacesOf({1'800, 3'000, 1'800, 2'400}),
            (std::vector<NotePlace>{{kFirstColumn, 3'240},
                                    {kFirstColumn, 3'540},
                                    {kFirstColumn, 5'040},
                                    {kFirstColumn, 5'640}}));
}

TEST(NotePlacementTest, BeginsAColumnAfterANoteThatPassesNineTenths) {
  const struct {
    std::vector<OpenNote> open;
    NotePlace place;
  } rows[] = {
      {{{12'780, 1'800}}, {kFirstColumn, 4'140}},  // exactly
      {{{12'795, 1'800}}, {kSecondColumn, 3'240}},
      // The middle one was dragged there.
      {{{3'240, 1'800}, {14'000, 1'800}, {5'040, 1'800}}, {kSecondColumn, 4'140}},
  };
  for (const auto& [open, place] : rows) {
    EXPECT_EQ(PlaceOfNote(open, kNoteWidth, 1'800, kScreenWidth, kScreenHeight), place);
  }
}

TEST(NotePlacementTest, FollowsTheScreenAndTheNotesWidth) {
  EXPECT_EQ(PlaceOfNote({}, kNoteWidth, 1'800, 19'200, 13'500), (NotePlace{14'355, 2'700}));
  EXPECT_EQ(PlaceOfNote({}, 3'000, 1'800, 19'200, 13'500), (NotePlace{15'399, 2'700}));
}

}  // namespace
}  // namespace tellurvane

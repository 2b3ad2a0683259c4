#include "ui/SliderModel.h"

#include <gtest/gtest.h>

#include <limits>

namespace tellurvane {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

SliderModel ModelOf(double max, double value) {
  SliderModel model;
  model.Max(max);
  model.Value(value);
  return model;
}

TEST(SliderModelTest, KeepsTheMaximumAtOneOrAbove) {
  struct Row {
    double asked;
    double kept;
  };
  for (const Row& row :
       {Row{100, 100}, Row{1, 1}, Row{1.5, 1.5}, Row{0.999, 1}, Row{0, 1}, Row{-7, 1},
        Row{kNotANumber, 1}, Row{-kInfinity, 1}, Row{kInfinity, kInfinity}}) {
    SliderModel model;
    model.Max(row.asked);
    EXPECT_EQ(model.Max(), row.kept) << row.asked;
  }
}

TEST(SliderModelTest, KeepsTheValueWithinZeroAndTheMaximum) {
  struct Row {
    double asked;
    double kept;
  };
  for (const Row& row :
       {Row{0, 0}, Row{37.5, 37.5}, Row{100, 100}, Row{100.01, 100}, Row{-0.01, 0}, Row{1e300, 100},
        Row{kInfinity, 100}, Row{-kInfinity, 0}, Row{kNotANumber, 0}}) {
    EXPECT_EQ(ModelOf(100, row.asked).Value(), row.kept) << row.asked;
  }
}

TEST(SliderModelTest, BringsTheValueDownWithTheMaximum) {
  SliderModel model = ModelOf(100, 80);
  model.Max(50);
  EXPECT_EQ(model.Value(), 50);
  model.Max(200);
  EXPECT_EQ(model.Value(), 50);
  model.Max(-1);
  EXPECT_EQ(model.Value(), 1);
}

TEST(SliderModelTest, TellsHowMuchOfTheWayIsDone) {
  EXPECT_EQ(ModelOf(100, 0).Fraction(), 0);
  EXPECT_EQ(ModelOf(100, 25).Fraction(), 0.25);
  EXPECT_EQ(ModelOf(3, 3).Fraction(), 1);
  EXPECT_EQ(ModelOf(kInfinity, 5).Fraction(), 0);
  EXPECT_EQ(ModelOf(kInfinity, kInfinity).Fraction(), 1);
}

TEST(SliderGeometryTest, PutsTheTrackFivePixelsShortOfTheRightAndLowerEdges) {
  struct Row {
    int width;
    int height;
    int delta;
    SliderBox track;
  };
  for (const Row& row : {Row{70, 18, 5, {0, 0, 65, 13}}, Row{240, 18, 5, {0, 0, 235, 13}},
                         Row{70, 18, 0, {0, -5, 65, 13}}, Row{70, 18, 8, {0, 3, 65, 13}},
                         Row{100, 40, 10, {0, 5, 95, 35}}}) {
    EXPECT_EQ(SliderGeometry(row.width, row.height, row.delta, 5).Track(), row.track)
        << row.width << " x " << row.height << " inset " << row.delta;
  }
}

TEST(SliderGeometryTest, KeepsTheMarginOfADenserScreen) {
  EXPECT_EQ(SliderGeometry(140, 38, 10, 10).Track(), (SliderBox{0, 0, 130, 28}));
}

TEST(SliderGeometryTest, FillsTheTracksInsideInProportion) {
  // Inside the frame of a host of 70 x 18 lie the columns 1 to 63: 63 of them.
  const SliderGeometry geometry(70, 18, 5, 5);
  struct Row {
    double fraction;
    int columns;
  };
  for (const Row& row : {Row{0, 0}, Row{0.007, 0}, Row{0.008, 1}, Row{0.25, 16}, Row{0.5, 32},
                         Row{0.75, 47}, Row{0.99, 62}, Row{1, 63}, Row{1.5, 63}, Row{-1, 0}}) {
    EXPECT_EQ(geometry.Fill(row.fraction), (SliderBox{1, 1, 1 + row.columns, 12})) << row.fraction;
  }
}

TEST(SliderGeometryTest, FillsNothingWhereThereIsNoRoom) {
  EXPECT_TRUE(SliderGeometry(0, 0, 5, 5).Fill(1).IsEmpty());
  EXPECT_TRUE(SliderGeometry(7, 18, 5, 5).Fill(1).IsEmpty());
  EXPECT_FALSE(SliderGeometry(8, 18, 5, 5).Fill(1).IsEmpty());
  EXPECT_TRUE(SliderGeometry(70, 18, 20, 5).Track().IsEmpty());
  EXPECT_TRUE(SliderGeometry(70, 18, 20, 5).Fill(1).IsEmpty());
}

TEST(SliderGeometryTest, GivesTheValueThatAColumnStandsFor) {
  struct Row {
    int x;
    double max;
    double value;
  };
  for (const Row& row :
       {Row{0, 100, 0}, Row{-1, 100, 0}, Row{-30'000, 100, 0}, Row{35, 100, 50}, Row{7, 100, 10},
        Row{1, 70, 1}, Row{68, 70, 68}, Row{14, 0.5, 0.1}, Row{69, 100, 100}, Row{70, 100, 100},
        Row{71, 100, 100}, Row{30'000, 100, 100}, Row{70, 0.1, 0.1}, Row{70, 241.37, 241.37}}) {
    EXPECT_EQ(SliderGeometry(70, 18, 5, 5).ValueAt(row.x, row.max), row.value)
        << row.x << " of " << row.max;
  }
}

TEST(SliderGeometryTest, GivesZeroWhereTheHostHasNoWidth) {
  EXPECT_EQ(SliderGeometry(0, 18, 5, 5).ValueAt(3, 100), 0);
  EXPECT_EQ(SliderGeometry(-4, 18, 5, 5).ValueAt(3, 100), 0);
}

}  // namespace
}  // namespace tellurvane

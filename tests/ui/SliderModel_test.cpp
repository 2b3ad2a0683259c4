#include "ui/SliderModel.h"

#include <gtest/gtest.h>

#include <limits>

namespace tellurvane {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

// At 96 dpi, with the inset that shows the whole frame.
constexpr SliderHost kHost = {70, 18, 5, 5};

SliderModel ModelOf(double max, double value) {
  SliderModel model;
  model.Max(max);
  model.Value(value);
  return model;
}

TEST(SliderModelTest, KeepsTheMaximumAtOneOrAbove) {
  struct Case {
    double asked;
    double kept;
  };
  for (const Case& row :
       {Case{100, 100}, Case{1, 1}, Case{1.5, 1.5}, Case{0.999, 1}, Case{0, 1}, Case{-7, 1},
        Case{kNotANumber, 1}, Case{-kInfinity, 1}, Case{kInfinity, kInfinity}}) {
    EXPECT_EQ(ModelOf(row.asked, 0).Max(), row.kept) << row.asked;
  }
}

TEST(SliderModelTest, KeepsTheValueWithinZeroAndTheMaximum) {
  struct Case {
    double asked;
    double kept;
  };
  for (const Case& row :
       {Case{0, 0}, Case{37.5, 37.5}, Case{100, 100}, Case{100.01, 100}, Case{-0.01, 0},
        Case{1e300, 100}, Case{kInfinity, 100}, Case{-kInfinity, 0}, Case{kNotANumber, 0}}) {
    EXPECT_EQ(ModelOf(100, row.asked).Value(), row.kept) << row.asked;
  }
}

TEST(SliderModelTest, APageIsATenthAndNoLessThanAStep) {
  const struct { double max, page; } rows[] = {{100, 10}, {205, 20.5}, {20, 2}, {5, 2}, {1, 2}};
  for (const auto& [max, page] : rows) {
    SliderModel model;
    model.Max(max);
    EXPECT_EQ(model.Page(), page) << max;
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

TEST(SliderModelTest, ReportsHowMuchOfTheWayIsDone) {
  EXPECT_EQ(ModelOf(100, 0).Fraction(), 0);
  EXPECT_EQ(ModelOf(100, 25).Fraction(), 0.25);
  EXPECT_EQ(ModelOf(3, 3).Fraction(), 1);
  EXPECT_EQ(ModelOf(kInfinity, kInfinity).Fraction(), 1);
}

TEST(SliderPartsTest, TheTrackEndsAMarginBeforeTheRightAndLowerEdges) {
  struct Case {
    SliderHost host;
    SliderBox track;
  };
  for (const Case& row :
       {Case{{70, 18, 5, 5}, {0, 0, 65, 13}}, Case{{240, 18, 5, 5}, {0, 0, 235, 13}},
        Case{{70, 18, 0, 5}, {0, -5, 65, 13}}, Case{{70, 18, 8, 5}, {0, 3, 65, 13}},
        Case{{100, 40, 10, 5}, {0, 5, 95, 35}}, Case{{140, 38, 10, 10}, {0, 0, 130, 28}}}) {
    EXPECT_EQ(SliderTrack(row.host), row.track)
        << row.host.width << " x " << row.host.height << " inset " << row.host.heightDelta;
  }
  EXPECT_TRUE(SliderTrack({70, 18, 20, 5}).IsEmpty());
}

TEST(SliderPartsTest, TheFillIsInProportion) {
  // Inside the frame are the columns 1 to 63.
  struct Case {
    double fraction;
    int columns;
  };
  for (const Case& row :
       {Case{0, 0}, Case{0.007, 0}, Case{0.008, 1}, Case{0.25, 16}, Case{0.5, 32}, Case{0.75, 47},
        Case{0.99, 62}, Case{1, 63}, Case{1.5, 63}, Case{-1, 0}}) {
    EXPECT_EQ(SliderFill(kHost, row.fraction), (SliderBox{1, 1, 1 + row.columns, 12}))
        << row.fraction;
  }
  for (const SliderHost& small : {SliderHost{0, 0, 5, 5}, {7, 18, 5, 5}, {70, 18, 20, 5}}) {
    EXPECT_TRUE(SliderFill(small, 1).IsEmpty()) << small.width << " x " << small.height;
  }
  EXPECT_FALSE(SliderFill({8, 18, 5, 5}, 1).IsEmpty());
}

TEST(SliderPartsTest, AColumnHasAValue) {
  struct Case {
    int x;
    double max;
    double value;
  };
  for (const Case& row :
       {Case{0, 100, 0}, Case{-1, 100, 0}, Case{-30'000, 100, 0}, Case{35, 100, 50},
        Case{7, 100, 10}, Case{1, 70, 1}, Case{68, 70, 68}, Case{14, 0.5, 0.1}, Case{69, 100, 100},
        Case{70, 100, 100}, Case{30'000, 100, 100}, Case{70, 0.1, 0.1}, Case{70, 241.37, 241.37}}) {
    EXPECT_EQ(SliderValueAt(kHost, row.x, row.max), row.value) << row.x << " of " << row.max;
  }
  EXPECT_EQ(SliderValueAt({0, 18, 5, 5}, 3, 100), 0);
  EXPECT_EQ(SliderValueAt({-4, 18, 5, 5}, 3, 100), 0);
}

TEST(SliderFractionOf, ReadsAPercentage) {
  const struct {
    std::wstring_view text;
    std::optional<double> fraction;
  } cases[] = {
      {L"0", 0.0},           {L"37.5", 0.375},        {L"37.5 %", 0.375},   {L"50%", 0.5},
      {L" 100 % ", 1.0},     {L"", std::nullopt},     {L"%", std::nullopt}, {L"loud", std::nullopt},
      {L"-1", std::nullopt}, {L"100.5", std::nullopt}};
  for (const auto& [text, fraction] : cases) EXPECT_EQ(SliderFractionOf(text), fraction);
}

}  // namespace
}  // namespace tellurvane

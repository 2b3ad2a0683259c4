#include "base/Number.h"

#include <gtest/gtest.h>

#include <string>

namespace tellurvane {
namespace {

struct IntegerRow {
  const wchar_t* text;
  std::optional<std::int32_t> expected;
};

TEST(ParseIntegerTest, IsAsStrictAsThePlatform) {
  const IntegerRow rows[] = {
      {L"", std::nullopt},
      {L" ", std::nullopt},
      {L"abc", std::nullopt},
      {L"50", 50},
      {L" 12 ", 12},
      {L"+7", 7},
      {L"-1", -1},
      {L"+-1", std::nullopt},
      {L"2.5", 2},
      {L"3.5", 4},
      {L"-2.5", -2},
      {L"1e3", 1000},
      {L"1 2", std::nullopt},
      {L"12a", std::nullopt},
      {L"inf", std::nullopt},
      {L"nan", std::nullopt},
      {L"0x10", std::nullopt},
      {L"&H10", std::nullopt},
      {L"&O17", std::nullopt},
      {L"\xFF11", std::nullopt},  // a full-width digit
      {L"2147483647", 2147483647},
      {L"2147483648", std::nullopt},
      {L"-2147483648", -2147483647 - 1},
      {L"-2147483649", std::nullopt},
  };
  for (const IntegerRow& row : rows) EXPECT_EQ(ParseInteger(row.text), row.expected) << row.text;
}

TEST(AppendIntegerTest, WritesDecimalDigitsBehindTheText) {
  const struct {
    std::int32_t value;
    const wchar_t* expected;
  } rows[] = {
      {0, L"x0"},
      {7, L"x7"},
      {-7, L"x-7"},
      {10, L"x10"},
      {2147483647, L"x2147483647"},
      {-2147483647 - 1, L"x-2147483648"},
  };
  for (const auto& row : rows) {
    std::wstring text = L"x";
    AppendInteger(text, row.value);
    EXPECT_EQ(text, row.expected);
  }
}

TEST(ParseNumberTest, TakesFiniteDecimalNumbersOnly) {
  const struct {
    const wchar_t* text;
    std::optional<double> expected;
  } rows[] = {
      {L"", std::nullopt},
      {L"  ", std::nullopt},
      {L"0", 0.0},
      {L"40588.5", 40588.5},
      {L"  -1.5  ", -1.5},
      {L"+2", 2.0},
      {L".5", 0.5},
      {L"5.", 5.0},
      {L"1e3", 1000.0},
      {L"1E-2", 0.01},
      {L"-", std::nullopt},
      {L"+", std::nullopt},
      {L".", std::nullopt},
      {L"+-1", std::nullopt},
      {L"-+1", std::nullopt},
      {L"++1", std::nullopt},
      {L"--1", std::nullopt},
      {L"1e", std::nullopt},
      {L"1.2.3", std::nullopt},
      {L"1,5", std::nullopt},
      {L"1 5", std::nullopt},
      {L"\t1", std::nullopt},
      {L"1e999", std::nullopt},
      {L"inf", std::nullopt},
      {L"nan", std::nullopt},
      {L"0x10", std::nullopt},
      {L"&H10", std::nullopt},
      {L"\u0661", std::nullopt},  // an Arabic digit
      {L"\uFF11", std::nullopt},  // a full-width digit
      {L"\u0131", std::nullopt},  // '1' in its lower byte
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ParseNumber(row.text), row.expected) << row.text;
  }
}

TEST(ParseNumberTest, RefusesWhatIsLongerThanAnybodyWrites) {
  EXPECT_EQ(ParseNumber(std::wstring(63, L'0') + L"7"), 7.0);
  EXPECT_EQ(ParseNumber(std::wstring(64, L'0') + L"7"), std::nullopt);
  EXPECT_EQ(ParseNumber(L"7" + std::wstring(1000, L' ')), 7.0);
}

TEST(ParseBooleanTest, TakesTheWordsAndAnyNumber) {
  const struct {
    const wchar_t* text;
    std::optional<bool> expected;
  } rows[] = {
      {L"1", true},          {L"0", false},         {L"-1", true},
      {L" 1 ", true},        {L"2", true},          {L"0.5", true},
      {L"0.0", false},       {L"-0", false},        {L"True", true},
      {L"tRUE", true},       {L"False", false},     {L" false ", false},
      {L"", std::nullopt},   {L" ", std::nullopt},  {L"yes", std::nullopt},
      {L"T", std::nullopt},  {L"1x", std::nullopt}, {L"TrueFalse", std::nullopt},
      {L"真", std::nullopt},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ParseBoolean(row.text), row.expected) << row.text;
  }
}

TEST(RoundHalfToEvenTest, TakesTheEvenNeighbourOfAHalf) {
  const struct {
    double value;
    double expected;
  } rows[] = {
      {0, 0},     {0.5, 0},   {1.5, 2},   {2.5, 2},       {3.5, 4},
      {-0.5, 0},  {-1.5, -2}, {-2.5, -2}, {2.4999999, 2}, {2.5000001, 3},
      {-2.4, -2}, {-2.6, -3}, {7, 7},     {-7, -7},       {2147483647.5, 2147483648.0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(RoundHalfToEven(row.value), row.expected) << row.value;
  }
}

}  // namespace
}  // namespace tellurvane

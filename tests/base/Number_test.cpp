#include "base/Number.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

namespace tellurvane {
namespace {

TEST(ParseIntegerTest, IsAsStrictAsThePlatform) {
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
  const std::pair<const wchar_t*, std::int32_t> rows[] = {{L"50", 50},
                                                          {L" 12 ", 12},
                                                          {L"+7", 7},
                                                          {L"-1", -1},
                                                          {L"1e3", 1000},
                                                          // A half goes to the even neighbour.
                                                          {L"2.5", 2},
                                                          {L"3.5", 4},
                                                          {L"-2.5", -2},
                                                          {L"-3.5", -4},
                                                          {L"-0.5", 0},
                                                          {L"2.4999", 2},
                                                          {L"2.5001", 3},
                                                          {L"-2.6", -3},
                                                          {L"2147483647", 2147483647},
                                                          {L"-2147483648", kLeast}};
  for (const auto& [text, expected] : rows) EXPECT_EQ(ParseInteger(text), expected) << text;
  for (const wchar_t* const text :
       {L"", L" ", L"abc", L"+-1", L"1 2", L"12a", L"inf", L"nan", L"0x10", L"&H10", L"&O17",
        L"\xFF11", L"2147483648", L"-2147483649"}) {
    EXPECT_EQ(ParseInteger(text), std::nullopt) << text;
  }
}

TEST(AppendIntegerTest, AppendsDecimalDigits) {
  const std::pair<std::int32_t, const wchar_t*> rows[] = {
      {0, L"x0"},
      {-7, L"x-7"},
      {10, L"x10"},
      {2147483647, L"x2147483647"},
      {std::numeric_limits<std::int32_t>::min(), L"x-2147483648"}};
  for (const auto& [value, expected] : rows) {
    std::wstring text = L"x";
    AppendInteger(text, value);
    EXPECT_EQ(text, expected);
  }
}

TEST(ParseNumberTest, TakesFiniteDecimalNumbersOnly) {
  const std::pair<const wchar_t*, double> rows[] = {
      {L"0", 0.0},  {L"40588.5", 40588.5}, {L"  -1.5  ", -1.5}, {L"+2", 2.0},
      {L".5", 0.5}, {L"5.", 5.0},          {L"1e3", 1000.0},    {L"1E-2", 0.01},
  };
  for (const auto& [text, expected] : rows) EXPECT_EQ(ParseNumber(text), expected) << text;
  // The last three: digits of other scripts, and a unit whose lower byte is a digit.
  for (const wchar_t* const text :
       {L"",    L"  ",   L"-",     L"+",      L".",      L"+-1",   L"-+1",   L"++1",
        L"--1", L"1e",   L"1.2.3", L"1,5",    L"1 5",    L"\t1",   L"1e999", L"inf",
        L"nan", L"0x10", L"&H10",  L"\u0661", L"\uFF11", L"\u0131"}) {
    EXPECT_EQ(ParseNumber(text), std::nullopt) << text;
  }
  // Nobody writes a number of more than 64 units.
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

}  // namespace
}  // namespace tellurvane

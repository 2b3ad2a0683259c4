#include "base/Number.h"

#include <gtest/gtest.h>

#include <string>

namespace tellurvane {
namespace {

std::string Shown(const wchar_t* text) {
  std::string shown;
  for (; *text != 0; ++text) shown += static_cast<char>(*text < 128 ? *text : '?');
  return '"' + shown + '"';
}

TEST(ParseIntegerTest, IsAsStrictAsThePlatform) {
  const struct {
    const wchar_t* text;
    std::optional<std::int32_t> expected;
  } rows[] = {
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
      {L"&H10", 16},
      {L"&hff", 255},
      {L"&O17", 15},
      {L"&H", std::nullopt},
      {L"&Hg", std::nullopt},
      {L"&HFFFFFFFF", -1},
      {L"&H100000000", std::nullopt},
      {L"1 2", std::nullopt},
      {L"12a", std::nullopt},
      {L"inf", std::nullopt},
      {L"nan", std::nullopt},
      {L"0x10", std::nullopt},
      {L"\xFF11", std::nullopt},  // a full-width digit
      {L"2147483647", 2147483647},
      {L"2147483648", std::nullopt},
      {L"-2147483648", -2147483647 - 1},
      {L"-2147483649", std::nullopt},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ParseInteger(row.text), row.expected) << Shown(row.text);
  }
}

}  // namespace
}  // namespace tellurvane

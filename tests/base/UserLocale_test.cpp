// What the program reads and writes against what the platform does, in the user's locale.
#include <windows.h>

#include <gtest/gtest.h>
#include <oleauto.h>

#include <optional>
#include <random>
#include <string>

#include "base/LocaleDates.h"
#include "base/Number.h"

namespace tellurvane {
namespace {

bool IsTaiwanese() { return PRIMARYLANGID(GetUserDefaultLangID()) == LANG_CHINESE; }

std::int64_t Second(const CivilDateTime& civil) {
  const auto serial = SerialFromCivil(civil);
  EXPECT_TRUE(serial.has_value());
  return SecondsFromSerial(serial.value_or(0));
}

void ExpectReadBack(const DateReader& reader, std::int64_t second) {
  const std::wstring text = LocaleDateText(SerialFromSeconds(second));
  const auto read = reader.Read(text);
  ASSERT_TRUE(read.has_value()) << text;
  EXPECT_EQ(SecondsFromSerial(*read), second) << text;
}

TEST(UserLocaleTest, IsOneOfTheTwoThatTheTestsAreMadeFor) {
  EXPECT_EQ(LocaleDateText(40588.5),
            IsTaiwanese() ? L"2011/2/14 下午12:00:00" : L"2/14/2011 12:00:00 PM");
  EXPECT_EQ(GetACP(), IsTaiwanese() ? 950U : 1252U);
}

TEST(UserLocaleTest, ThousandsOfRandomMomentsAreReadBack) {
  const DateReader reader = UserDateReader();
  std::mt19937_64 random(20110214);  // always the same moments
  std::uniform_int_distribution<std::int64_t> ever(Second({1000, 1, 1}), kLastSecond);
  std::uniform_int_distribution<std::int64_t> nowadays(Second({1990, 1, 1}), Second({2060, 1, 1}));
  for (int i = 0; i < 5'000 && !testing::Test::HasFailure(); ++i) {
    ExpectReadBack(reader, ever(random));
    ExpectReadBack(reader, nowadays(random));
  }
}

TEST(UserLocaleTest, EdgesOfTheTextAreReadBack) {
  const DateReader reader = UserDateReader();
  const CivilDateTime rows[] = {
      {1899, 12, 30, 0, 0, 0},     // the zero day: the time alone
      {1899, 12, 30, 13, 5, 9},    //
      {1899, 12, 29, 12, 0, 0},    // before it, where the fraction counts the other way
      {2011, 2, 14, 0, 0, 0},      // midnight: the date alone
      {2011, 2, 14, 0, 59, 59},    //
      {2011, 2, 14, 11, 59, 59},   //
      {2011, 2, 14, 12, 0, 0},     // noon
      {2011, 2, 14, 12, 59, 59},   //
      {2011, 1, 2, 3, 4, 5},       // one digit throughout
      {2011, 12, 22, 22, 44, 55},  // two digits throughout
      {2012, 2, 29, 9, 0, 0},      // a leap day
      {2011, 11, 12, 10, 11, 12},  // day and month could change places
      {2029, 12, 31, 23, 59, 59},  // two-digit years turn here, or here
      {2049, 12, 31, 23, 59, 59},  //
      {1000, 1, 1, 0, 0, 0},       // the first and the last moment
      {9999, 12, 31, 23, 59, 59},  //
  };
  for (const CivilDateTime& row : rows) ExpectReadBack(reader, Second(row));
}

TEST(UserLocaleTest, TheTimeIsLeftOutAtMidnightAndTheDateOnTheZeroDay) {
  EXPECT_EQ(LocaleDateText(40588), IsTaiwanese() ? L"2011/2/14" : L"2/14/2011");
  EXPECT_EQ(LocaleDateText(0.5), IsTaiwanese() ? L"下午12:00:00" : L"12:00:00 PM");
  EXPECT_EQ(LocaleDateText(0), IsTaiwanese() ? L"上午12:00:00" : L"12:00:00 AM");
}

TEST(UserLocaleTest, ItsOrderOfDayMonthAndYearIsKnown) {
  const DateFormat format = UserDateFormat();
  EXPECT_EQ(format.order, IsTaiwanese() ? DateOrder::kYearMonthDay : DateOrder::kMonthDayYear);
  EXPECT_EQ(format.amDesignator, IsTaiwanese() ? L"上午" : L"AM");
  EXPECT_EQ(format.pmDesignator, IsTaiwanese() ? L"下午" : L"PM");
  EXPECT_GE(format.twoDigitYearMax, 2029);
}

TEST(UserLocaleTest, ThePresentIsThatOfItsClock) {
  const auto second = [](const SYSTEMTIME& at) {
    return Second({at.wYear, at.wMonth, at.wDay, at.wHour, at.wMinute, at.wSecond});
  };
  SYSTEMTIME before = {};
  SYSTEMTIME after = {};
  GetLocalTime(&before);
  const DateSerial now = Now();
  GetLocalTime(&after);
  EXPECT_GE(SecondsFromSerial(now), second(before));
  EXPECT_LE(SecondsFromSerial(now), second(after));
}

std::optional<std::int32_t> PlatformInteger(std::wstring text) {
  LONG value = 0;
  const HRESULT outcome = VarI4FromStr(text.data(), LOCALE_USER_DEFAULT, 0, &value);
  return SUCCEEDED(outcome) ? std::optional<std::int32_t>(value) : std::nullopt;
}

std::optional<bool> PlatformBoolean(std::wstring text) {
  VARIANT_BOOL value = VARIANT_FALSE;
  const HRESULT outcome = VarBoolFromStr(text.data(), LOCALE_USER_DEFAULT, 0, &value);
  return SUCCEEDED(outcome) ? std::optional<bool>(value != VARIANT_FALSE) : std::nullopt;
}

TEST(UserLocaleTest, IntegersAreReadAsThePlatformReadsThem) {
  for (const wchar_t* text :
       {L"",           L" ",           L"abc",         L"0",     L"1",   L"50",   L" 12 ",
        L"+7",         L"-1",          L"--1",         L"2.5",   L"3.5", L"-2.5", L"-3.5",
        L"0.5",        L"1.5",         L"2.4999",      L"1e3",   L"1E3", L"1e-3", L"1e400",
        L"&H10",       L"&hff",        L"&O17",        L"&o17",  L"&H",  L"&Hg",  L"&HFFFFFFFF",
        L"&",          L"&H 10",       L" &H10 ",      L"1 2",   L"12a", L"inf",  L"nan",
        L"0x10",       L"2147483647",  L"2147483648",  L"00012", L".5",  L"5.",   L".",
        L"-",          L"+",           L"e3",          L"1|0",   L"1;",  L"True", L"\xFF15",
        L"4294967295", L"-2147483648", L"-2147483649", L"1d3",   L"5%",  L"NT$5", L",1"}) {
    EXPECT_EQ(ParseInteger(text), PlatformInteger(text)) << '"' << text << '"';
  }
}

// What only a hand writes into a list: the platform reads it; for us the line is malformed and
// kept in the backup.
TEST(UserLocaleTest, SomeIntegersOfThePlatformAreDeliberatelyRefused) {
  for (const wchar_t* text : {L"1,000", L"1,2", L"(5)", L"5-", L"5 -", L"- 5", L"\t5", L"5\t",
                              L"\x3000\x0035", L"-&H10"}) {
    EXPECT_TRUE(PlatformInteger(text).has_value()) << text;
    EXPECT_EQ(ParseInteger(text), std::nullopt) << text;
  }
}

TEST(UserLocaleTest, BooleansAreReadAsThePlatformReadsThem) {
  for (const wchar_t* text :
       {L"",    L" ",    L"abc",   L"0",    L"1",     L"-1",   L"2",   L"0.5",
        L"0.0", L"True", L"False", L"true", L"FALSE", L"TRUE", L"tru", L"truely",
        L"yes", L"no",   L"on",    L"是",   L"1 1",   L"1e3",  L" 1 ", L"4294967295"}) {
    EXPECT_EQ(ParseBoolean(text), PlatformBoolean(text)) << '"' << text << '"';
  }
}

TEST(UserLocaleTest, SomeBooleansDeliberatelyDifferFromThePlatforms) {
  const struct {
    const wchar_t* text;
    std::optional<bool> platform;
    std::optional<bool> ours;
  } rows[] = {
      {L"#TRUE#", true, std::nullopt},
      {L"#FALSE#", false, std::nullopt},
      {L"1,000", true, std::nullopt},
      {L" true ", std::nullopt, true},  // blanks are as harmless here as round a number
  };
  for (const auto& row : rows) {
    EXPECT_EQ(PlatformBoolean(row.text), row.platform) << row.text;
    EXPECT_EQ(ParseBoolean(row.text), row.ours) << row.text;
  }
}

}  // namespace
}  // namespace tellurvane

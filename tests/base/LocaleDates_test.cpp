// What the program writes and reads in the locale of the user, which is one of two in the tests.
#include "base/LocaleDates.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tests/support/HostDates.h"
#include "tests/support/Moments.h"
#include "tests/support/Wine.h"

namespace tellurvane {
namespace {

bool IsTaiwanese() { return PRIMARYLANGID(GetUserDefaultLangID()) == LANG_CHINESE; }

const HostLocale& PresentLocale() { return IsTaiwanese() ? ZhTwUnderWine() : EnUs(); }

std::vector<DateSerial> EdgesOfTheText() {
  return {
      At(1899, 12, 30),  // the zero day: the time alone
      At(1899, 12, 30, 13, 5, 9),
      At(1899, 12, 29, 12),  // before it, where the fraction counts the other way
      At(2011, 2, 14),       // midnight: the date alone
      At(2011, 2, 14, 0, 59, 59),
      At(2011, 2, 14, 12),      // noon
      At(2011, 1, 2, 3, 4, 5),  // one digit throughout
      At(2011, 12, 22, 22, 44, 55),
      At(2012, 2, 29, 9),
      At(2011, 11, 12, 10, 11, 12),  // day and month could change places
      At(2029, 12, 31, 23, 59, 59),  // two-digit years turn here, or at 2049
      At(2049, 12, 31, 23, 59, 59),
      At(1000, 1, 1),  // the first and the last moment
      At(9999, 12, 31, 23, 59, 59),
  };
}

// The edges, and so many random moments of all times and of our own; always the same ones.
std::vector<DateSerial> Moments(int randomOnes) {
  std::vector<DateSerial> moments = EdgesOfTheText();
  std::mt19937_64 random(20110214);
  using Seconds = std::uniform_int_distribution<std::int64_t>;
  Seconds ever(SecondsFromSerial(At(1000, 1, 1)), kLastSecond);
  Seconds nowadays(SecondsFromSerial(At(1990, 1, 1)), SecondsFromSerial(At(2060, 1, 1)));
  for (int i = 0; i < randomOnes / 2; ++i) {
    moments.push_back(SerialFromSeconds(ever(random)));
    moments.push_back(SerialFromSeconds(nowadays(random)));
  }
  return moments;
}

TEST(LocaleDatesTest, TheLocaleIsOneOfTheTwoThatTheTestsAreMadeFor) {
  SKIP_UNLESS_WINE("on Windows each user chooses the date format");
  EXPECT_EQ(LocaleDateText(40588.5),
            IsTaiwanese() ? L"2011/2/14 下午12:00:00" : L"2/14/2011 12:00:00 PM");
  EXPECT_EQ(GetACP(), IsTaiwanese() ? 950U : 1252U);
}

TEST(LocaleDatesTest, WritesWhatTheHostsWriterWrites) {
  SKIP_UNLESS_WINE("on Windows each user chooses the date format");
  for (const DateSerial moment : Moments(1'000)) {
    EXPECT_EQ(LocaleDateText(moment), HostDateText(moment, PresentLocale()));
  }
}

TEST(LocaleDatesTest, ReadsBackWhatItWrites) {
  const DateReader reader = UserDateReader();
  for (const DateSerial moment : Moments(10'000)) {
    ASSERT_EQ(reader.Read(LocaleDateText(moment)), moment) << LocaleDateText(moment);
  }
}

TEST(LocaleDatesTest, ReadsAndWritesSerials) {
  EXPECT_EQ(UserDateReader().Read(L"40588.5"), At(2011, 2, 14, 12));
  EXPECT_EQ(UserDateReader().Read(L"40588"), At(2011, 2, 14));
  EXPECT_EQ(UserDateReader().Read(L"never"), std::nullopt);
  // The platform writes no date after the year 9999.
  std::wstring text = L"x\t";
  AppendLocaleDateText(text, 2'958'466);
  EXPECT_EQ(text, L"x\t2958466.0000000");
}

TEST(LocaleDatesTest, TellsTheUsersFormat) {
  SKIP_UNLESS_WINE("on Windows each user chooses the date format");
  const DateFormat user = UserDateFormat();
  const DateFormat& expected = PresentLocale().format;
  EXPECT_EQ(user.order, expected.order);
  EXPECT_EQ(user.dateSeparator, expected.dateSeparator);
  EXPECT_EQ(user.timeSeparator, expected.timeSeparator);
  EXPECT_EQ(user.amDesignator, expected.amDesignator);
  EXPECT_EQ(user.pmDesignator, expected.pmDesignator);
  EXPECT_EQ(user.decimalSeparator, L'.');
  EXPECT_EQ(user.yearOffset, 0);
  EXPECT_GE(user.twoDigitYearMax, 2029);
}

TEST(LocaleDatesTest, ThePresentIsThatOfTheUsersClockToTheSecond) {
  const auto serial = [](const SYSTEMTIME& at) {
    return At(at.wYear, at.wMonth, at.wDay, at.wHour, at.wMinute, at.wSecond);
  };
  SYSTEMTIME before = {};
  SYSTEMTIME after = {};
  GetLocalTime(&before);
  const DateSerial now = Now();
  GetLocalTime(&after);
  EXPECT_EQ(SerialFromSeconds(SecondsFromSerial(now)), now);
  EXPECT_GE(now, serial(before));
  EXPECT_LE(now, serial(after));
}

}  // namespace
}  // namespace tellurvane

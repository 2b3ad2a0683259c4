#include "base/LocaleDates.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/HostDates.h"
#include "tests/support/Moments.h"

namespace tellurvane {
namespace {

// The one of the two locales that this process runs under.
const HostLocale& PresentLocale() {
  return UserDateFormat().order == DateOrder::kMonthDayYear ? EnUs() : ZhTwUnderWine();
}

std::vector<DateSerial> Moments() {
  std::vector<DateSerial> moments = {0,
                                     0.5,
                                     -1.5,
                                     At(1899, 12, 29),
                                     At(1000, 1, 1),
                                     At(2011, 2, 14),
                                     At(2011, 2, 14, 12),
                                     At(2011, 2, 14, 0, 0, 1),
                                     At(9999, 12, 31, 23, 59, 59)};
  std::mt19937 random(7);
  std::uniform_int_distribution<std::int64_t> seconds(SecondsFromSerial(At(1000, 1, 1)),
                                                      kLastSecond);
  for (int i = 0; i < 500; ++i) moments.push_back(SerialFromSeconds(seconds(random)));
  return moments;
}

TEST(LocaleDatesTest, WritesWhatTheHostsWriterWrites) {
  for (const DateSerial moment : Moments()) {
    EXPECT_EQ(LocaleDateText(moment), HostDateText(moment, PresentLocale()));
  }
}

TEST(LocaleDatesTest, ReadsBackWhatItWrites) {
  const DateReader reader = UserDateReader();
  for (const DateSerial moment : Moments()) {
    EXPECT_EQ(reader.Read(LocaleDateText(moment)), moment) << LocaleDateText(moment);
  }
}

TEST(LocaleDatesTest, ReadsBackWhatTheOtherLocaleWrote) {
  const DateReader reader = UserDateReader();
  for (const DateSerial moment : Moments()) {
    for (const HostLocale* locale : {&ZhTw(), &ZhTwUnderWine(), &EnUs()}) {
      const std::wstring text = HostDateText(moment, *locale);
      EXPECT_EQ(reader.Read(text), moment) << text;
    }
  }
}

TEST(LocaleDatesTest, ReadsSerialsThatAreNoDateOfTheLocale) {
  EXPECT_EQ(UserDateReader().Read(L"40588.5"), At(2011, 2, 14, 12));
  EXPECT_EQ(UserDateReader().Read(L"40588"), At(2011, 2, 14));
  EXPECT_EQ(UserDateReader().Read(L"never"), std::nullopt);
}

TEST(LocaleDatesTest, WritesTheSerialOfADateThatThePlatformRefuses) {
  EXPECT_EQ(LocaleDateText(2'958'466), L"2958466.0000000");
}

TEST(LocaleDatesTest, AppendsBehindWhatIsThere) {
  std::wstring text = L"x\t";
  AppendLocaleDateText(text, At(2011, 2, 14));
  EXPECT_EQ(text, L"x\t" + LocaleDateText(At(2011, 2, 14)));
}

TEST(LocaleDatesTest, TellsTheUsersFormat) {
  const DateFormat user = UserDateFormat();
  const DateFormat& expected = PresentLocale().format;
  EXPECT_EQ(user.dateSeparator, expected.dateSeparator);
  EXPECT_EQ(user.timeSeparator, expected.timeSeparator);
  EXPECT_EQ(user.amDesignator, expected.amDesignator);
  EXPECT_EQ(user.pmDesignator, expected.pmDesignator);
  EXPECT_EQ(user.decimalSeparator, L'.');
  EXPECT_EQ(user.yearOffset, 0);
}

TEST(LocaleDatesTest, TellsThePresentToTheSecond) {
  const DateSerial now = Now();
  EXPECT_EQ(SerialFromSeconds(SecondsFromSerial(now)), now);
  EXPECT_GT(now, At(2024, 1, 1));
}

}  // namespace
}  // namespace tellurvane

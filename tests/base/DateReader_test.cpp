// How a reader goes through the formats that may have written a text.
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

#include "base/DateText.h"
#include "tests/support/HostDates.h"
#include "tests/support/Moments.h"

namespace tellurvane {
namespace {

// A system reader that answers one thing and remembers what it was asked.
struct FakeSystem {
  std::optional<DateSerial> answer;
  std::vector<std::wstring> asked;

  SystemDateReader Reader() {
    return [this](std::wstring_view text) {
      asked.emplace_back(text);
      return answer;
    };
  }
};

// Whole seconds anywhere in the years, a midnight now and then.
DateSerial RandomMoment(std::mt19937& random) {
  std::int64_t seconds = std::uniform_int_distribution<std::int64_t>(
      SecondsFromSerial(At(1000, 1, 1)), kLastSecond)(random);
  if (random() % 8 == 0) seconds -= seconds % kSecondsPerDay;
  return SerialFromSeconds(seconds);
}

TEST(DateReaderTest, ReadsBackWhatAnyOfTheLocalesWrote) {
  std::mt19937 random(20'110'214);
  for (int i = 0; i < 3'000; ++i) {
    const DateSerial moment = i == 0 ? 0 : RandomMoment(random);
    for (const HostLocale* writer : {&ZhTw(), &ZhTwUnderWine(), &EnUs()}) {
      const std::wstring text = HostDateText(moment, *writer);
      for (const HostLocale* reader : {&ZhTw(), &EnUs()}) {
        ASSERT_EQ(HostDateReader(*reader).Read(text), moment) << text;
      }
    }
  }
}

TEST(DateReaderTest, ReadsForeignTextsThatOnlyOneFormatCanMean) {
  const struct {
    const wchar_t* text;
    std::optional<DateSerial> expected;
  } rows[] = {
      {L"2/14/2011 3:20:05 PM", At(2011, 2, 14, 15, 20, 5)},     // en-US
      {L"2011/02/14 午後 3:20:05", At(2011, 2, 14, 15, 20, 5)},  // ja-JP
      {L"2011-02-14T15:20:05", At(2011, 2, 14, 15, 20, 5)},      // ISO
      {L"10/20/11", At(2011, 10, 20)},
      {L"20/10/11", At(2020, 10, 11)},
      {L"11/11/11", At(2011, 11, 11)},
      {L"31/12/2011", std::nullopt},  // no format of these has the day in front
      {L"오후 3:20:05", std::nullopt},
      // The formats disagree.
      {L"10/2/11", std::nullopt},
      {L"10/2/11 15:20:05", std::nullopt},
      {L"1/2/3", std::nullopt},
      {L"12-11-10", std::nullopt},
  };
  // A user whose own format reads no year of two digits, so that the others are asked.
  const DateFormat format = {.amDesignator = {}, .pmDesignator = {}, .twoDigitYearMax = 99};
  const DateReader reader(format, nullptr);
  for (const auto& row : rows) EXPECT_EQ(reader.Read(row.text), row.expected) << row.text;
  // A user's own format settles it.
  EXPECT_EQ(HostDateReader(ZhTw()).Read(L"10/2/11"), At(2010, 2, 11));
  EXPECT_EQ(HostDateReader(EnUs()).Read(L"10/2/11"), At(2011, 10, 2));
}

TEST(DateReaderTest, ReadsSerials) {
  const struct {
    const wchar_t* text;
    std::optional<DateSerial> expected;
  } rows[] = {
      {L"40588.5", At(2011, 2, 14, 12)},
      {L"0", 0},
      {L"-1.5", At(1899, 12, 29, 12)},
      {L"4.05885E4", At(2011, 2, 14, 12)},
      {L"40588.50000579", At(2011, 2, 14, 12, 0, 1)},  // half a second up
      {L"2958465.99999", At(9999, 12, 31, 23, 59, 59)},
      {L"2958466", std::nullopt},
      {L"-328716", At(1000, 1, 1)},
      {L"-328717", std::nullopt},
      {L"40588,5", std::nullopt},
      {L"", std::nullopt},
      {L"never", std::nullopt},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(HostDateReader(ZhTw()).Read(row.text), row.expected) << row.text;
  }
}

TEST(DateReaderTest, TakesTheDecimalSeparatorOfTheUserAndThePoint) {
  const DateReader reader(DateFormat{.order = DateOrder::kDayMonthYear,
                                     .dateSeparator = L".",
                                     .amDesignator = {},
                                     .pmDesignator = {},
                                     .decimalSeparator = L','},
                          nullptr);
  EXPECT_EQ(reader.Read(L"40588,5"), At(2011, 2, 14, 12));
  EXPECT_EQ(reader.Read(L"40588.5"), At(2011, 2, 14, 12));
}

TEST(DateReaderTest, AsksTheSystemAfterTheUsersFormatAndBeforeTheOthers) {
  FakeSystem system{.answer = At(1999, 9, 9) + 0.4 / 86'400, .asked = {}};
  const DateReader reader(ZhTw().format, system.Reader());
  EXPECT_EQ(reader.Read(L"10/2/11"), At(2010, 2, 11));
  EXPECT_TRUE(system.asked.empty());
  const std::vector<std::wstring> texts = {L"2/14/2011 3:20:05 PM", L"40588.5", L"Valentine"};
  for (const std::wstring& text : texts) EXPECT_EQ(reader.Read(text), At(1999, 9, 9)) << text;
  EXPECT_EQ(system.asked, texts);
  // Where the user's format is not known, the system is asked first.
  EXPECT_EQ(DateReader(std::nullopt, system.Reader()).Read(L"2011/2/14"), At(1999, 9, 9));
}

TEST(DateReaderTest, RefusesDatesBeforeTheYear1000) {
  EXPECT_EQ(HostDateReader(EnUs()).Read(L"12/31/999"), std::nullopt);
  EXPECT_EQ(HostDateReader(EnUs()).Read(L"1/1/1000"), At(1000, 1, 1));
  FakeSystem system{.answer = At(999, 12, 31), .asked = {}};
  EXPECT_EQ(DateReader(ZhTw().format, system.Reader()).Read(L"long ago"), std::nullopt);
}

TEST(DateReaderTest, GoesOnWhereTheSystemKnowsNothing) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  const std::optional<DateSerial> answers[] = {std::nullopt, 2'958'466.0, -1e9, kNan};
  for (const auto& answer : answers) {
    FakeSystem system{.answer = answer, .asked = {}};
    for (const auto& format : {std::optional(ZhTw().format), std::optional<DateFormat>()}) {
      const DateReader reader(format, system.Reader());
      EXPECT_EQ(reader.Read(L"2/14/2011 3:20:05 PM"), At(2011, 2, 14, 15, 20, 5));
      EXPECT_EQ(reader.Read(L"40588.5"), At(2011, 2, 14, 12));
      EXPECT_EQ(reader.Read(L"40588,5"), std::nullopt);
      EXPECT_EQ(reader.Read(L"Valentine"), std::nullopt);
    }
  }
}

}  // namespace
}  // namespace tellurvane

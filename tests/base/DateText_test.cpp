// Texts of one locale; what a reader makes of foreign ones is in DateReader_test.cpp.
#include "base/DateText.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "tests/support/Moments.h"

namespace tellurvane {
namespace {

DateFormat ZhTwFormat() { return {.amDesignator = L"上午", .pmDesignator = L"下午"}; }
DateFormat EnUsFormat() {
  return {.order = DateOrder::kMonthDayYear, .amDesignator = L"AM", .pmDesignator = L"PM"};
}
DateFormat EnGbFormat() {
  return {.order = DateOrder::kDayMonthYear, .amDesignator = L"AM", .pmDesignator = L"PM"};
}
DateFormat DeDeFormat() {
  return {.order = DateOrder::kDayMonthYear,
          .dateSeparator = L".",
          .amDesignator = {},
          .pmDesignator = {}};
}
DateFormat FiFiFormat() {
  return {.order = DateOrder::kDayMonthYear,
          .dateSeparator = L".",
          .timeSeparator = L".",
          .amDesignator = L"ap.",
          .pmDesignator = L"ip."};
}
DateFormat HuHuFormat() {
  return {.dateSeparator = L". ", .amDesignator = L"de.", .pmDesignator = L"du."};
}

struct Row {
  const wchar_t* text;
  std::optional<DateSerial> expected;
};

template <size_t kCount>
void ExpectRead(const DateFormat& format, const Row (&rows)[kCount]) {
  for (const Row& row : rows) EXPECT_EQ(ParseDateText(row.text, format), row.expected) << row.text;
}

TEST(ParseDateTextTest, ReadsTraditionalChinese) {
  const Row rows[] = {
      {L"2011/2/14 下午 03:20:05", At(2011, 2, 14, 15, 20, 5)},
      {L"2011/2/14 下午3:20:05", At(2011, 2, 14, 15, 20, 5)},
      {L"2011/2/14下午3:20:05", At(2011, 2, 14, 15, 20, 5)},
      {L"2011/2/14 03:20:05 下午", At(2011, 2, 14, 15, 20, 5)},
      {L"2011/2/14 上午 12:00:00", At(2011, 2, 14)},
      {L"2011/2/14 上午 12:59:59", At(2011, 2, 14, 0, 59, 59)},
      {L"2011/2/14 15:20:05", At(2011, 2, 14, 15, 20, 5)},
      {L"2011/2/14 15:20", At(2011, 2, 14, 15, 20)},
      {L"2011-02-14", At(2011, 2, 14)},
      {L"2011年2月14日 15時20分5秒", At(2011, 2, 14, 15, 20, 5)},
      {L"2011年2月14日", At(2011, 2, 14)},
      {L"  2011/2/14  下午  3:20:05  ", At(2011, 2, 14, 15, 20, 5)},
      {L"2011/2/14\u3000下午\u00A03:20:05", At(2011, 2, 14, 15, 20, 5)},
      {L"\u200E2011/2/14\t下午\u20093:20:05\u200F", At(2011, 2, 14, 15, 20, 5)},
      {L"115/11/20 下午 3:20:05", At(2026, 11, 20, 15, 20, 5)},  // the Taiwanese calendar
  };
  ExpectRead(ZhTwFormat(), rows);
}

TEST(ParseDateTextTest, ReadsEnglish) {
  const Row american[] = {
      {L"2/14/2011 3:20:05PM", At(2011, 2, 14, 15, 20, 5)},
      {L"2/14/2011 PM 3:20:05", At(2011, 2, 14, 15, 20, 5)},
      {L"2/14/2011 3:20:05 pm", At(2011, 2, 14, 15, 20, 5)},
      {L"2/14/2011 3:20:05\u202FPM", At(2011, 2, 14, 15, 20, 5)},
      {L"2/14/2011, 3:20:05 PM", At(2011, 2, 14, 15, 20, 5)},
      {L"2011/2/14", At(2011, 2, 14)},
      {L"14/2/2011", std::nullopt},
  };
  ExpectRead(EnUsFormat(), american);
  const Row british[] = {
      {L"14/02/2011 15:20:05", At(2011, 2, 14, 15, 20, 5)},
      {L"14/02/2011 03:20:05 pm", At(2011, 2, 14, 15, 20, 5)},
      {L"03/02/2011", At(2011, 2, 3)},
      {L"2/14/2011", std::nullopt},
  };
  ExpectRead(EnGbFormat(), british);
}

TEST(ParseDateTextTest, ReadsDatesWithPoints) {
  const Row german[] = {
      {L"14.02.2011 15:20:05", At(2011, 2, 14, 15, 20, 5)},
      {L"14/02/2011", At(2011, 2, 14)},
      {L"02.14.2011", std::nullopt},
      {L"4058.5", std::nullopt},
  };
  ExpectRead(DeDeFormat(), german);
  const Row finnish[] = {
      {L"14.2.2011 15.20.05", At(2011, 2, 14, 15, 20, 5)},
      {L"14.2.2011 3.20.05 ip.", At(2011, 2, 14, 15, 20, 5)},
      {L"15.20", At(1899, 12, 30, 15, 20)},
      {L"15:20:05", At(1899, 12, 30, 15, 20, 5)},  // the colon is known everywhere
      {L"0.00.00", 0},
      {L"15.20.05", At(1899, 12, 30, 15, 20, 5)},  // there is no month 20
      {L"3.10.05 ip.", At(1899, 12, 30, 15, 10, 5)},
  };
  ExpectRead(FiFiFormat(), finnish);
  const Row hungarian[] = {{L"2011. 02. 14. 15:20:05", At(2011, 2, 14, 15, 20, 5)},
                           {L"2011. 02. 14.", At(2011, 2, 14)}};
  ExpectRead(HuHuFormat(), hungarian);
}

TEST(ParseDateTextTest, ReadsIsoInEveryFormat) {
  const Row rows[] = {
      {L"2011-02-14T15:20:05", At(2011, 2, 14, 15, 20, 5)},
      {L"2011-02-14 15:20:05", At(2011, 2, 14, 15, 20, 5)},
      {L"2011-02-14T15:20", At(2011, 2, 14, 15, 20)},
      {L"2011-02-14", At(2011, 2, 14)},
  };
  for (const DateFormat& format : {ZhTwFormat(), EnUsFormat(), EnGbFormat(), DeDeFormat()}) {
    ExpectRead(format, rows);
    for (const wchar_t* const text :
         {L"2011-02-14T", L"2011-02-14Tx", L"2011-02-14 T15:20:05", L"T15:20:05",
          L"2011-02-14T15:20:05Z", L"2011-02-14T15:20:05+08:00"}) {
      EXPECT_EQ(ParseDateText(text, format), std::nullopt) << text;
    }
  }
}

TEST(ParseDateTextTest, ReadsATimeAloneOnTheZeroDay) {
  const Row rows[] = {
      {L"上午 12:00:00", 0}, {L"下午 12:00:00", 0.5}, {L"06:00:00", 0.25},
      {L"18:00", 0.75},      {L"6:00:00 下午", 0.75}, {L"23:59:59", At(1899, 12, 30, 23, 59, 59)},
  };
  ExpectRead(ZhTwFormat(), rows);
}

TEST(ParseDateTextTest, MindsTheHourBesideADesignator) {
  const Row rows[] = {
      {L"0:30:00 AM", At(1899, 12, 30, 0, 30)},
      {L"12:30:00 AM", At(1899, 12, 30, 0, 30)},
      {L"0:30:00 PM", At(1899, 12, 30, 12, 30)},
      {L"12:30:00 PM", At(1899, 12, 30, 12, 30)},
      {L"15:20:05 PM", At(1899, 12, 30, 15, 20, 5)},
      {L"15:20:05 AM", std::nullopt},
      {L"3:20:05 AM PM", std::nullopt},
      {L"AM 3:20:05 AM", std::nullopt},
      {L"2/14/2011 PM", std::nullopt},
      {L"PM", std::nullopt},
  };
  ExpectRead(EnUsFormat(), rows);
}

TEST(ParseDateTextTest, TakesTheLongerOfTwoDesignatorsThatBeginAlike) {
  const DateFormat format = {.amDesignator = L"p", .pmDesignator = L"pm"};
  const Row rows[] = {{L"3:00 p", 0.125}, {L"3:00 pm", 0.625}};
  ExpectRead(format, rows);
  const DateFormat other = {.amDesignator = L"am", .pmDesignator = L"a"};
  const Row otherRows[] = {{L"3:00 a", 0.625}, {L"3:00 am", 0.125}};
  ExpectRead(other, otherRows);
}

TEST(ParseDateTextTest, AddsTheYearOffsetOfTheCalendar) {
  DateFormat taiwanese = ZhTwFormat();
  taiwanese.yearOffset = 1911;
  const Row taiwaneseRows[] = {
      {L"100/2/14 下午 03:20:05", At(2011, 2, 14, 15, 20, 5)},
      {L"115/11/20", At(2026, 11, 20)},
      {L"99/2/14", At(2010, 2, 14)},
      {L"1/1/1", At(1912, 1, 1)},
      {L"2011/2/14", At(2011, 2, 14)},  // plain all the same
      {L"101/2/29", At(2012, 2, 29)},
      {L"100/2/29", std::nullopt},
  };
  ExpectRead(taiwanese, taiwaneseRows);
  DateFormat thai = EnGbFormat();
  thai.yearOffset = -543;
  const Row thaiRows[] = {{L"14/2/2554 15:20:05", At(2011, 2, 14, 15, 20, 5)},
                          {L"14/2/2011", At(2011, 2, 14)}};
  ExpectRead(thai, thaiRows);
}

TEST(ParseDateTextTest, PutsTwoDigitsIntoTheCenturyOfTheUser) {
  DateFormat format = EnUsFormat();
  const Row rows[] = {{L"2/14/11", At(2011, 2, 14)}, {L"2/14/49", At(2049, 2, 14)},
                      {L"2/14/50", At(1950, 2, 14)}, {L"2/14/99", At(1999, 2, 14)},
                      {L"2/14/0", At(2000, 2, 14)},  {L"2/14/011", std::nullopt}};
  ExpectRead(format, rows);
  format.twoDigitYearMax = 2029;
  const Row earlier[] = {{L"2/14/29", At(2029, 2, 14)}, {L"2/14/30", At(1930, 2, 14)}};
  ExpectRead(format, earlier);
}

TEST(ParseDateTextTest, TakesThreeDigitsInFrontForATaiwaneseYearInEveryFormat) {
  const Row rows[] = {{L"115/11/20 15:20:05", At(2026, 11, 20, 15, 20, 5)},
                      {L"100/2/14", At(2011, 2, 14)},
                      {L"114/2/29", std::nullopt}};
  for (const DateFormat& format : {ZhTwFormat(), EnUsFormat(), DeDeFormat()}) {
    ExpectRead(format, rows);
  }
}

TEST(ParseDateTextTest, RejectsTextsThatAreNotDates) {
  const std::initializer_list<const wchar_t*> unreadable = {
      // Dates and times that do not exist.
      L"2011/13/1", L"2011/0/1", L"2011/1/0", L"2011/2/29", L"2011/4/31", L"2011/123/1",
      L"2011/2/123", L"02011/2/14", L"99999999999999999999/2/14", L"99/12/31/1",
      L"2011/2/14 24:00:00", L"2011/2/14 12:60:00", L"2011/2/14 12:00:60", L"2011/2/14 012:00:00",
      // Too few numbers, and too many.
      L"", L" ", L"/", L":", L"下午", L"12", L"2011", L"40588.5", L"2011/2", L"2011/2/14 3",
      L"2011/2/14 12:00:00:00", L"99/1/1/1/1/1/1",
      // Separators out of place.
      L"/2011/2/14", L"-2011/2/14", L"2011//2/14", L"2011/2:14", L"2011:2:14 12:00:00",
      L"2011/2/14 12/00/00", L"2011/2/14:12:00:00", L"1 2 3", L"2011 2 14", L"12:00:00 2011/2/14",
      L"24:00:00", L"12:60:00", L"12:00:60", L"下午 12",
      // Foreign letters and digits.
      L"abc", L"2011/2/14x", L"x2011/2/14", L"#2011/2/14#", L"2011/2/14 PM 3:20:05",
      L"\uFF12\uFF10\uFF11\uFF11/2/14", L"Feb 14 2011"};
  for (const wchar_t* const text : unreadable) {
    EXPECT_EQ(ParseDateText(text, ZhTwFormat()), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace tellurvane

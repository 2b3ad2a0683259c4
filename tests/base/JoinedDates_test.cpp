#include "base/JoinedDates.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "tests/support/HostDates.h"
#include "tests/support/Moments.h"

namespace tellurvane {
namespace {

std::wstring Joined(JoinedDates& dates, DateSerial date) {
  std::wstring text = L"x";
  dates.Append(text, date);
  return text.substr(1);
}

// A few days and a few times of day, so that they come again, and some of everything else.
std::vector<DateSerial> Moments() {
  std::vector<DateSerial> moments = {
      0, 0.5, -1.5, -1, 0.25, -657'434, At(9999, 12, 31, 23, 59, 59)};
  std::mt19937 random(11);
  for (int i = 0; i < 2'000; ++i) {
    const int day = static_cast<int>(random() % 9) - 4 + (random() % 2 == 0 ? 40'588 : 0);
    const int second = static_cast<int>(random() % 6) * 14'399;
    moments.push_back(SerialFromSeconds(day * kSecondsPerDay + second));
  }
  return moments;
}

TEST(JoinedDatesTest, WritesWhatTheWriterWrites) {
  for (const HostLocale* locale : {&ZhTw(), &ZhTwUnderWine(), &EnUs()}) {
    const DateWriter writer = HostDateWriter(*locale);
    JoinedDates dates(writer);
    for (const DateSerial moment : Moments()) {
      ASSERT_EQ(Joined(dates, moment), HostDateText(moment, *locale)) << moment;
    }
  }
}

TEST(JoinedDatesTest, WritesWhatAnyOtherWriterWrites) {
  const struct {
    const char* name;
    DateWriter writer;
  } rows[] = {
      {"time first",
       [](std::wstring& text, DateSerial date) {
         const std::wstring whole = HostDateText(date, EnUs());
         const size_t blank = whole.find(L' ');
         text += blank == std::wstring::npos
                     ? whole
                     : whole.substr(blank + 1) + L' ' + whole.substr(0, blank);
       }},
      {"comma",
       [](std::wstring& text, DateSerial date) {
         std::wstring whole = HostDateText(date, ZhTw());
         if (const size_t blank = whole.find(L' '); blank != std::wstring::npos) {
           whole.insert(blank, L",");
         }
         text += whole;
       }},
      {"number", [](std::wstring& text, DateSerial date) { text += std::to_wstring(date); }},
      {"nothing", [](std::wstring&, DateSerial) {}},
  };
  for (const auto& row : rows) {
    JoinedDates dates(row.writer);
    for (const DateSerial moment : Moments()) {
      std::wstring expected;
      row.writer(expected, moment);
      ASSERT_EQ(Joined(dates, moment), expected) << row.name << ' ' << moment;
    }
  }
}

TEST(JoinedDatesTest, LeavesPartsOfASecondToTheWriter) {
  // One that cuts them off, where ours are rounded.
  const DateWriter writer = [](std::wstring& text, DateSerial date) {
    const double seconds = std::floor(date * static_cast<double>(kSecondsPerDay) + 0.01);
    AppendHostDateText(text, SerialFromSeconds(static_cast<std::int64_t>(seconds)), EnUs());
  };
  JoinedDates dates(writer);
  EXPECT_EQ(Joined(dates, At(2011, 2, 14, 15)), L"2/14/2011 3:00:00 PM");
  EXPECT_EQ(Joined(dates, At(2011, 2, 14, 15) + 0.7 / 86'400), L"2/14/2011 3:00:00 PM");
  EXPECT_EQ(Joined(dates, At(2011, 2, 14, 15, 0, 1)), L"2/14/2011 3:00:01 PM");
}

TEST(JoinedDatesTest, AsksForEachDayAndEachTimeOnce) {
  int asked = 0;
  const DateWriter writer = [&](std::wstring& text, DateSerial date) {
    ++asked;
    AppendHostDateText(text, date, ZhTw());
  };
  JoinedDates dates(writer);
  for (int day = 1; day <= 10; ++day) {
    for (int hour = 1; hour <= 20; ++hour) Joined(dates, At(2011, 2, day, hour));
  }
  // For each of the ten days its text and one date of it whole; the twenty times.
  EXPECT_EQ(asked, 10 * 2 + 20);
}

}  // namespace
}  // namespace tellurvane

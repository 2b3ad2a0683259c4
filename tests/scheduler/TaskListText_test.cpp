// Reading; writing is in TaskListTextWriting_test.cpp.
#include "scheduler/TaskListText.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/HostDates.h"
#include "tests/support/Moments.h"

namespace tellurvane {
namespace {

const DateSerial kNow = At(2026, 11, 20, 14, 30);

const std::wstring kDates = L"\t2026/11/19 下午 03:20:05\t2026/11/21 上午 09:00:00";
const std::wstring kReminder = L"0|30|1|3\t喝水\t休息\\r\\n喝水" + kDates;

TaskListReading Read(const std::wstring& text) {
  return ReadTaskListText(text, HostDateReader(ZhTw()), kNow);
}

TaskRecord ReadOne(const std::wstring& text) {
  const TaskListReading reading = Read(text);
  EXPECT_EQ(reading.tasks.size(), 1U) << text;
  return reading.tasks.empty() ? TaskRecord() : reading.tasks.front();
}

std::vector<std::wstring> NamesOf(const TaskListReading& reading) {
  std::vector<std::wstring> names;
  for (const TaskRecord& task : reading.tasks) names.push_back(task.Name);
  return names;
}

TEST(TaskListReadingTest, FillsEveryStoredField) {
  const TaskListReading reading = Read(kReminder + L"\r\n2|7|0|1\ta\tC:\\b.mp3\t\t2026/11/21\r\n");
  ASSERT_EQ(reading.tasks.size(), 2U);
  EXPECT_FALSE(reading.hasLoss);

  const TaskRecord& first = reading.tasks[0];
  EXPECT_EQ(first.IntervalUnit, kMinutes);
  EXPECT_EQ(first.Interval, 30);
  EXPECT_TRUE(first.Enabled);
  EXPECT_EQ(first.MediaType, kReminderNote);
  EXPECT_EQ(first.Name, L"喝水");
  EXPECT_EQ(first.Source, L"休息\\r\\n喝水");
  EXPECT_EQ(first.LastRun, At(2026, 11, 19, 15, 20, 5));
  EXPECT_EQ(first.NextRun, At(2026, 11, 21, 9));
  EXPECT_EQ(first.Id, 1);
  EXPECT_EQ(reading.tasks[1].LastRun, 0) << "it never ran";
  EXPECT_EQ(reading.tasks[1].Index, 1);
  EXPECT_EQ(reading.tasks[1].Id, 2);
}

TEST(TaskListReadingTest, TakesLinesUpToTheFirstEmptyOne) {
  const std::wstring a = L"0|1|1|3\ta\t" + kDates;
  const std::wstring b = L"0|1|1|3\tb\t" + kDates;
  const struct {
    std::wstring text;
    std::vector<std::wstring> names;
    bool hasLoss;
  } rows[] = {
      {L"", {}, false},
      {L"\r\n", {}, false},
      {L"\r\n\r\n\r\n", {}, false},
      {a, {L"a"}, false},
      {a + L"\r\n", {L"a"}, false},
      {a + L"\r\n\r\n\r\n", {L"a"}, false},
      {a + L"\r\n" + b, {L"a", L"b"}, false},
      {a + L"\r\n\r\n" + b, {L"a"}, true},
      {a + L"\r\n\r\n ", {L"a"}, true},
      {L"\r\n" + a, {}, true},
      // A line end is CR LF, both of them; here one line has more fields than five.
      {a + L"\n" + b, {L"a"}, true},
      {a + L"\r" + b, {L"a"}, true},
  };
  for (const auto& row : rows) {
    const TaskListReading reading = Read(row.text);
    EXPECT_EQ(NamesOf(reading), row.names) << row.text;
    EXPECT_EQ(reading.hasLoss, row.hasLoss) << row.text;
  }
}

TEST(TaskListReadingTest, PassesOverMalformedLinesAndKeepsTheOthers) {
  const std::wstring kept = L"0|1|1|3\tkept\t" + kDates + L"\r\n";
  std::vector<std::wstring> lines = {L"x",
                                     L" ",
                                     L"\t",
                                     L"0|30|1|3",
                                     L"0|30|1|3\tname",
                                     L"0|30|1|3\tname\tsource",
                                     L"0|30|1|3\tname\tsource\t2026/11/19"};
  for (const wchar_t* const compound :
       {L"", L"0", L"0|30|1", L"0|30|1|", L"|30|1|3", L"0||1|3", L"0|30||3", L"a|30|1|3",
        L"0|b|1|3", L"0|30|yes|3", L"0|30|1|d", L"2147483648|30|1|3", L"0|-2147483649|1|3",
        L"0,30,1,3", L"&H0|30|1|3", L"\uFEFF0|30|1|3"}) {
    lines.push_back(compound + (L"\tname\tsource" + kDates));
  }
  for (const std::wstring& line : lines) {
    const TaskListReading reading = Read(kept + line + L"\r\n" + kept);
    ASSERT_EQ(NamesOf(reading), (std::vector<std::wstring>{L"kept", L"kept"})) << line;
    EXPECT_EQ(reading.tasks[1].Index, 1) << line;
    EXPECT_TRUE(reading.hasLoss) << line;
  }
}

TEST(TaskListReadingTest, ReadsSurplusFieldsAsALoss) {
  const struct {
    std::wstring line;
    bool hasLoss;
  } rows[] = {
      {L"0|30|1|3\ta\tb" + kDates, false},
      {L"0|30|1|3\ta\tb" + kDates + L"\tmore", true},
      {L"0|30|1|3\ta\tb" + kDates + L"\t\tmore", true},
      {L"0|30|1|3|9\ta\tb" + kDates, true},
      // Separators with nothing after them.
      {L"0|30|1|3\ta\tb" + kDates + L"\t", false},
      {L"0|30|1|3|\ta\tb" + kDates, false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ReadOne(row.line).Source, L"b") << row.line;
    EXPECT_EQ(Read(row.line).hasLoss, row.hasLoss) << row.line;
  }
}

TEST(TaskListReadingTest, ConvertsTheCompoundFieldAsThePlatformDoes) {
  const struct {
    const wchar_t* compound;
    std::int32_t unit, interval;
    bool enabled;
    std::int32_t mediaType;
  } rows[] = {
      {L"1|2|1|0", 1, 2, true, 0},
      {L" 1 | 2 | 0 | 2 ", 1, 2, false, 2},
      {L"+1|1.5e1|True|1", 1, 15, true, 1},
      {L"0.5|2.5|FALSE|3.5", 0, 2, false, 4},
      {L"-1|0|-1|-2147483648", -1, 0, true, -2147483647 - 1},
      {L"2147483647|2147483647|7|9", 2147483647, 2147483647, true, 9},
  };
  for (const auto& row : rows) {
    const TaskRecord task = ReadOne(row.compound + (L"\ta\tb" + kDates));
    EXPECT_EQ(task.IntervalUnit, row.unit) << row.compound;
    EXPECT_EQ(task.Interval, row.interval) << row.compound;
    EXPECT_EQ(task.Enabled, row.enabled) << row.compound;
    EXPECT_EQ(task.MediaType, row.mediaType) << row.compound;
  }
}

TEST(TaskListReadingTest, KeepsNameAndSourceUnchanged) {
  const wchar_t* const texts[] = {
      L"",           L" ",  L"  two  words  ",   L"a|b|c",
      L"line\nfeed", L"\r", L"\u3000全形\u3000", L"\xD800 half a pair",
      L"\\r\\n",
  };
  for (const wchar_t* const text : texts) {
    const TaskRecord task = ReadOne(L"0|1|1|3\t" + std::wstring(text) + L"\t" + text + kDates);
    EXPECT_EQ(task.Name, text);
    EXPECT_EQ(task.Source, text);
  }
  const std::wstring zero(L"a\0b", 3);
  EXPECT_EQ(ReadOne(L"0|1|1|3\t" + zero + L"\tb" + kDates).Name, zero);
}

TEST(TaskListReadingTest, ReadsDatesAndSerials) {
  const struct {
    const wchar_t* text;
    DateSerial lastRun;
    bool hasLoss;
  } rows[] = {
      {L"2026/11/19 下午 03:20:05", At(2026, 11, 19, 15, 20, 5), false},
      {L"2026/11/19", At(2026, 11, 19), false},
      {L"11/19/2026 3:20:05 PM", At(2026, 11, 19, 15, 20, 5), false},
      {L"上午 12:00:00", 0, false},
      {L"40588.5", At(2011, 2, 14, 12), false},
      {L"0", 0, false},
      {L"", 0, false},
      {L"  ", 0, false},
      {L"yesterday", 0, true},
      {L"2026/2/29", 0, true},
      {L"2958466", 0, true},
  };
  for (const auto& row : rows) {
    const std::wstring line = L"9|0|1|3\ta\tb\t" + std::wstring(row.text) + L"\t2026/11/21";
    EXPECT_EQ(ReadOne(line).LastRun, row.lastRun) << row.text;
    EXPECT_EQ(Read(line).hasLoss, row.hasLoss) << row.text;
    // The next run by the same rule; without a schedule it stays as it was read.
    const std::wstring next = L"9|0|1|3\ta\tb\t2026/11/21\t" + std::wstring(row.text);
    EXPECT_EQ(ReadOne(next).NextRun, row.lastRun) << row.text;
    EXPECT_EQ(Read(next).hasLoss, row.hasLoss) << row.text;
  }
}

TEST(TaskListReadingTest, MovesAPastNextRunForwardWithoutALossOrARun) {
  const struct {
    const wchar_t* compound;
    const wchar_t* nextRun;
    DateSerial expected;
  } rows[] = {
      {L"1|2|1|3", L"2026/11/20 上午 09:00:00", At(2026, 11, 20, 15)},
      {L"2|1|0|3", L"2026/11/10 上午 09:00:00", At(2026, 11, 21, 9)},  // disabled ones too
      {L"0|30|1|3", L"2026/11/20 下午 02:30:00", kNow},
      {L"0|30|1|3", L"2026/11/20 下午 02:30:01", At(2026, 11, 20, 14, 30, 1)},
      {L"0|30|1|3", L"40588.5", kNow},
      {L"2|1|1|3", L"", At(2026, 11, 21)},
      {L"3|1|1|3", L"2011/2/14", At(2011, 2, 14)},
      {L"0|0|1|3", L"2011/2/14", At(2011, 2, 14)},
  };
  for (const auto& row : rows) {
    const std::wstring line = row.compound + (L"\ta\tb\t2011/2/14\t" + std::wstring(row.nextRun));
    EXPECT_EQ(ReadOne(line).NextRun, row.expected) << line;
    EXPECT_EQ(ReadOne(line).LastRun, At(2011, 2, 14)) << line;
    EXPECT_FALSE(Read(line).hasLoss) << line;
  }
}

}  // namespace
}  // namespace tellurvane

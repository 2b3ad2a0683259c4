#include <gtest/gtest.h>

#include <random>

#include "scheduler/TaskListText.h"
#include "tests/scheduler/TaskListFixture.h"

namespace tellurvane {
namespace {

TaskRecord RunAtNoon(const std::wstring& name, const std::wstring& source) {
  TaskRecord task = Reminder(name, source);
  task.LastRun = At(2011, 2, 14, 12);
  return task;
}

std::string Bytes(const TaskList& tasks, const HostLocale& locale = ZhTw()) {
  return TaskListBytes(tasks, HostDateWriter(locale));
}

// The text after the mark.
std::wstring Text(const TaskList& tasks, const HostLocale& locale = ZhTw()) {
  const auto noAnsi = [](std::string_view) { return std::wstring(L"no mark"); };
  return DecodeTaskListBytes(Bytes(tasks, locale), noAnsi).value_or(std::wstring(L"odd")).text;
}

std::wstring LineOf(const TaskRecord& task) { return Text({task}); }

TEST(TaskListWritingTest, WritesTheseBytes) {
  using namespace std::string_view_literals;
  EXPECT_EQ(Bytes({}), "\xFF\xFE"sv);
  EXPECT_EQ(Bytes({RunAtNoon(L"喝", L"A")}, EnUs()),
            "\xFF\xFE"
            "0\0|\0003\0000\0|\0001\0|\0003\0\t\0"
            "\x9D\x55\t\0A\0\t\0"
            "2\0/\0001\0004\0/\0002\0000\0001\0001\0 \0"
            "1\0002\0:\0000\0000\0:\0000\0000\0 \0P\0M\0\t\0"
            "2\0/\0001\0005\0/\0002\0000\0001\0001\0\r\0\n\0"sv);
}

TEST(TaskListWritingTest, TrimsBlanksAndNeverBreaksALine) {
  const struct {
    const wchar_t* text;
    const wchar_t* expected;
  } rows[] = {
      {L"", L""},
      {L"   ", L""},
      {L"  two  words  ", L"two  words"},
      {L"a\tb", L"a b"},
      {L"a\r\nb", L"a b"},
      {L"a\r\n\r\nb", L"a  b"},
      {L"a\r\r\n\nb", L"a\r \nb"},
      {L"a\nb\rc", L"a\nb\rc"},  // no line end to this file
      {L"\ta\r\n", L"a"},        // a blank at an end is no part of the text, wherever it comes from
      {L" \t a \t ", L"a"},
      {L"\r\n", L""},
      {L"\u3000a\u3000", L"\u3000a\u3000"},
  };
  for (const auto& row : rows) {
    const std::wstring expected = row.expected;
    EXPECT_EQ(
        LineOf(RunAtNoon(row.text, row.text)),
        L"0|30|1|3\t" + expected + L"\t" + expected + L"\t2011/2/14 下午 12:00:00\t2011/2/15\r\n");
  }
}

TEST(TaskListWritingTest, LeavesDeletedTasksOut) {
  TaskList tasks = {RunAtNoon(L"a", L""), RunAtNoon(L"b", L""), RunAtNoon(L"c", L"")};
  tasks[1].Deleted = true;
  const std::wstring dates = L"\t\t2011/2/14 下午 12:00:00\t2011/2/15\r\n";
  EXPECT_EQ(Text(tasks), L"0|30|1|3\ta" + dates + L"0|30|1|3\tc" + dates);
  for (TaskRecord& task : tasks) task.Deleted = true;
  EXPECT_EQ(Text(tasks), L"");
}

TEST(TaskListWritingTest, WritesADateThatIsNoneAsTheZeroDay) {
  for (const DateSerial bad : {1e300, -1e300, 2'958'466.0}) {
    TaskRecord task = RunAtNoon(L"a", L"b");
    task.LastRun = task.NextRun = bad;
    EXPECT_EQ(LineOf(task), L"0|30|1|3\ta\tb\t上午 12:00:00\t上午 12:00:00\r\n") << bad;
  }
}

// Letters, blanks and everything that means something to the file.
std::wstring RandomText(std::mt19937& random) {
  static constexpr std::wstring_view kUnits = L"ab喝 |\\\t\r\n\u3000\xD83D";
  std::wstring text(random() % 8, L'\0');
  for (wchar_t& unit : text) unit = kUnits[random() % kUnits.size()];
  return text;
}

TaskRecord RandomTask(std::mt19937& random) {
  TaskRecord task = RunAtNoon(RandomText(random), RandomText(random));
  std::uniform_int_distribution<std::int64_t> seconds(SecondsFromSerial(At(1000, 1, 1)),
                                                      kLastSecond);
  task.Enabled = random() % 2 == 0;
  task.MediaType = static_cast<std::int32_t>(random());
  task.IntervalUnit = static_cast<std::int32_t>(random() % 4);
  task.Interval = static_cast<std::int32_t>(random() % 100);
  task.LastRun = SerialFromSeconds(seconds(random));
  task.NextRun = SerialFromSeconds(seconds(random));
  return task;
}

TEST(TaskListWritingTest, IsReadBackAndWrittenTheSame) {
  std::mt19937 random(5);
  for (int i = 0; i < 300; ++i) {
    const TaskList tasks = {RandomTask(random), RandomTask(random), RandomTask(random)};
    for (const HostLocale* locale : {&ZhTw(), &ZhTwUnderWine(), &EnUs()}) {
      // The first day there is: no next run lies before it.
      const TaskListReading reading =
          ReadTaskListText(Text(tasks, *locale), HostDateReader(*locale), At(1000, 1, 1));
      ASSERT_FALSE(reading.hasLoss);
      ASSERT_EQ(reading.tasks.size(), tasks.size());
      ASSERT_EQ(reading.tasks[2].Enabled, tasks[2].Enabled);
      ASSERT_EQ(reading.tasks[2].MediaType, tasks[2].MediaType);
      ASSERT_EQ(reading.tasks[2].IntervalUnit, tasks[2].IntervalUnit);
      ASSERT_EQ(reading.tasks[2].Interval, tasks[2].Interval);
      ASSERT_EQ(reading.tasks[2].NextRun, tasks[2].NextRun);
      ASSERT_EQ(Bytes(reading.tasks, *locale), Bytes(tasks, *locale));
    }
  }
}

}  // namespace
}  // namespace tellurvane

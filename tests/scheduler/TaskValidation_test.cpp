#include "scheduler/TaskValidation.h"

#include <gmock/gmock.h>

#include <cwchar>
#include <string>

#include "base/Text.h"
#include "tests/support/Moments.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kNoInterval = L"時間數值錯誤或不可為 0，請再次輸入一個您所要執行的時間。";
constexpr const wchar_t* kTooManyMinutes =
    L"時間數值超過 60 分鐘，請再次輸入一個您所要執行的時間。";
constexpr const wchar_t* kTooManyHours = L"時間數值超過 24 小時，請再次輸入一個您所要執行的時間。";
constexpr const wchar_t* kTooManyDays =
    L"時間數值超過 7 天(每週)，請再次輸入一個您所要執行的時間。";
constexpr const wchar_t* kSameName = L"排程專案名稱重複，請另外指定一個新的排程專案名稱";
constexpr const wchar_t* kNoStream =
    L"無效的網址，程式僅支援開頭為 http 與 mms 串流，請點選確定重新指定";
constexpr const wchar_t* kNoFile = L"檔案不存在，請點選確定重新指定";
constexpr const wchar_t* kNoText = L"您尚未輸入要提醒的文字，請點選確定重新指定";

class ValidateTaskTest : public testing::Test {
 protected:
  ValidateTaskTest() {
    fields.name = L"休息";
    fields.mediaType = kReminderNote;
    fields.source = L"起來走走";
    fields.firstRun = At(2011, 2, 14, 13);
    fields.interval = L"5";
    fields.isEnabled = true;
  }

  std::variant<TaskRecord, TaskRefusal> Outcome() {
    return ValidateTask(
        fields, edited, tasks,
        {.clock = [this] { return now; },
         .pathExists = [](const std::wstring& path) { return path == L"C:\\a.mp3"; },
         .isSameName = EqualsIgnoringAsciiCase});
  }
  // Empty when the task is accepted.
  std::wstring Message() {
    const auto outcome = Outcome();
    const auto* const refusal = std::get_if<TaskRefusal>(&outcome);
    return refusal == nullptr ? L"" : refusal->message;
  }
  TaskRecord Accepted() {
    EXPECT_EQ(Message(), L"");
    auto outcome = Outcome();
    return std::holds_alternative<TaskRecord>(outcome) ? std::get<TaskRecord>(outcome)
                                                       : TaskRecord();
  }
  void AddTask(const std::wstring& name, bool isDeleted = false) {
    TaskRecord task;
    task.Name = name;
    task.Deleted = isDeleted;
    tasks.push_back(task);
  }

  TaskFields fields;
  std::optional<size_t> edited;
  TaskList tasks;
  DateSerial now = At(2011, 2, 14, 12);
};

TEST_F(ValidateTaskTest, TakesIntervalsUpToTheUnitsLimit) {
  const struct {
    int unit;
    const wchar_t* text;
    const wchar_t* message;
  } cases[] = {
      {kMinutes, L"1", L""},
      {kMinutes, L"60", L""},
      {kMinutes, L"61", kTooManyMinutes},
      {kHours, L"24", L""},
      {kHours, L"25", kTooManyHours},
      {kDays, L"7", L""},
      {kDays, L"8", kTooManyDays},
      {kMinutes, L"60.4", kTooManyMinutes},
      {kMinutes, L"2147483648", kTooManyMinutes},
      {kMinutes, L"1e300", kTooManyMinutes},
      {kMinutes, L"0", kNoInterval},
      {kMinutes, L"-1", kNoInterval},
      {kMinutes, L"-0.0", kNoInterval},
      {kMinutes, L"0.4", kNoInterval},
      {kMinutes, L"", kNoInterval},
      {kMinutes, L" ", kNoInterval},
      {kMinutes, L"abc", kNoInterval},
      {kMinutes, L"5 min", kNoInterval},
      {kMinutes, L"５", kNoInterval},  // a full-width digit
      {kMinutes, L" 5 ", L""},
      {3, L"5", kNoInterval},  // a unit that only a file can bring
      {-1, L"5", kNoInterval},
  };
  for (const auto& [unit, text, message] : cases) {
    fields.timeType = unit;
    fields.interval = text;
    EXPECT_EQ(Message(), message) << unit << " " << testing::PrintToString(std::wstring(text));
  }
}

TEST_F(ValidateTaskTest, EmptiesTheIntervalOnlyForTheInterval) {
  const auto empties = [this] { return std::get<TaskRefusal>(Outcome()).emptiesInterval; };
  fields.interval = L"0";
  EXPECT_TRUE(empties());
  fields.interval = L"61";
  EXPECT_TRUE(empties());
  fields.interval = L"5";
  fields.source = L"";
  EXPECT_FALSE(empties());
}

TEST_F(ValidateTaskTest, RoundsAFractionOfAnInterval) {
  fields.interval = L"1.5";
  EXPECT_EQ(Accepted().Interval, 2);
  fields.interval = L"2.5";
  EXPECT_EQ(Accepted().Interval, 2);
}

TEST_F(ValidateTaskTest, TakesStreamsByTheirScheme) {
  fields.mediaType = kInternetRadio;
  const struct {
    const wchar_t* source;
    bool isAccepted;
  } cases[] = {
      {L"http://host/", true},
      {L"HttP://host/", true},
      {L"https://host/", true},
      {L"mms://host/", true},
      {L"MMSH://host/", true},
      {L"rtsp://host/", false},
      {L"", false},
      {L"htt", false},
      {L"mm", false},
      {L"ftp://http", false},
      {L"  http://host/  ", true},
      {L"ｈttp://host/", false},
  };
  for (const auto& [source, isAccepted] : cases) {
    fields.source = source;
    EXPECT_EQ(Message(), isAccepted ? L"" : kNoStream) << testing::PrintToString(source);
  }
}

TEST_F(ValidateTaskTest, TakesMusicThatIsThere) {
  fields.mediaType = kLocalMusic;
  fields.source = L" C:\\a.mp3 ";
  EXPECT_EQ(Accepted().Source, L"C:\\a.mp3");
  fields.source = L"C:\\b.mp3";
  EXPECT_EQ(Message(), kNoFile);
}

TEST_F(ValidateTaskTest, TakesAnyApplicationAndOnlyNotesWithText) {
  fields.source = L"   ";
  EXPECT_EQ(Message(), kNoText);
  fields.mediaType = kApplication;
  EXPECT_EQ(Message(), L"");
}

TEST_F(ValidateTaskTest, KnowsNamesWithoutRegardToCase) {
  AddTask(L"Rest");
  fields.name = L"  rEST ";
  EXPECT_EQ(Message(), kSameName);
  edited = 0;
  EXPECT_EQ(Message(), L"") << "its own name";
  AddTask(L"rest");
  EXPECT_EQ(Message(), kSameName) << "another one's";
}

TEST_F(ValidateTaskTest, ComparesNamesAsTheFileWillHoldThem) {
  AddTask(L"a b");
  fields.name = L"a\tb";
  EXPECT_EQ(Message(), kSameName);
  fields.name = L" a\r\nc\t";
  EXPECT_EQ(Accepted().Name, L"a c");
}

// A list that was written by hand is not trimmed when it is read.
TEST_F(ValidateTaskTest, ComparesTheNamesOfTheListAsTheyReadBack) {
  for (const wchar_t* const taken : {L" a c ", L"a c  ", L"  A C", L"a c\t"}) {
    tasks.clear();
    AddTask(taken);
    fields.name = L"a c";
    EXPECT_EQ(Message(), kSameName) << std::string(taken, taken + std::wcslen(taken));
  }
  tasks.clear();
  AddTask(L" a  c ");
  EXPECT_EQ(Message(), L"") << "blanks inside count";
}

TEST_F(ValidateTaskTest, KeepsTheNamesOfRemovedTasksTaken) {
  AddTask(L"休息", true);
  EXPECT_EQ(Message(), kSameName);
}

TEST_F(ValidateTaskTest, SaysTheFirstThatIsWrong) {
  AddTask(L"休息");
  fields.mediaType = kInternetRadio;
  fields.source = L"rtsp://host/";
  fields.interval = L"0";
  EXPECT_EQ(Message(), kNoInterval);
  fields.interval = L"1";
  EXPECT_EQ(Message(), kSameName);
  fields.name = L"another";
  EXPECT_EQ(Message(), kNoStream);
}

TEST_F(ValidateTaskTest, MovesAPastMomentForwardByWholeIntervals) {
  fields.firstRun = At(2011, 2, 14, 11, 58, 30);
  EXPECT_EQ(Accepted().NextRun, At(2011, 2, 14, 12, 3, 30));
  fields.firstRun = now;
  EXPECT_EQ(Accepted().NextRun, now) << "the present is kept";
  fields.firstRun = At(2011, 2, 14, 12, 0, 1);
  EXPECT_EQ(Accepted().NextRun, At(2011, 2, 14, 12, 0, 1));
}

TEST_F(ValidateTaskTest, MovesItOnceMoreAfterTheChecks) {
  fields.mediaType = kLocalMusic;
  fields.firstRun = now;
  // The clock goes on while the path is looked for.
  const auto outcome = ValidateTask(fields, edited, tasks,
                                    {.clock = [this] { return now; },
                                     .pathExists =
                                         [this](const std::wstring&) {
                                           now = At(2011, 2, 14, 12, 0, 1);
                                           return true;
                                         },
                                     .isSameName = EqualsIgnoringAsciiCase});
  EXPECT_EQ(std::get<TaskRecord>(outcome).NextRun, At(2011, 2, 14, 12, 5));
}

TEST_F(ValidateTaskTest, KeepsWhatTheFieldsDoNotHold) {
  AddTask(L"old");
  tasks[0].LastRun = At(2011, 1, 1);
  tasks[0].Id = 7;
  tasks[0].Index = 6;
  edited = 0;
  const TaskRecord task = Accepted();
  EXPECT_EQ(task.LastRun, At(2011, 1, 1));
  EXPECT_EQ(task.Id, 7);
  EXPECT_EQ(task.Index, 6);
  EXPECT_EQ(task.Name, L"休息");
  EXPECT_TRUE(task.Enabled);
  EXPECT_EQ(task.MediaType, kReminderNote);
}

}  // namespace
}  // namespace tellurvane

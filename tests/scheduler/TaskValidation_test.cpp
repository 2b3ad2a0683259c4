#include "scheduler/TaskValidation.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

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

  std::variant<TaskRecord, ValidationError> Outcome() {
    return ValidateTask(
        fields, edited, tasks,
        {.clock = [this] { return now; },
         .pathExists = [](const std::wstring& path) { return path == L"C:\\a.mp3"; },
         .isSameName = EqualsIgnoringAsciiCase});
  }
  // Empty when the task is accepted.
  std::wstring Message() {
    const auto outcome = Outcome();
    const auto* const error = std::get_if<ValidationError>(&outcome);
    return error == nullptr ? L"" : error->message;
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
    std::int32_t interval;
  } accepted[] = {{kMinutes, L"1", 1},   {kMinutes, L"60", 60}, {kHours, L"24", 24},
                  {kDays, L"7", 7},      {kMinutes, L" 5 ", 5}, {kMinutes, L"1.5", 2},
                  {kMinutes, L"2.5", 2}, {kMinutes, L"0.6", 1}};
  for (const auto& [unit, text, interval] : accepted) {
    fields.timeType = unit;
    fields.interval = text;
    EXPECT_EQ(Accepted().Interval, interval);
  }
  const struct {
    int unit;
    ValidationError error;
    std::vector<const wchar_t*> texts;
  } rejected[] = {
      {kMinutes,
       {kTooManyMinutes, EditorField::kInterval},
       {L"61", L"60.4", L"2147483648", L"1e300"}},
      {kHours, {kTooManyHours, EditorField::kInterval}, {L"25"}},
      {kDays, {kTooManyDays, EditorField::kInterval}, {L"8"}},
      // The last is a full-width digit.
      {kMinutes,
       {kNoInterval, EditorField::kInterval},
       {L"0", L"-1", L"-0.0", L"0.4", L"0.5", L"", L" ", L"abc", L"5 min", L"５"}},
      // Units that only a file can bring.
      {3, {kNoInterval, EditorField::kTimeType}, {L"5"}},
      {-1, {kNoInterval, EditorField::kTimeType}, {L"5"}},
      {3, {kNoInterval, EditorField::kInterval}, {L"0"}},
  };
  for (const auto& [unit, error, texts] : rejected) {
    for (const wchar_t* const text : texts) {
      fields.timeType = unit;
      fields.interval = text;
      EXPECT_EQ(std::get<ValidationError>(Outcome()), error) << testing::PrintToString(text);
    }
  }
}

TEST_F(ValidateTaskTest, ChecksTheSourceByTheMediaType) {
  const struct {
    MediaType type;
    const wchar_t* source;
    const wchar_t* message;
  } cases[] = {
      {kInternetRadio, L"http://host/", L""},
      {kInternetRadio, L"HttP://host/", L""},
      {kInternetRadio, L"https://host/", L""},
      {kInternetRadio, L"mms://host/", L""},
      {kInternetRadio, L"MMSH://host/", L""},
      {kInternetRadio, L"  http://host/  ", L""},
      {kInternetRadio, L"rtsp://host/", kNoStream},
      {kInternetRadio, L"", kNoStream},
      {kInternetRadio, L"htt", kNoStream},
      {kInternetRadio, L"mm", kNoStream},
      {kInternetRadio, L"ftp://http", kNoStream},
      {kInternetRadio, L"ｈttp://host/", kNoStream},
      {kLocalMusic, L" C:\\a.mp3 ", L""},
      {kLocalMusic, L"C:\\b.mp3", kNoFile},
      {kReminderNote, L"   ", kNoText},
      {kReminderNote, L" a ", L""},
      {kApplication, L"   ", L""},
      {static_cast<MediaType>(7), L"", L""},  // only a file can bring it
  };
  for (const auto& [type, source, message] : cases) {
    fields.mediaType = type;
    fields.source = source;
    EXPECT_EQ(Message(), message) << type << " " << testing::PrintToString(source);
    const auto outcome = Outcome();
    if (const auto* const error = std::get_if<ValidationError>(&outcome)) {
      EXPECT_EQ(error->field, EditorField::kSource);
    } else {
      EXPECT_EQ(std::get<TaskRecord>(outcome).Source, TrimBlanks(source));
    }
  }
}

// Names are compared as the file will hold them, and removed tasks keep theirs.
TEST_F(ValidateTaskTest, TakesANameThatNoOtherTaskHas) {
  const struct {
    const wchar_t* taken;
    const wchar_t* typed;
    bool isSame;
  } cases[] = {
      {L"Rest", L"  rEST ", true}, {L"a b", L"a\tb", true},    {L" a c ", L"a c", true},
      {L"a c  ", L"a c", true},    {L"  A C", L"a c", true},   {L"a c\t", L"a c", true},
      {L" a  c ", L"a c", false},  {L"a", L"\ta\r\nb", false},
  };
  for (const auto& [taken, typed, isSame] : cases) {
    for (const bool isDeleted : {false, true}) {
      tasks.clear();
      AddTask(taken, isDeleted);
      fields.name = typed;
      EXPECT_EQ(Message(), isSame ? kSameName : L"") << testing::PrintToString(typed);
    }
    tasks[0].Deleted = false;
    edited = 0;
    EXPECT_EQ(Message(), L"") << "its own name";
    AddTask(typed);
    EXPECT_EQ(std::get<ValidationError>(Outcome()),
              (ValidationError{kSameName, EditorField::kName}))
        << "another one's";
    edited.reset();
  }
  tasks.clear();
  fields.name = L" a\r\nc\t";
  EXPECT_EQ(Accepted().Name, L"a c");
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
  const std::pair<DateSerial, DateSerial> cases[] = {
      {At(2011, 2, 14, 11, 58, 30), At(2011, 2, 14, 12, 3, 30)},
      {now, now},
      {At(2011, 2, 14, 12, 0, 1), At(2011, 2, 14, 12, 0, 1)},
  };
  for (const auto& [chosen, expected] : cases) {
    fields.firstRun = chosen;
    EXPECT_EQ(Accepted().NextRun, expected);
  }
}

TEST_F(ValidateTaskTest, MovesItOnceMoreAfterTheChecks) {
  fields.mediaType = kLocalMusic;
  fields.firstRun = now;
  const auto pathExists = [this](const std::wstring&) {
    now = At(2011, 2, 14, 12, 0, 1);
    return true;
  };
  const auto outcome = ValidateTask(fields, edited, tasks,
                                    {.clock = [this] { return now; },
                                     .pathExists = pathExists,
                                     .isSameName = EqualsIgnoringAsciiCase});
  EXPECT_EQ(std::get<TaskRecord>(outcome).NextRun, At(2011, 2, 14, 12, 5));
}

TEST_F(ValidateTaskTest, KeepsTheOtherMembersOfTheTask) {
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

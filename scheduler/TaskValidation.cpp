#include "scheduler/TaskValidation.h"

#include <array>

#include "base/Number.h"
#include "base/Text.h"
#include "scheduler/Schedule.h"
#include "scheduler/TaskListText.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kNoInterval = L"時間數值錯誤或不可為 0，請再次輸入一個您所要執行的時間。";
constexpr const wchar_t* kSameName = L"排程專案名稱重複，請另外指定一個新的排程專案名稱";
constexpr const wchar_t* kNoStream =
    L"無效的網址，程式僅支援開頭為 http 與 mms 串流，請點選確定重新指定";
constexpr const wchar_t* kNoFile = L"檔案不存在，請點選確定重新指定";
constexpr const wchar_t* kNoText = L"您尚未輸入要提醒的文字，請點選確定重新指定";

struct IntervalLimit {
  double most;
  const wchar_t* text;
};
constexpr std::array<IntervalLimit, 3> kLimits = {
    {{60, L"60 分鐘"}, {24, L"24 小時"}, {7, L"7 天(每週)"}}};

std::optional<ValidationError> IntervalError(const TaskFields& fields) {
  const auto number = ParseNumber(fields.interval);
  // 0.5 or less would be stored as 0.
  if (!number || RoundHalfToEven(*number) <= 0) {
    return ValidationError{kNoInterval, EditorField::kInterval};
  }
  // A task from a file may have an unknown unit; it cannot be saved like that.
  if (fields.timeType < kMinutes || fields.timeType > kDays) {
    return ValidationError{kNoInterval, EditorField::kTimeType};
  }
  const IntervalLimit& limit = kLimits.at(static_cast<size_t>(fields.timeType));
  if (*number <= limit.most) return std::nullopt;
  return ValidationError{
      std::wstring(L"時間數值超過 ") + limit.text + L"，請再次輸入一個您所要執行的時間。",
      EditorField::kInterval};
}

// Compares the names as the file will hold them: a list written by hand may have blanks around
// them.
bool IsNameTaken(const std::wstring& name, std::optional<size_t> edited, const TaskList& tasks,
                 const ValidationCallbacks& callbacks) {
  for (size_t i = 0; i < tasks.size(); ++i) {
    if (i != edited && callbacks.isSameName(FieldText(tasks[i].Name), name)) return true;
  }
  return false;
}

std::optional<ValidationError> SourceError(std::int32_t mediaType, const std::wstring& source,
                                           const ValidationCallbacks& callbacks) {
  switch (static_cast<MediaType>(mediaType)) {
    case kInternetRadio:
      if (!IsStreamAddress(source)) return ValidationError{kNoStream, EditorField::kSource};
      break;
    case kLocalMusic:
      if (!callbacks.pathExists(source)) return ValidationError{kNoFile, EditorField::kSource};
      break;
    case kReminderNote:
      if (source.empty()) return ValidationError{kNoText, EditorField::kSource};
      break;
    case kApplication:
      break;
  }
  return std::nullopt;
}

}  // namespace

bool IsStreamAddress(const std::wstring& address) {
  return EqualsIgnoringAsciiCase(address.substr(0, 4), L"HTTP") ||
         EqualsIgnoringAsciiCase(address.substr(0, 3), L"MMS");
}

std::variant<TaskRecord, ValidationError> ValidateTask(const TaskFields& fields,
                                                       std::optional<size_t> edited,
                                                       const TaskList& tasks,
                                                       const ValidationCallbacks& callbacks) {
  if (const auto error = IntervalError(fields)) return *error;
  TaskRecord task = edited ? tasks.at(*edited) : TaskRecord();
  task.IntervalUnit = fields.timeType;
  task.Interval = static_cast<std::int32_t>(RoundHalfToEven(*ParseNumber(fields.interval)));
  task.NextRun = fields.firstRun;
  task.NextRun = CaughtUpNextRun(task, callbacks.clock(), CatchUp::kStrict);
  task.Name = FieldText(fields.name);
  if (IsNameTaken(task.Name, edited, tasks, callbacks)) {
    return ValidationError{kSameName, EditorField::kName};
  }
  task.Enabled = fields.isEnabled;
  task.Source = FieldText(fields.source);
  if (const auto error = SourceError(fields.mediaType, task.Source, callbacks)) {
    return *error;
  }
  task.MediaType = fields.mediaType;
  // Once more: checking the path may have taken its time.
  task.NextRun = CaughtUpNextRun(task, callbacks.clock(), CatchUp::kStrict);
  return task;
}

}  // namespace tellurvane

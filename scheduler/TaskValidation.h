// Whether what was typed into the schedule editor makes a task.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "base/DateSerial.h"
#include "scheduler/TaskRecord.h"

namespace tellurvane {

// The contents of the fields. The numbers are the indices of the lists.
struct TaskFields {
  std::wstring name;
  std::int32_t mediaType = kInternetRadio;
  std::wstring source;
  DateSerial firstRun = 0;  // the chosen date with the chosen time of day
  std::int32_t timeType = kMinutes;
  std::wstring interval;
  bool isEnabled = false;

  bool operator==(const TaskFields&) const = default;
};

// The fields that can have a wrong value.
enum class EditorField { kName, kSource, kTimeType, kInterval };

struct ValidationError {
  std::wstring message;
  EditorField field;

  bool operator==(const ValidationError&) const = default;
};

// All must be set.
struct ValidationCallbacks {
  Clock clock;
  std::function<bool(const std::wstring& path)> pathExists;
  // Whether two names are the same but for the case of their letters.
  std::function<bool(std::wstring_view, std::wstring_view)> isSameName;
};

// Whether a radio task can have the address: it begins with http or mms.
bool IsStreamAddress(const std::wstring& address);

// The task that the fields describe, or the first reason why they are not valid. `edited` is the
// element of the list that the task replaces; its other members are kept. The names of removed
// tasks are still taken.
std::variant<TaskRecord, ValidationError> ValidateTask(const TaskFields& fields,
                                                       std::optional<size_t> edited,
                                                       const TaskList& tasks,
                                                       const ValidationCallbacks& callbacks);

}  // namespace tellurvane

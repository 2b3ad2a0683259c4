// One scheduled task, and the list of them all.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/DateSerial.h"

namespace tellurvane {

// The values of TaskRecord::MediaType. The field stays a plain number: a file may hold any.
enum MediaType : std::int32_t {
  kInternetRadio = 0,
  kLocalMusic = 1,
  kApplication = 2,
  kReminderNote = 3,
};

// No default, so that the compiler points here when a kind is added; then the count below is wrong,
// and with it each table that has an entry for each kind.
constexpr bool IsMediaType(std::int32_t value) {
  switch (static_cast<MediaType>(value)) {
    case kInternetRadio:
    case kLocalMusic:
    case kApplication:
    case kReminderNote:
      return true;
  }
  return false;
}
inline constexpr std::int32_t kMediaTypeCount = 4;
// For the user.
inline constexpr std::array<const wchar_t*, kMediaTypeCount> kMediaTypeNames = {
    L"網路電台", L"本地音樂", L"應用程式", L"記事提醒"};
static_assert(IsMediaType(kMediaTypeCount - 1) && !IsMediaType(kMediaTypeCount));

// Whether a task's source is the text of a note, in which a line end is written as \r\n.
constexpr bool HasNoteText(std::int32_t mediaType) {
  switch (static_cast<MediaType>(mediaType)) {
    case kInternetRadio:
    case kLocalMusic:
    case kApplication:
      return false;
    case kReminderNote:
      return true;
  }
  return false;
}

// The values of TaskRecord::IntervalUnit, a plain number for the same reason.
enum IntervalUnit : std::int32_t { kMinutes = 0, kHours = 1, kDays = 2 };

struct TaskRecord {
  bool Deleted = false;  // removed in memory; left out when the list is written
  bool Enabled = false;
  std::int32_t MediaType = kInternetRadio;
  std::int32_t Id = 0;     // Index + 1
  std::int32_t Index = 0;  // place in the list
  std::wstring Name;
  std::wstring Source;  // stream address, file, command line, or note text
  DateSerial NextRun = 0;
  std::int32_t IntervalUnit = kMinutes;
  std::int32_t Interval = 0;
  DateSerial RunStarted = 0;  // not stored
  DateSerial LastRun = 0;     // 0 when it never ran
};

// Row i of every list on the screen is element i.
using TaskList = std::vector<TaskRecord>;

}  // namespace tellurvane

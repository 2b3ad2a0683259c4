// Many dates written with few calls of the writer.
#pragma once

#include <unordered_map>

#include "base/DateText.h"

namespace tellurvane {

// Writes exactly what the writer writes. Dates of one list share days and times of day; each of
// those is asked of the writer once, and a date is the two with a blank between them. A day is only
// trusted after a date of it was written both ways and came out the same; the dates of any other
// day go to the writer whole.
//
// Meant for one list, and then to be dropped: the user may change the locale at any time.
class JoinedDates {
 public:
  // The writer must outlive it.
  explicit JoinedDates(const DateWriter& writer) : writer_(writer) {}

  void Append(std::wstring& text, DateSerial date);

 private:
  std::wstring Written(DateSerial date) const;
  const std::wstring& TimeText(std::int64_t secondOfDay);
  // Empty when the dates of the day are not its text, a blank and the text of the time.
  const std::wstring& DayText(std::int64_t firstSecond, DateSerial date, const std::wstring& time);

  const DateWriter& writer_;
  std::unordered_map<std::int64_t, std::wstring> days_;   // by their first second
  std::unordered_map<std::int64_t, std::wstring> times_;  // by the second of the day
};

}  // namespace tellurvane

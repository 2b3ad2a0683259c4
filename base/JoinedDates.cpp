#include "base/JoinedDates.h"

namespace tellurvane {

void JoinedDates::Append(std::wstring& text, DateSerial date) {
  const std::int64_t seconds = SecondsFromSerial(date);
  const std::int64_t secondOfDay = DayAndSecond(seconds).second;
  const std::int64_t firstSecond = seconds - secondOfDay;
  // Midnight and the zero day have one text only, and how a part of a second is rounded is the
  // writer's own affair.
  if (secondOfDay == 0 || firstSecond == 0 || SerialFromSeconds(seconds) != date) {
    writer_(text, date);
    return;
  }
  const std::wstring& time = TimeText(secondOfDay);
  const std::wstring& day = DayText(firstSecond, date, time);
  if (day.empty()) {
    writer_(text, date);
    return;
  }
  text += day;
  text += L' ';
  text += time;
}

std::wstring JoinedDates::Written(DateSerial date) const {
  std::wstring text;
  writer_(text, date);
  return text;
}

const std::wstring& JoinedDates::TimeText(std::int64_t secondOfDay) {
  const auto [known, isNew] = times_.try_emplace(secondOfDay);
  if (isNew) known->second = Written(SerialFromSeconds(secondOfDay));
  return known->second;
}

const std::wstring& JoinedDates::DayText(std::int64_t firstSecond, DateSerial date,
                                         const std::wstring& time) {
  const auto [known, isNew] = days_.try_emplace(firstSecond);
  if (isNew) {
    const std::wstring day = Written(SerialFromSeconds(firstSecond));
    if (Written(date) == day + L' ' + time) known->second = day;
  }
  return known->second;
}

}  // namespace tellurvane

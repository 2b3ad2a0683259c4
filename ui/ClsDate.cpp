#include "ui/ClsDate.h"

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "base/LocaleDates.h"
#include "ui/ChildWindow.h"
#include "ui/ToolkitFont.h"

namespace tellurvane {
namespace {

constexpr int kDaysPerWeek = 7;
constexpr int kWeekdayOfFirstDay = 5;  // 1 January 100 was a Friday

CivilDateTime CivilOf(const SYSTEMTIME& time) {
  return {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond};
}

// 0 means Sunday.
WORD DayOfWeek(DateSerial date) {
  const std::int64_t days = (SecondsFromSerial(date) - kFirstSecond) / kSecondsPerDay;
  return static_cast<WORD>((days + kWeekdayOfFirstDay) % kDaysPerWeek);
}

std::wstring TextOf(const SYSTEMTIME& time) {
  return std::to_wstring(time.wYear) + L"/" + std::to_wstring(time.wMonth) + L"/" +
         std::to_wstring(time.wDay) + L" " + std::to_wstring(time.wHour) + L":" +
         std::to_wstring(time.wMinute) + L":" + std::to_wstring(time.wSecond);
}

}  // namespace

DateSerial ReadPickedTime(const SYSTEMTIME& picked, const SystemDateReader& systemReader) {
  const std::wstring text = TextOf(picked);
  const auto read = systemReader(text);
  if (read && IsDateSerial(*read) && CivilFromSerial(*read) == CivilOf(picked)) return *read;
  return ParseDateText(text, DateFormat()).value_or(0);
}

void ClsDate::Create(HWND parent, int left, int top, int width, int height, bool dateMode) {
  INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_DATE_CLASSES};
  InitCommonControlsEx(&classes);
  const DWORD style =
      WS_CHILD | WS_VISIBLE | WS_TABSTOP | (dateMode ? DTS_LONGDATEFORMAT : DTS_TIMEFORMAT);
  picker_ = CreateChildWindow({.parent = parent,
                               .className = DATETIMEPICK_CLASSW,
                               .style = style,
                               .x = left,
                               .y = top,
                               .width = width,
                               .height = height});
  SendMessageW(picker_, WM_SETFONT, reinterpret_cast<WPARAM>(ToolkitFont()), TRUE);
}

void ClsDate::Enabled(bool enabled) {
  isEnabled_ = enabled;
  EnableWindow(picker_, enabled);
  UpdateWindow(picker_);
}

DateSerial ClsDate::Value() const {
  SYSTEMTIME picked = {};
  SendMessageW(picker_, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&picked));
  return ReadPickedTime(picked, ReadSystemDate);
}

void ClsDate::Value(DateSerial date) {
  if (!IsDateSerial(date)) return;
  const CivilDateTime civil = CivilFromSerial(date);
  SYSTEMTIME time = {};
  time.wYear = static_cast<WORD>(civil.year);
  time.wMonth = static_cast<WORD>(civil.month);
  time.wDayOfWeek = DayOfWeek(date);
  time.wDay = static_cast<WORD>(civil.day);
  time.wHour = static_cast<WORD>(civil.hour);
  time.wMinute = static_cast<WORD>(civil.minute);
  time.wSecond = static_cast<WORD>(civil.second);
  SendMessageW(picker_, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
}

}  // namespace tellurvane

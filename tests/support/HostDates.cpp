#include "tests/support/HostDates.h"

namespace tellurvane {
namespace {

std::wstring TwoDigits(int value) {
  const std::wstring text = std::to_wstring(value);
  return text.size() < 2 ? L"0" + text : text;
}

void AppendDate(std::wstring& text, const CivilDateTime& at, const DateFormat& format) {
  const bool yearFirst = format.order == DateOrder::kYearMonthDay;
  const bool dayFirst = format.order == DateOrder::kDayMonthYear;
  if (yearFirst) text += std::to_wstring(at.year) + format.dateSeparator;
  text += std::to_wstring(dayFirst ? at.day : at.month) + format.dateSeparator;
  text += std::to_wstring(dayFirst ? at.month : at.day);
  if (!yearFirst) text += format.dateSeparator + std::to_wstring(at.year);
}

void AppendTime(std::wstring& text, const CivilDateTime& at, const HostLocale& locale) {
  const DateFormat& format = locale.format;
  const std::wstring& designator = at.hour < 12 ? format.amDesignator : format.pmDesignator;
  const std::wstring blank = locale.blankByDesignator ? L" " : L"";
  const int hour = at.hour % 12 == 0 ? 12 : at.hour % 12;
  if (locale.designatorFirst) text += designator + blank;
  text += locale.hourOfTwoDigits ? TwoDigits(hour) : std::to_wstring(hour);
  text += format.timeSeparator + TwoDigits(at.minute);
  text += format.timeSeparator + TwoDigits(at.second);
  if (!locale.designatorFirst) text += blank + designator;
}

DateFormat ZhTwFormat() { return {.amDesignator = L"上午", .pmDesignator = L"下午"}; }

}  // namespace

const HostLocale& ZhTw() {
  static const HostLocale locale = {
      .format = ZhTwFormat(), .designatorFirst = true, .hourOfTwoDigits = true};
  return locale;
}

const HostLocale& ZhTwUnderWine() {
  static const HostLocale locale = {
      .format = ZhTwFormat(), .designatorFirst = true, .blankByDesignator = false};
  return locale;
}

const HostLocale& EnUs() {
  static const HostLocale locale = {
      .format = {.order = DateOrder::kMonthDayYear, .amDesignator = L"AM", .pmDesignator = L"PM"}};
  return locale;
}

void AppendHostDateText(std::wstring& text, DateSerial date, const HostLocale& locale) {
  const CivilDateTime at = CivilFromSerial(date);
  const bool isZeroDay = at.year == 1899 && at.month == 12 && at.day == 30;
  const bool isMidnight = at.hour == 0 && at.minute == 0 && at.second == 0;
  if (!isZeroDay) AppendDate(text, at, locale.format);
  if (!isZeroDay && !isMidnight) text += L' ';
  if (isZeroDay || !isMidnight) AppendTime(text, at, locale);
}

std::wstring HostDateText(DateSerial date, const HostLocale& locale) {
  std::wstring text;
  AppendHostDateText(text, date, locale);
  return text;
}

DateWriter HostDateWriter(const HostLocale& locale) {
  return [&locale](std::wstring& text, DateSerial date) { AppendHostDateText(text, date, locale); };
}

DateReader HostDateReader(const HostLocale& locale) { return {locale.format, nullptr}; }

}  // namespace tellurvane

#include "base/LocaleDates.h"

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <cwchar>

#include "base/Number.h"
#include "base/Text.h"

namespace tellurvane {
namespace {

std::wstring UserLocaleText(LCTYPE type) {
  wchar_t buffer[80] = {};
  const int length =
      GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buffer, static_cast<int>(std::size(buffer)));
  return length > 0 ? std::wstring(buffer) : std::wstring();
}

DateOrder OrderOfPattern(const std::wstring& shortDate) {
  const size_t year = shortDate.find(L'y');
  const size_t month = shortDate.find(L'M');
  const size_t day = shortDate.find(L'd');
  if (year < month) return DateOrder::kYearMonthDay;
  return day < month ? DateOrder::kDayMonthYear : DateOrder::kMonthDayYear;
}

int TwoDigitYearMax() {
  DWORD year = 0;
  const int read = GetCalendarInfoW(LOCALE_USER_DEFAULT, CAL_GREGORIAN,
                                    CAL_ITWODIGITYEARMAX | CAL_RETURN_NUMBER, nullptr, 0, &year);
  return read > 0 && year >= 99 && year <= 9999 ? static_cast<int>(year) : 2049;
}

// The user may have chosen a calendar that counts years differently. A date in 2011 shows whether
// the platform writes in it; the calendar setting alone does not.
int YearOffset() {
  constexpr int kProbeYear = 2011;
  const auto probe = SerialFromCivil({kProbeYear, 12, 28, 0, 0, 0});
  const std::wstring written = LocaleDateText(*probe);
  for (size_t i = 0; i < written.size(); ++i) {
    const std::wstring_view digits = DigitsAtFront(std::wstring_view(written).substr(i));
    if (digits.size() >= 3) return kProbeYear - ParseInteger(digits).value_or(kProbeYear);
    i += digits.size();
  }
  return 0;
}

// Some calendars differ in their months too. Then only the platform can read what it wrote.
bool CanReadPlatformDates(const DateFormat& format) {
  for (const CivilDateTime& moment :
       {CivilDateTime{2011, 2, 3, 0, 5, 9}, CivilDateTime{2024, 2, 29, 12, 34, 56},
        CivilDateTime{2026, 12, 31, 23, 59, 59}}) {
    const auto date = SerialFromCivil(moment);
    if (ParseDateText(LocaleDateText(*date), format) != date) return false;
  }
  return true;
}

}  // namespace

DateSerial Now() {
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  // A leap second counts as the second before it.
  const int second = std::min<int>(now.wSecond, 59);
  const auto serial =
      SerialFromCivil({now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, second});
  // Only a year after 9999 has no serial.
  return serial.value_or(SerialFromSeconds(kLastSecond));
}

void AppendLocaleDateText(std::wstring& text, DateSerial date) {
  BSTR written = nullptr;
  if (SUCCEEDED(VarBstrFromDate(date, LOCALE_USER_DEFAULT, 0, &written)) && written != nullptr) {
    text.append(written, SysStringLen(written));
    SysFreeString(written);
    return;
  }
  wchar_t serial[40] = {};
  const int length = std::swprintf(serial, std::size(serial), L"%.7f", date);
  text.append(serial, length > 0 ? static_cast<size_t>(length) : 0);
}

std::wstring LocaleDateText(DateSerial date) {
  std::wstring text;
  AppendLocaleDateText(text, date);
  return text;
}

DateFormat UserDateFormat() {
  DateFormat format;
  format.order = OrderOfPattern(UserLocaleText(LOCALE_SSHORTDATE));
  format.dateSeparator = UserLocaleText(LOCALE_SDATE);
  format.timeSeparator = UserLocaleText(LOCALE_STIME);
  format.amDesignator = UserLocaleText(LOCALE_S1159);
  format.pmDesignator = UserLocaleText(LOCALE_S2359);
  const std::wstring decimal = UserLocaleText(LOCALE_SDECIMAL);
  if (decimal.size() == 1) format.decimalSeparator = decimal.front();
  format.yearOffset = YearOffset();
  format.twoDigitYearMax = TwoDigitYearMax();
  return format;
}

std::optional<DateSerial> ReadSystemDate(std::wstring_view text) {
  DATE date = 0;
  std::wstring terminated(text);
  if (FAILED(VarDateFromStr(terminated.data(), LOCALE_USER_DEFAULT, 0, &date))) return {};
  return date;
}

DateReader UserDateReader() {
  const DateFormat format = UserDateFormat();
  if (CanReadPlatformDates(format)) return {format, ReadSystemDate};
  return {std::nullopt, ReadSystemDate};
}

}  // namespace tellurvane

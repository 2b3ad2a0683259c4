// Reading dates that were written as text in a user's locale.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/DateSerial.h"

namespace tellurvane {

enum class DateOrder { kYearMonthDay, kMonthDayYear, kDayMonthYear };

// How a locale writes a short date and a long time.
struct DateFormat {
  DateOrder order = DateOrder::kYearMonthDay;
  std::wstring dateSeparator = L"/";
  std::wstring timeSeparator = L":";
  std::wstring amDesignator;
  std::wstring pmDesignator;
  wchar_t decimalSeparator = L'.';
  int yearOffset = 0;          // what to add to the calendar's year (1911 for the Taiwanese one)
  int twoDigitYearMax = 2049;  // the last year that two digits can mean
};

// Writes one date after the text so far. A date outside the platform's range is never passed.
using DateWriter = std::function<void(std::wstring& text, DateSerial date)>;

// The platform's own conversion in the user's locale; none on the host.
using SystemDateReader = std::function<std::optional<DateSerial>(std::wstring_view)>;

// Reads one format: date and time, date alone, or time alone (then the zero day). The designator is
// before or after the time, with or without blanks. Nothing when the text is anything else or the
// date does not exist.
std::optional<DateSerial> ParseDateText(std::wstring_view text, const DateFormat& format);

// Tries in this order: the user's format; the platform's conversion; the formats of zh-TW, en-US,
// ja-JP, zh-CN and ISO, if those that can read the text agree; the serial number ("40588.5").
class DateReader {
 public:
  // Without a format the user's locale is left to the platform.
  DateReader(std::optional<DateFormat> userFormat, SystemDateReader systemReader);

  // Rounded to the whole second. Nothing when no format fits, or before the year 1000: years of
  // three digits are taken for years of the Taiwanese calendar.
  std::optional<DateSerial> Read(std::wstring_view text) const;

 private:
  std::optional<DateSerial> ReadAny(std::wstring_view text) const;
  std::optional<DateSerial> ReadAgreed(std::wstring_view text) const;
  std::optional<DateSerial> ReadSerial(std::wstring_view text) const;

  std::optional<DateFormat> userFormat_;
  SystemDateReader systemReader_;
};

}  // namespace tellurvane

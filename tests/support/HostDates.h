// Dates written and read as the platform does it for users of zh-TW and en-US, on any machine.
#pragma once

#include <string>

#include "base/DateText.h"

namespace tellurvane {

// How the platform writes a short date and a long time in one locale.
struct HostLocale {
  DateFormat format;
  bool designatorFirst = false;   // "下午 12:00:00", not "12:00:00 PM"
  bool blankByDesignator = true;  // "下午 12:00:00", not "下午12:00:00"
  bool hourOfTwoDigits = false;   // "03:00:00", not "3:00:00"
};

// Windows writes "下午 03:00:00", Wine "下午3:00:00".
const HostLocale& ZhTw();
const HostLocale& ZhTwUnderWine();
const HostLocale& EnUs();

// Short date and long time; a midnight without its time; the zero day as the time alone.
void AppendHostDateText(std::wstring& text, DateSerial date, const HostLocale& locale);
std::wstring HostDateText(DateSerial date, const HostLocale& locale);

// The same as a DateWriter and a DateReader. The reader does not ask the system.
DateWriter HostDateWriter(const HostLocale& locale);
DateReader HostDateReader(const HostLocale& locale);

}  // namespace tellurvane

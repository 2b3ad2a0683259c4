// Dates in the locale of the user who is logged on.
#pragma once

#include <string>

#include "base/DateText.h"

namespace tellurvane {

// The present local moment, to the second.
DateSerial Now();

// Writes a date as the platform does: short date and long time; a midnight without its time; the
// zero day as the time alone. A date that the platform cannot write becomes its serial number,
// which DateReader reads too.
void AppendLocaleDateText(std::wstring& text, DateSerial date);
std::wstring LocaleDateText(DateSerial date);

// How the user's locale writes dates at this moment.
DateFormat UserDateFormat();

// The platform's own conversion in the user's locale.
std::optional<DateSerial> ReadSystemDate(std::wstring_view text);

// A reader for everything above.
DateReader UserDateReader();

}  // namespace tellurvane

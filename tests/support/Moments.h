// Moments as a test writes them down.
#pragma once

#include "base/DateSerial.h"

namespace tellurvane {

inline DateSerial At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return SerialFromCivil({year, month, day, hour, minute, second}).value();
}

}  // namespace tellurvane

// A native date or time picker.
#pragma once

#include <windows.h>

#include "base/DateText.h"

namespace tellurvane {

// The picker is destroyed with its parent window.
class ClsDate {
 public:
  // Once. Pixels in the parent's client area. Date mode shows the long date with a calendar, the
  // other mode the time with up and down buttons. Throws FatalError if the window cannot be
  // created.
  void Create(HWND parent, int left, int top, int width, int height, bool dateMode);

  // As last set. False before that, although the picker takes input from the start.
  bool Enabled() const { return isEnabled_; }
  void Enabled(bool enabled);

  // Date and time to the second, in both modes. A value that is not a date, or lies before 1601,
  // does not change the picker.
  DateSerial Value() const;
  void Value(DateSerial date);

  HWND hwnd() const { return picker_; }

 private:
  HWND picker_ = nullptr;
  bool isEnabled_ = false;
};

// The date of a picker, read from a text like "2011/2/14 9:5:0" in the user's locale. Where the
// locale reads another day, or none, the text is read as year, month and day. Public for tests.
DateSerial ReadPickedTime(const SYSTEMTIME& picked, const SystemDateReader& systemReader);

}  // namespace tellurvane

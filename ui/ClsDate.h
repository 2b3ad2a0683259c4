// A native date or time picker.
#pragma once

#include <windows.h>

#include "base/DateText.h"
#include "ui/GXISubclass.h"
#include "ui/GXMSubclass.h"

namespace tellurvane {

// The picker belongs to its parent window and goes with it, or with this object if that ends
// first.
class ClsDate : private GXISubclass {
 public:
  ClsDate() = default;
  ClsDate(const ClsDate&) = delete;
  ClsDate& operator=(const ClsDate&) = delete;
  ~ClsDate();

  // Once. Pixels in the parent's client area. In date mode the long date with a calendar, otherwise
  // the time with up and down buttons.
  // Throws FatalError where the system refuses.
  void Create(HWND parent, int left, int top, int width, int height, bool dateMode);

  // As last set; false before that, though the picker takes input from the start.
  bool Enabled() const { return isEnabled_; }
  void Enabled(bool enabled);

  // Date and time of day to the second, in either mode; the picker shows the one or the other.
  // What is no date of the platform's or lies before 1601 leaves the picker as it was.
  DateSerial Value() const;
  void Value(DateSerial date);

  // None once the parent took the picker with it.
  HWND hwnd() const { return picker_; }

 private:
  void WndProc(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
               WPARAM wParam, LPARAM lParam, LONG_PTR& userParam) override;

  HWND picker_ = nullptr;
  bool isEnabled_ = false;
  GXMSubclass subclass_;
};

// The moment that a picker names, by way of its text "2011/2/14 9:5:0": read by the platform in
// the user's locale, and where the locale makes another day of a year that stands first, or
// refuses the text, as year, month and day. Public for tests.
DateSerial ReadPickedTime(const SYSTEMTIME& picked, const SystemDateReader& systemReader);

}  // namespace tellurvane

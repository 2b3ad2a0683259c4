// The desktop clock: a small translucent window above all others.
#pragma once

#include <windows.h>

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "base/DateSerial.h"
#include "base/Pause.h"
#include "clock/ClockFace.h"
#include "ui/Form.h"
#include "ui/Handle.h"
#include "ui/MemoryContext.h"
#include "ui/PictureBox.h"
#include "ui/Timer.h"
#include "ui/clsControl.h"

namespace tellurvane {

// All must be set.
struct ClockCallbacks {
  Clock clock;
  Pause pause;
  // The locale's AM or PM designator.
  std::function<std::wstring(DateSerial)> dayHalf;
  // Opens the tray menu with the clock as its owner, at the mouse or at a place of the screen.
  std::function<void(HWND clock, std::optional<POINT> place)> openTrayMenu;
  // The clock gives the keyboard away.
  std::function<void()> keyboardIsFree;
  // F6: the keyboard goes to the next window.
  std::function<void()> nextWindow;
};

class FrmTime final : public Form {
 public:
  explicit FrmTime(ClockCallbacks callbacks);
  FrmTime(const FrmTime&) = delete;
  FrmTime& operator=(const FrmTime&) = delete;
  ~FrmTime() override;

  // Shows the clock with the present date. HideClock keeps it loaded.
  void ShowClock();
  void HideClock();

 private:
  struct DrawnTime {
    int hour = 0;
    int minute = 0;
    int second = 0;
  };
  static constexpr DrawnTime kNothingDrawn = {.hour = -1, .minute = -1, .second = -1};

  void Form_Load() override;
  bool Form_Unload() override;
  bool Form_KeyDown(const KeyEvent& event) override;
  void Form_Escape() override { callbacks_.keyboardIsFree(); }
  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void ColorsChanged() override;
  void ShowFocus(bool isFocused);
  POINT MenuPlace() const;

  void CreateLabels();
  void CreateDigits();
  void AddDigits(PictureBox& box, size_t label, int cells, std::function<int()> number);
  void FitHalfOfDay();
  void Form_MouseDown(const MouseEvent& event);
  void Form_MouseMove(const MouseEvent& event);
  void ForwardMouse(DrawnWindow& window);
  void PrepareFace();
  void Timer1_Timer();
  void DrawTime();
  void DrawFace(const FaceHands& hands);
  void DrawDate();
  void DrawNumber(HDC target, int cells, int number);
  void DrawDigit(HDC target, int digit, int row, int position);
  HDC Digits() const { return wPw1_ ? wPw1_->Dc() : nullptr; }
  CivilDateTime Time() const { return CivilFromSerial(callbacks_.clock()); }

  ClockCallbacks callbacks_;
  std::optional<MemoryContext> wPw1_;  // the digit strip
  std::optional<MemoryContext> face_;  // the face without its hands
  SIZE cell_ = {};                     // of a digit
  ClockFace clockFace_;
  UniqueFont halfFont_;  // small enough for both characters
  DrawnTime drawn_ = kNothingDrawn;
  CivilDateTime drawnDate_;
  bool isFocused_ = false;
  PictureBox G_y_;
  PictureBox G_m_;
  PictureBox G_d_;
  PictureBox C_ch_;
  PictureBox C_cm_;
  PictureBox C_cs_;
  std::array<PictureBox, 7> picD_;
  // Created with the window, so that a clock that is off costs nothing.
  std::array<std::optional<clsControl>, 7> labels_;
  Timer Timer1_;
};

}  // namespace tellurvane

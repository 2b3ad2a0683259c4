// The clock's window at a moment, and what it shows.
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "clock/FrmTime.h"
#include "tests/support/FormProbe.h"
#include "tests/support/Moments.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/Density.h"
#include "ui/Handle.h"

namespace tellurvane {

inline constexpr int kCellWidth = 16;
inline constexpr int kCellHeight = 25;
inline constexpr Color kRed = Rgb(255, 0, 0);
inline constexpr Color kBlue = Rgb(0, 0, 255);

// The executable's digit strip.
class DigitStrip {
 public:
  DigitStrip()
      : picture_(LoadBitmapW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(102))),
        context_(CreateCompatibleDC(nullptr)),
        selected_(context_.Get(), picture_.Get()) {}

  std::vector<Color> Cell(int digit) const { return CellOf(context_.Get(), digit); }
  // The pixels of a digit in any picture.
  static std::vector<Color> CellOf(HDC context, int position) {
    const int left = position * kCellWidth;
    return PixelsIn(context, {left, 0, left + kCellWidth, kCellHeight});
  }

 private:
  UniqueBitmap picture_;
  UniqueMemoryDc context_;
  SelectedObject selected_;
};

// The centre of the face, x and y.
inline int Middle() { return DotsPerInch() == 120 ? 37 : 36; }

enum Box { kYear, kMonth, kDay, kHour, kMinute, kSecond };
inline constexpr Box kAllBoxes[] = {kYear, kMonth, kDay, kHour, kMinute, kSecond};

class FrmTimeTest : public testing::Test {
 protected:
  void SetUp() override { MakeClock(); }

  void MakeClock() {
    clock = std::make_unique<FrmTime>(ClockCallbacks{
        .clock = [this] { return std::exchange(now, now + step); },
        .pause = log.Pause(),
        .dayHalf =
            [](DateSerial moment) {
              return std::wstring(CivilFromSerial(moment).hour < 12 ? L"上午" : L"下午");
            },
        .openTrayMenu =
            [this](HWND owner, std::optional<POINT> place) {
              EXPECT_EQ(owner, clock->hwnd());
              ++menus;
              menuPlace = place;
            },
        .keyboardIsFree = [this] { ++returns; },
        .nextWindow = [this] { ++passes; }});
  }
  void ShowAt(DateSerial moment) {
    now = moment;
    clock->ShowClock();
    Pump();
    log.window = clock->hwnd();
  }
  void ShowNewClockAt(DateSerial moment) {
    MakeClock();
    ShowAt(moment);
  }

  // The boxes without a label, in reading order.
  HWND BoxWindow(Box box) const {
    std::vector<HWND> boxes = InsideOf(clock->hwnd(), L"TellurvanePictureBox");
    std::erase_if(boxes, [](HWND window) { return GetWindow(window, GW_CHILD) != nullptr; });
    std::ranges::sort(boxes, {}, [](HWND window) {
      const RECT place = OnScreen(window);
      return std::pair(place.top, place.left);
    });
    EXPECT_EQ(boxes.size(), 6U);
    return boxes.at(box);
  }
  // Found by comparing with the strip.
  std::string DigitsIn(Box box) const {
    std::string digits;
    for (int position = 0; position < (box == kYear ? 4 : 2); ++position) {
      const std::vector<Color> shown = DigitStrip::CellOf(ObjectOf(BoxWindow(box)).Dc(), position);
      int digit = 0;
      while (digit < 10 && shown != strip.Cell(digit)) ++digit;
      digits += digit < 10 ? std::to_string(digit) : "?";
    }
    return digits;
  }
  std::string TimeShown() const {
    return DigitsIn(kHour) + ":" + DigitsIn(kMinute) + ":" + DigitsIn(kSecond);
  }
  std::string DateShown() const {
    return DigitsIn(kYear) + "-" + DigitsIn(kMonth) + "-" + DigitsIn(kDay);
  }
  // A label's text and the place of its box in the window.
  struct Label {
    std::wstring text;
    int x;
    int y;
    LONG width;
    LONG height;
    bool operator==(const Label&) const = default;
  };
  std::vector<Label> Labels() const {
    std::vector<Label> labels;
    const RECT inside = OnScreen(clock->hwnd());
    for (const HWND label : InsideOf(clock->hwnd(), L"Static")) {
      const RECT box = OnScreen(GetParent(label));
      labels.push_back({WindowText(label), static_cast<int>(box.left - inside.left),
                        static_cast<int>(box.top - inside.top), box.right - box.left,
                        box.bottom - box.top});
    }
    return labels;
  }
  std::wstring HalfShown() const { return std::ranges::max(Labels(), {}, &Label::width).text; }
  Color Face(int x, int y) const { return PixelOf(clock->Dc(), x, y); }

  const DateSerial kMorning = At(2026, 11, 21, 9, 5, 7);
  DigitStrip strip;
  DateSerial now = 0;
  DateSerial step = 0;  // of the time after each reading
  FadeLog log;
  int menus = 0;
  std::optional<POINT> menuPlace;
  int returns = 0;  // of the keyboard
  int passes = 0;   // to the next window
  std::unique_ptr<FrmTime> clock;
};

}  // namespace tellurvane

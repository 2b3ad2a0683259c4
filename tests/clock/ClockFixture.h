// What the tests of the clock's window share: the window at a moment, and what it shows.
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
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

// The digits as they lie in the executable.
class Strip {
 public:
  Strip()
      : picture_(LoadBitmapW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(102))),
        context_(CreateCompatibleDC(nullptr)),
        selected_(context_.Get(), picture_.Get()) {}

  SIZE Size() const {
    BITMAP facts = {};
    GetObjectW(picture_.Get(), sizeof(facts), &facts);
    return {facts.bmWidth, facts.bmHeight};
  }
  std::vector<Color> Cell(int digit) const { return CellOf(context_.Get(), digit); }
  // Of any picture: its pixels row by row.
  static std::vector<Color> CellOf(HDC context, int position) {
    std::vector<Color> pixels;
    for (int y = 0; y < kCellHeight; ++y) {
      for (int x = 0; x < kCellWidth; ++x) {
        pixels.push_back(PixelOf(context, position * kCellWidth + x, y));
      }
    }
    return pixels;
  }

 private:
  UniqueBitmap picture_;
  UniqueMemoryDc context_;
  SelectedObject selected_;
};

// Of the face, from the window's left upper corner.
inline int Middle() { return DotsPerInch() == 120 ? 37 : 36; }

// How far a pixel lies from the line between the middle and a hand's end.
inline double FromHand(int x, int y, double degrees, double length) {
  const double angle = degrees * std::acos(-1) / 180;
  const double along = (x - Middle()) * std::cos(angle) + (y - Middle()) * std::sin(angle);
  const double aside = (y - Middle()) * std::cos(angle) - (x - Middle()) * std::sin(angle);
  return std::hypot(along - std::clamp(along, 0.0, length), aside);
}

struct Hand {
  double degrees;
  double length;
  Color color;
  int endX;  // from the middle
  int endY;
};

// Every pixel of the hand's colour lies on it, and it has as many as its longer side.
inline void ExpectHand(HDC face, const Hand& hand, int covered) {
  int pixels = 0;
  for (int y = 0; y < 2 * Middle(); ++y) {
    for (int x = 0; x < 2 * Middle(); ++x) {
      if (PixelOf(face, x, y) != hand.color) continue;
      ++pixels;
      EXPECT_LT(FromHand(x, y, hand.degrees, hand.length), 1.01) << x << ", " << y;
    }
  }
  EXPECT_NEAR(pixels, std::max(std::abs(hand.endX), std::abs(hand.endY)) + 1 - covered / 2,
              covered / 2 + covered % 2);
  EXPECT_EQ(PixelOf(face, Middle() + hand.endX, Middle() + hand.endY), hand.color);
}

enum Box { kYear, kMonth, kDay, kHour, kMinute, kSecond };
inline constexpr Box kAllBoxes[] = {kYear, kMonth, kDay, kHour, kMinute, kSecond};

class FrmTimeTest : public testing::Test {
 protected:
  void SetUp() override { MakeClock(); }

  void MakeClock() {
    clock = std::make_unique<FrmTime>(ClockCallbacks{
        .clock = [this] { return now; },
        .pause = log.Pause(),
        .dayHalf =
            [](DateSerial moment) {
              return std::wstring(CivilFromSerial(moment).hour < 12 ? L"上午" : L"下午");
            },
        .openTrayMenu =
            [this](HWND owner) {
              EXPECT_EQ(owner, clock->hwnd());
              ++menus;
            }});
  }
  void ShowAt(DateSerial moment) {
    now = moment;
    clock->ShowClock();
    Pump();
    log.window = clock->hwnd();
  }
  // A fresh one, as at the next start of the program.
  void ShowAnewAt(DateSerial moment) {
    MakeClock();
    ShowAt(moment);
  }

  // The boxes without a label, in the order in which they are read.
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
  HDC PictureOf(Box box) const { return ObjectOf(BoxWindow(box)).Dc(); }
  // The digit that stands at a position counted from 0, told by its cell of the strip.
  std::string DigitAt(Box box, int position) const {
    const std::vector<Color> shown = Strip::CellOf(PictureOf(box), position);
    for (int digit = 0; digit < 10; ++digit) {
      if (shown == strip.Cell(digit)) return std::to_string(digit);
    }
    return "?";
  }
  std::string DigitsIn(Box box) const {
    std::string digits;
    for (int position = 0; position < (box == kYear ? 4 : 2); ++position) {
      digits += DigitAt(box, position);
    }
    return digits;
  }
  std::string TimeShown() const {
    return DigitsIn(kHour) + ":" + DigitsIn(kMinute) + ":" + DigitsIn(kSecond);
  }
  std::string DateShown() const {
    return DigitsIn(kYear) + "-" + DigitsIn(kMonth) + "-" + DigitsIn(kDay);
  }
  // The labels' texts with their boxes' places in the window.
  struct Label {
    std::wstring text;
    int x;
    int y;
    int width;
    int height;
    bool operator==(const Label&) const = default;
  };
  std::vector<Label> Labels() const {
    std::vector<Label> labels;
    for (const HWND label : InsideOf(clock->hwnd(), L"Static")) {
      RECT place = OnScreen(GetParent(label));
      MapWindowPoints(nullptr, clock->hwnd(), reinterpret_cast<POINT*>(&place), 2);
      labels.push_back({WindowText(label), static_cast<int>(place.left),
                        static_cast<int>(place.top), static_cast<int>(place.right - place.left),
                        static_cast<int>(place.bottom - place.top)});
    }
    return labels;
  }
  std::wstring HalfShown() const { return std::ranges::max(Labels(), {}, &Label::width).text; }
  Color Face(int x, int y) const { return PixelOf(clock->Dc(), x, y); }

  const DateSerial kMorning = At(2026, 11, 21, 9, 5, 7);
  Strip strip;
  DateSerial now = 0;
  FadeLog log;
  int menus = 0;
  std::unique_ptr<FrmTime> clock;
};

}  // namespace tellurvane

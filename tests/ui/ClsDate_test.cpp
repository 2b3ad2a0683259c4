#include "ui/ClsDate.h"

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <cmath>
#include <optional>

#include "SubclassTestSupport.h"
#include "base/LocaleDates.h"
#include "tests/support/FormProbe.h"
#include "tests/support/Moments.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/PictureBox.h"
#include "ui/ToolkitFont.h"

namespace tellurvane {
namespace {

class DateTest : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override { picker.Create(form.hwnd(), 10, 20, 200, 24, GetParam()); }

  TestForm form;
  ClsDate picker;
};

INSTANTIATE_TEST_SUITE_P(Modes, DateTest, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& mode) {
                           return mode.param ? "Date" : "Time";
                         });

TEST_P(DateTest, IsAPickerOfItsParentInTheModesFormat) {
  EXPECT_EQ(ClassOf(picker.hwnd()), L"SysDateTimePick32");
  EXPECT_EQ(GetParent(picker.hwnd()), form.hwnd());
  RECT place = {};
  GetWindowRect(picker.hwnd(), &place);
  MapWindowPoints(nullptr, form.hwnd(), reinterpret_cast<POINT*>(&place), 2);
  const RECT asked = {10, 20, 210, 44};
  EXPECT_TRUE(EqualRect(&place, &asked));
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(picker.hwnd(), GWL_STYLE));
  EXPECT_NE(style & WS_VISIBLE, 0U);
  constexpr DWORD kFormats = DTS_LONGDATEFORMAT | DTS_TIMEFORMAT | DTS_SHOWNONE;
  EXPECT_EQ(style & kFormats, GetParam() ? DTS_LONGDATEFORMAT : DTS_TIMEFORMAT);
  const auto font = reinterpret_cast<HFONT>(SendMessageW(picker.hwnd(), WM_GETFONT, 0, 0));
  EXPECT_EQ(font, ToolkitFont());
}

TEST_P(DateTest, ReturnsDatesToTheSecond) {
  const DateSerial dates[] = {
      At(1800, 7, 6, 18, 0, 0),     At(1899, 12, 30, 6, 0, 0), At(1999, 12, 31, 23, 59, 59),
      At(2000, 2, 29, 12, 0),       At(2011, 1, 12, 1, 2, 3),  At(2012, 10, 11, 9, 5),
      At(9999, 12, 30, 23, 59, 59),
  };
  for (const DateSerial date : dates) {
    picker.Value(date);
    EXPECT_EQ(SecondsFromSerial(picker.Value()), SecondsFromSerial(date)) << date;
  }
  picker.Value(At(2011, 2, 14));
  EXPECT_EQ(CivilFromSerial(picker.Value()), (CivilDateTime{2011, 2, 14, 0, 0, 0})) << "midnight";
}

// Read from the message: the picker computes the day of the week by itself.
TEST_P(DateTest, SendsThePickerACompleteRecord) {
  SYSTEMTIME handed = {};
  RecordingOwner spy;
  spy.onCall = [&](const SubclassCall& call) {
    EXPECT_EQ(call.wParam, WPARAM{GDT_VALID});
    handed = *reinterpret_cast<const SYSTEMTIME*>(call.lParam);
  };
  GXMSubclass engine;
  engine.Subclass(picker.hwnd(), spy, 0);
  engine.AddMessage(picker.hwnd(), DTM_SETSYSTEMTIME, kBeforePrevious);
  const struct {
    CivilDateTime moment;
    WORD day;  // Sunday is 0
  } cases[] = {
      {{2011, 2, 13, 23, 59, 59}, 0}, {{1899, 12, 30, 0, 0, 0}, 6}, {{1800, 1, 1, 18, 30, 0}, 3}};
  for (const auto& [moment, day] : cases) {
    picker.Value(SerialFromCivil(moment).value());
    EXPECT_EQ((CivilDateTime{handed.wYear, handed.wMonth, handed.wDay, handed.wHour, handed.wMinute,
                             handed.wSecond}),
              moment);
    EXPECT_EQ(handed.wMilliseconds, 0);
    EXPECT_EQ(handed.wDayOfWeek, day) << moment.year << "/" << moment.month << "/" << moment.day;
  }
}

TEST_P(DateTest, KeepsItsValueWhereADateCannotBeShown) {
  const DateSerial before = At(2011, 2, 14, 12, 0, 0);
  picker.Value(before);
  for (const DateSerial date : {At(1500, 1, 1), 1e9, -1e9, std::nan("")}) {
    picker.Value(date);
    EXPECT_EQ(picker.Value(), before);
  }
}

TEST_P(DateTest, IsEnabledAndDisabledAndRepaintedAtOnce) {
  EXPECT_FALSE(picker.Enabled()) << "before it is set";
  EXPECT_TRUE(IsWindowEnabled(picker.hwnd()));
  for (const bool enabled : {false, true, false}) {
    picker.Enabled(enabled);
    EXPECT_EQ(picker.Enabled(), enabled);
    EXPECT_EQ(IsWindowEnabled(picker.hwnd()) != 0, enabled);
    EXPECT_FALSE(GetUpdateRect(picker.hwnd(), nullptr, FALSE));
  }
}

TEST_P(DateTest, ReturnsTheDateThatTheKeyboardChanged) {
  const DateSerial before = At(2011, 3, 15, 10, 20, 30);
  picker.Value(before);
  SetFocus(picker.hwnd());
  for (const WPARAM key : {VK_RIGHT, VK_UP}) SendMessageW(picker.hwnd(), WM_KEYDOWN, key, 0);
  const auto difference = SecondsFromSerial(picker.Value()) - SecondsFromSerial(before);
  EXPECT_NE(difference, 0);
  EXPECT_EQ(difference % kSecondsPerDay == 0, GetParam()) << "days in date mode, else the time";
}

TEST_P(DateTest, IsReachedByTheTabKey) {
  ClsDate other;
  other.Create(form.hwnd(), 10, 60, 200, 24, !GetParam());
  SetForegroundWindow(form.hwnd());
  SetFocus(picker.hwnd());
  PostMessageW(picker.hwnd(), WM_KEYDOWN, VK_TAB, 0);
  EXPECT_TRUE(PumpUntil([&] { return GetFocus() == other.hwnd(); }));
}

const SYSTEMTIME kPicked = {2011, 3, 0, 4, 5, 6, 7, 0};

TEST(PickedTimeTest, GoesThroughATextThatThePlatformReads) {
  std::wstring text;
  const auto read = ReadPickedTime(kPicked, [&](std::wstring_view given) {
    text = given;
    return ReadSystemDate(given);
  });
  EXPECT_EQ(text, L"2011/3/4 5:6:7");
  EXPECT_EQ(read, At(2011, 3, 4, 5, 6, 7));
}

TEST(PickedTimeTest, IsTheSameDayWhereALocaleReadsAnotherOneOrNone) {
  const std::optional<DateSerial> readings[] = {At(2011, 4, 3, 5, 6, 7), std::nullopt, 1e300};
  for (const auto& reading : readings) {
    EXPECT_EQ(ReadPickedTime(kPicked, [&](std::wstring_view) { return reading; }),
              At(2011, 3, 4, 5, 6, 7));
  }
}

}  // namespace
}  // namespace tellurvane

#include "ui/ClsDate.h"

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <optional>

#include "SubclassTestSupport.h"
#include "base/LocaleDates.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/ToolkitFont.h"

namespace tellurvane {
namespace {

DateSerial At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return SerialFromCivil({year, month, day, hour, minute, second}).value();
}

class DateTest : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override { picker.Create(form.hwnd(), 10, 20, 200, 24, GetParam()); }

  SYSTEMTIME Shown() const {
    SYSTEMTIME time = {};
    EXPECT_EQ(SendMessageW(picker.hwnd(), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time)),
              GDT_VALID);
    return time;
  }

  void Press(WPARAM key) const { SendMessageW(picker.hwnd(), WM_KEYDOWN, key, 0); }

  TestForm form;
  ClsDate picker;
};

INSTANTIATE_TEST_SUITE_P(Modes, DateTest, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& mode) {
                           return mode.param ? "Date" : "Time";
                         });

TEST_P(DateTest, IsAPickerOfItsParentInTheModesFormat) {
  std::array<wchar_t, 40> name = {};
  GetClassNameW(picker.hwnd(), name.data(), static_cast<int>(name.size()));
  EXPECT_STREQ(name.data(), L"SysDateTimePick32");
  EXPECT_EQ(GetParent(picker.hwnd()), form.hwnd());
  RECT place = {};
  GetWindowRect(picker.hwnd(), &place);
  MapWindowPoints(nullptr, form.hwnd(), reinterpret_cast<POINT*>(&place), 2);
  EXPECT_EQ(place.left, 10);
  EXPECT_EQ(place.top, 20);
  EXPECT_EQ(place.right, 210);
  EXPECT_EQ(place.bottom, 44);
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(picker.hwnd(), GWL_STYLE));
  EXPECT_NE(style & WS_VISIBLE, 0U);
  constexpr DWORD kFormats = DTS_LONGDATEFORMAT | DTS_TIMEFORMAT | DTS_SHOWNONE;
  EXPECT_EQ(style & kFormats, GetParam() ? DTS_LONGDATEFORMAT : DTS_TIMEFORMAT);
  EXPECT_EQ(WindowText(form.hwnd()), L"test");
}

TEST_P(DateTest, WritesInNinePointTahoma) {
  const auto font = reinterpret_cast<HFONT>(SendMessageW(picker.hwnd(), WM_GETFONT, 0, 0));
  EXPECT_EQ(font, ToolkitFont());
  LOGFONTW described = {};
  GetObjectW(font, sizeof(described), &described);
  EXPECT_STREQ(described.lfFaceName, L"Tahoma");
}

TEST_P(DateTest, GivesAMidnightBackAsTheSameDateWithoutTime) {
  const DateSerial midnight = At(2011, 2, 14);
  picker.Value(midnight);
  EXPECT_EQ(picker.Value(), midnight);
  EXPECT_EQ(CivilFromSerial(picker.Value()), (CivilDateTime{2011, 2, 14, 0, 0, 0}));
}

TEST_P(DateTest, GivesDatesBackToTheSecond) {
  const DateSerial dates[] = {
      At(1899, 12, 30, 6, 0, 0),    At(1900, 1, 1),           At(1901, 12, 31, 23, 59, 59),
      At(1999, 12, 31, 23, 59, 59), At(2000, 2, 29, 12, 0),   At(2011, 1, 12, 1, 2, 3),
      At(2011, 12, 1, 13, 0, 0),    At(2012, 10, 11, 9, 5),   At(2026, 11, 21, 0, 0, 1),
      At(2030, 3, 4, 5, 6, 7),      At(2049, 12, 31),         At(2100, 2, 28, 12, 34, 56),
      At(9999, 12, 30, 23, 59, 59), At(1800, 7, 6, 18, 0, 0),
  };
  for (const DateSerial date : dates) {
    picker.Value(date);
    EXPECT_EQ(SecondsFromSerial(picker.Value()), SecondsFromSerial(date)) << date;
  }
}

TEST_P(DateTest, GivesEveryDayOfALeapYearBack) {
  const DateSerial first = At(2024, 1, 1, 11, 0, 0);
  for (int day = 0; day < 366; ++day) {
    picker.Value(first + day);
    ASSERT_EQ(SecondsFromSerial(picker.Value()), SecondsFromSerial(first + day)) << day;
  }
}

// The picker finds the day of the week out by itself, so the record is looked at on its way there.
TEST_P(DateTest, HandsThePickerAWholeRecord) {
  SYSTEMTIME handed = {};
  RecordingOwner spy;
  spy.onCall = [&](const SubclassCall& call) {
    EXPECT_EQ(call.wParam, WPARAM{GDT_VALID});
    handed = *reinterpret_cast<const SYSTEMTIME*>(call.lParam);
  };
  GXMSubclass engine;
  engine.Subclass(picker.hwnd(), spy, 0);
  engine.AddMessage(picker.hwnd(), DTM_SETSYSTEMTIME, kBeforePrevious);
  struct Case {
    CivilDateTime moment;
    WORD day;  // Sunday is 0
  };
  const Case cases[] = {
      {{2011, 2, 14, 0, 0, 0}, 1},   {{2011, 2, 13, 23, 59, 59}, 0}, {{1899, 12, 30, 0, 0, 0}, 6},
      {{1899, 12, 29, 12, 0, 1}, 5}, {{2000, 2, 29, 1, 2, 3}, 2},    {{2026, 11, 21, 9, 0, 0}, 6},
      {{1800, 1, 1, 18, 30, 0}, 3},
  };
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

TEST_P(DateTest, StartsOutReportingItselfDisabledThoughItTakesInput) {
  EXPECT_FALSE(picker.Enabled());
  EXPECT_TRUE(IsWindowEnabled(picker.hwnd()));
}

TEST_P(DateTest, IsEnabledAndDisabledAndRepaintedAtOnce) {
  for (const bool enabled : {false, true, false}) {
    picker.Enabled(enabled);
    EXPECT_EQ(picker.Enabled(), enabled);
    EXPECT_EQ(IsWindowEnabled(picker.hwnd()) != 0, enabled);
    EXPECT_FALSE(GetUpdateRect(picker.hwnd(), nullptr, FALSE));
  }
}

TEST_P(DateTest, ReadsBackWhatTheKeyboardChanged) {
  const DateSerial before = At(2011, 3, 15, 10, 20, 30);
  picker.Value(before);
  SetFocus(picker.hwnd());
  Press(VK_RIGHT);  // selects a field
  Press(VK_UP);
  const auto difference = SecondsFromSerial(picker.Value()) - SecondsFromSerial(before);
  EXPECT_NE(difference, 0);
  // A date field changes days, a time field the time of this day.
  EXPECT_EQ(difference % kSecondsPerDay == 0, GetParam());
  const SYSTEMTIME shown = Shown();
  EXPECT_EQ(CivilFromSerial(picker.Value()),
            (CivilDateTime{shown.wYear, shown.wMonth, shown.wDay, shown.wHour, shown.wMinute,
                           shown.wSecond}));
}

TEST_P(DateTest, IsReachedByTheTabKey) {
  ClsDate other;
  other.Create(form.hwnd(), 10, 60, 200, 24, !GetParam());
  SetForegroundWindow(form.hwnd());
  SetFocus(picker.hwnd());
  PostMessageW(picker.hwnd(), WM_KEYDOWN, VK_TAB, 0);
  EXPECT_TRUE(PumpUntil([&] { return GetFocus() == other.hwnd(); }));
}

TEST_P(DateTest, EndsWithItsParent) {
  const HWND window = picker.hwnd();
  form.Unload();
  EXPECT_FALSE(IsWindow(window));
  EXPECT_EQ(picker.hwnd(), nullptr) << "the handle may be another window's by now";
}

TEST(DateLeakTest, LeavesNothingBehind) {
  TestForm form;
  form.Hide();
  bool dateMode = false;
  EXPECT_EQ(LeakedBy([&] {
              ClsDate date;
              dateMode = !dateMode;
              date.Create(form.hwnd(), 0, 60, 200, 24, dateMode);
              date.Enabled(true);
              date.Value(At(2011, 2, 14));
              EXPECT_EQ(date.Value(), At(2011, 2, 14));
            }),
            ResourceCounts());
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

TEST(PickedTimeTest, IsReadByThePlatformAloneInThisLocale) {
  const auto read = ReadSystemDate(L"2011/3/4 5:6:7");
  ASSERT_TRUE(read);
  EXPECT_EQ(*read, At(2011, 3, 4, 5, 6, 7));
}

TEST(PickedTimeTest, IsTheSameDayWhereALocaleReadsItOtherwise) {
  const std::optional<DateSerial> readings[] = {At(2011, 4, 3, 5, 6, 7), std::nullopt, 1e300};
  for (const auto& reading : readings) {
    EXPECT_EQ(ReadPickedTime(kPicked, [&](std::wstring_view) { return reading; }),
              At(2011, 3, 4, 5, 6, 7));
  }
}

}  // namespace
}  // namespace tellurvane

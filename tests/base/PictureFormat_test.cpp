#include "base/PictureFormat.h"

#include <gmock/gmock.h>

#include <limits>
#include <utility>

#include "tests/support/Moments.h"

namespace tellurvane {
namespace {

const DayHalves kChinese = {L"上午", L"下午"};

TEST(FormatMoment, WritesTheStripsPicture) {
  const struct {
    DateSerial moment;
    const wchar_t* text;
  } cases[] = {
      {At(2011, 2, 14, 12, 0, 0), L"2011 年 02 月 14 日 - 下午 12 時 00 分 00 秒"},
      {At(2011, 2, 14, 0, 5, 9), L"2011 年 02 月 14 日 - 上午 12 時 05 分 09 秒"},
      {At(2026, 11, 21, 11, 59, 59), L"2026 年 11 月 21 日 - 上午 11 時 59 分 59 秒"},
      {At(2026, 12, 31, 13, 1, 2), L"2026 年 12 月 31 日 - 下午 01 時 01 分 02 秒"},
  };
  for (const auto& [moment, text] : cases) {
    EXPECT_EQ(FormatMoment(L"yyyy 年 mm 月 dd 日 - AMPM hh 時 mm 分 ss 秒", moment, kChinese),
              text);
  }
}

TEST(FormatMoment, TakesTheOtherPictures) {
  const DateSerial moment = At(2011, 2, 14, 15, 4, 5);
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"hh:mm:ss", L"15:04:05"},        // 24 hours without a half of the day
      {L"mm hh mm mm", L"02 15 04 02"},  // minutes only right after the hours
      {L"", L""},
      {L"y m d h s AM", L"y m d h s AM"},
  };
  for (const auto& [picture, text] : cases)
    EXPECT_EQ(FormatMoment(picture, moment, kChinese), text);
  EXPECT_EQ(FormatMoment(L"hh", At(2011, 2, 14), kChinese), L"00");
  EXPECT_EQ(FormatMoment(L"[AMPM] hh:mm", moment, {}), L"[] 03:04") << "a locale without halves";
}

TEST(FormatPercent, RoundsHalvesAwayFromZeroAndWritesWhatIsNoNumberAsNothing) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const struct {
    double quotient;
    int decimals;
    const wchar_t* text;
  } cases[] = {
      {0, 2, L"0.00 %"},
      {0, 0, L"0 %"},
      {0.3725, 2, L"37.25 %"},
      {0.8, 0, L"80 %"},
      {1, 2, L"100.00 %"},
      {0.005, 0, L"1 %"},
      {0.125, 0, L"13 %"},
      {0.375, 0, L"38 %"},
      {0.004999, 0, L"0 %"},
      {0.000049, 2, L"0.00 %"},
      {0.00005, 2, L"0.01 %"},
      {1.0 / 3, 2, L"33.33 %"},
      {2.0 / 3, 0, L"67 %"},
      {0.285, 0, L"29 %"},
      {12.5, 0, L"1250 %"},
      {-0.125, 0, L"-13 %"},
      {kInfinity, 2, L"0.00 %"},
      {-kInfinity, 2, L"0.00 %"},
      {std::numeric_limits<double>::quiet_NaN(), 2, L"0.00 %"},
  };
  for (const auto& [quotient, decimals, text] : cases) {
    EXPECT_EQ(FormatPercent(quotient, decimals), text) << quotient;
  }
}

}  // namespace
}  // namespace tellurvane

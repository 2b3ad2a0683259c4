#include "base/DateText.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Number.h"
#include "base/Text.h"

namespace tellurvane {
namespace {

// The separator between two numbers.
enum class Gap { kBlank, kDate, kTime, kEither };

struct NumberToken {
  int value = 0;
  int digits = 0;
  Gap gapBefore = Gap::kBlank;
};

enum class HalfOfDay { kNone, kMorning, kAfternoon };

constexpr size_t kMostNumbers = 6;

constexpr int kTaiwaneseYearOffset = 1911;

// No schedule reaches back beyond it, and its years cannot be mistaken for another calendar's.
constexpr int kFirstYear = 1000;

struct DateTokens {
  std::array<NumberToken, kMostNumbers> numbers;
  size_t count = 0;
  HalfOfDay half = HalfOfDay::kNone;
};

// Blanks that locales put into dates, the directional marks of right-to-left ones included.
bool IsBlank(wchar_t unit) {
  switch (unit) {
    case L' ':
    case L'\t':
    case 0x00A0:
    case 0x200E:
    case 0x200F:
    case 0x2009:
    case 0x202F:
    case 0x3000:
      return true;
    default:
      return false;
  }
}

std::optional<Gap> GapOf(wchar_t unit, const DateFormat& format) {
  const bool ofDate = format.dateSeparator.find(unit) != std::wstring::npos || unit == L'/' ||
                      unit == L'-' || unit == L'.' || unit == L'年' || unit == L'月' ||
                      unit == L'日';
  const bool ofTime = format.timeSeparator.find(unit) != std::wstring::npos || unit == L':' ||
                      unit == L'時' || unit == L'分' || unit == L'秒';
  if (ofDate && ofTime) return Gap::kEither;
  if (ofDate) return Gap::kDate;
  if (ofTime) return Gap::kTime;
  return std::nullopt;
}

bool StartsWith(std::wstring_view text, std::wstring_view designator) {
  return !designator.empty() && text.size() >= designator.size() &&
         EqualsIgnoringAsciiCase(text.substr(0, designator.size()), designator);
}

// Takes a designator off the front, if there is one. Returns its length.
size_t TakeDesignator(std::wstring_view rest, const DateFormat& format, HalfOfDay& half) {
  const bool isMorning = StartsWith(rest, format.amDesignator);
  const bool isAfternoon = StartsWith(rest, format.pmDesignator);
  if (!isMorning && !isAfternoon) return 0;
  const bool takeMorning =
      isMorning && (!isAfternoon || format.amDesignator.size() >= format.pmDesignator.size());
  half = takeMorning ? HalfOfDay::kMorning : HalfOfDay::kAfternoon;
  return takeMorning ? format.amDesignator.size() : format.pmDesignator.size();
}

bool TakeNumber(std::wstring_view text, size_t& position, Gap gap, DateTokens& tokens) {
  const std::wstring_view digits = DigitsAtFront(text.substr(position));
  if (tokens.count == kMostNumbers || digits.size() > 4) return false;
  int value = 0;
  for (const wchar_t digit : digits) value = value * 10 + (digit - L'0');
  tokens.numbers[tokens.count++] = {
      .value = value, .digits = static_cast<int>(digits.size()), .gapBefore = gap};
  position += digits.size();
  return true;
}

// Whether this is the T of an ISO date, between two digits.
bool IsIsoDivider(std::wstring_view text, size_t position) {
  return text[position] == L'T' && position > 0 && IsDigit(text[position - 1]) &&
         position + 1 < text.size() && IsDigit(text[position + 1]);
}

bool Tokenize(std::wstring_view text, const DateFormat& format, DateTokens& tokens) {
  Gap gap = Gap::kBlank;
  for (size_t position = 0; position < text.size();) {
    const wchar_t unit = text[position];
    if (IsDigit(unit)) {
      if (!TakeNumber(text, position, gap, tokens)) return false;
      gap = Gap::kBlank;
      continue;
    }
    if (IsBlank(unit) || unit == L',' || IsIsoDivider(text, position)) {
      ++position;
      continue;
    }
    HalfOfDay half = HalfOfDay::kNone;
    if (const size_t length = TakeDesignator(text.substr(position), format, half)) {
      if (tokens.half != HalfOfDay::kNone) return false;
      tokens.half = half;
      position += length;
      continue;
    }
    const auto separator = GapOf(unit, format);
    // A separator needs a number before it, and two in a row separate nothing.
    if (!separator || tokens.count == 0 || gap != Gap::kBlank) return false;
    gap = *separator;
    ++position;
  }
  return tokens.count > 0;
}

bool IsDateGap(Gap gap) { return gap == Gap::kDate || gap == Gap::kEither; }
bool IsTimeGap(Gap gap) { return gap == Gap::kTime || gap == Gap::kEither; }

int FullYear(const NumberToken& year, const DateFormat& format) {
  // In a calendar with an offset two digits are a complete year: 99 in Taiwan is 2010.
  if (year.digits <= 2 && format.yearOffset <= 0) {
    const int century = format.twoDigitYearMax - format.twoDigitYearMax % 100;
    const int full = century + year.value;
    return full > format.twoDigitYearMax ? full - 100 : full;
  }
  // Adds the calendar's offset if the result lies between 1900 and 2200.
  const int shifted = year.value + format.yearOffset;
  return shifted >= 1900 && shifted <= 2200 ? shifted : year.value;
}

bool ReadDateGroup(const NumberToken* numbers, const DateFormat& format, CivilDateTime& civil) {
  if (!IsDateGap(numbers[1].gapBefore) || !IsDateGap(numbers[2].gapBefore)) return false;
  size_t year = 2, month = 0, day = 1;
  if (numbers[0].digits > 2 || format.order == DateOrder::kYearMonthDay) {
    year = 0, month = 1, day = 2;
  } else if (format.order == DateOrder::kDayMonthYear) {
    month = 1, day = 0;
  }
  if (numbers[month].digits > 2 || numbers[day].digits > 2) return false;
  civil.year = FullYear(numbers[year], format);
  // In every format, three digits in front are a year of the Taiwanese calendar: the user may have
  // changed the calendar since the date was written.
  if (numbers[0].digits == 3 && format.yearOffset <= 0) civil.year += kTaiwaneseYearOffset;
  civil.month = numbers[month].value;
  civil.day = numbers[day].value;
  return true;
}

bool ReadTimeGroup(const NumberToken* numbers, size_t count, HalfOfDay half, CivilDateTime& civil) {
  for (size_t i = 0; i < count; ++i) {
    if (numbers[i].digits > 2) return false;
    if (i > 0 && !IsTimeGap(numbers[i].gapBefore)) return false;
  }
  civil.hour = numbers[0].value;
  civil.minute = numbers[1].value;
  civil.second = count > 2 ? numbers[2].value : 0;
  if (half == HalfOfDay::kMorning) {
    if (civil.hour > 12) return false;
    if (civil.hour == 12) civil.hour = 0;
  } else if (half == HalfOfDay::kAfternoon && civil.hour < 12) {
    civil.hour += 12;
  }
  return true;
}

// For a list from another user's computer. ISO needs no entry: every format reads a year of four
// digits in front, with dashes or slashes.
const std::array<DateFormat, 3>& FallbackFormats() {
  static const std::array<DateFormat, 3> formats = {
      // zh-TW and zh-CN
      DateFormat{.amDesignator = L"上午", .pmDesignator = L"下午"},
      // en-US
      DateFormat{.order = DateOrder::kMonthDayYear, .amDesignator = L"AM", .pmDesignator = L"PM"},
      // ja-JP
      DateFormat{.amDesignator = L"午前", .pmDesignator = L"午後"},
  };
  return formats;
}

}  // namespace

std::optional<DateSerial> ParseDateText(std::wstring_view text, const DateFormat& format) {
  DateTokens tokens;
  if (!Tokenize(text, format, tokens)) return std::nullopt;
  const NumberToken* const numbers = tokens.numbers.data();

  CivilDateTime civil;
  if (tokens.count >= 5) {
    if (numbers[3].gapBefore == Gap::kTime || !ReadDateGroup(numbers, format, civil) ||
        !ReadTimeGroup(numbers + 3, tokens.count - 3, tokens.half, civil)) {
      return std::nullopt;
    }
    return SerialFromCivil(civil);
  }
  if (tokens.count == 3 && tokens.half == HalfOfDay::kNone &&
      ReadDateGroup(numbers, format, civil)) {
    if (const auto date = SerialFromCivil(civil)) return date;
  }
  civil = {};
  if ((tokens.count == 2 || tokens.count == 3) &&
      ReadTimeGroup(numbers, tokens.count, tokens.half, civil)) {
    return SerialFromCivil(civil);
  }
  return std::nullopt;
}

DateReader::DateReader(std::optional<DateFormat> userFormat, SystemDateReader systemReader)
    : userFormat_(std::move(userFormat)), systemReader_(std::move(systemReader)) {}

std::optional<DateSerial> DateReader::Read(std::wstring_view text) const {
  const auto date = ReadAny(text);
  if (date && CivilFromSerial(*date).year < kFirstYear) return std::nullopt;
  return date;
}

std::optional<DateSerial> DateReader::ReadAny(std::wstring_view text) const {
  if (userFormat_) {
    if (const auto date = ParseDateText(text, *userFormat_)) return date;
  }
  if (systemReader_) {
    const auto date = systemReader_(text);
    if (date && IsDateSerial(*date)) return SerialFromSeconds(SecondsFromSerial(*date));
  }
  if (const auto date = ReadAgreed(text)) return date;
  return ReadSerial(text);
}

std::optional<DateSerial> DateReader::ReadAgreed(std::wstring_view text) const {
  std::optional<DateSerial> agreed;
  for (const DateFormat& format : FallbackFormats()) {
    const auto date = ParseDateText(text, format);
    if (!date) continue;
    if (agreed && *agreed != *date) return std::nullopt;
    agreed = date;
  }
  return agreed;
}

std::optional<DateSerial> DateReader::ReadSerial(std::wstring_view text) const {
  std::wstring number(TrimBlanks(text));
  if (userFormat_) {
    std::replace(number.begin(), number.end(), userFormat_->decimalSeparator, L'.');
  }
  const auto serial = ParseNumber(number);
  if (!serial || !IsDateSerial(*serial)) return std::nullopt;
  return SerialFromSeconds(SecondsFromSerial(*serial));
}

}  // namespace tellurvane

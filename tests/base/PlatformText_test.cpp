#include "base/PlatformText.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

TEST(EqualsIgnoringCaseTest, KnowsTheLettersOfEveryScript) {
  const struct {
    const wchar_t* left;
    const wchar_t* right;
    bool isEqual;
  } rows[] = {
      {L"Éa", L"éA", true},     {L"é", L"É", true},        {L"Ａ", L"ａ", true},
      {L"ａ１", L"Ａ１", true}, {L"Ж", L"ж", true},        {L"жук", L"ЖУК", true},
      {L"É", L"E", false},      {L"Ａ", L"A", false},      {L"Ж", L"Z", false},
      {L"音樂", L"音樂", true}, {L"音樂", L"音楽", false}, {L"", L"", true},
      {L"a", L"", false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(EqualsIgnoringCase(row.left, row.right), row.isEqual) << "row " << &row - rows;
  }
}

TEST(CapitalsTest, ChangesLettersThatHaveACapitalOfOneUnit) {
  const struct {
    std::wstring text;
    std::wstring capitals;
  } rows[] = {
      {L"", L""},
      {L"mp3 aac+", L"MP3 AAC+"},
      {L"@[`{", L"@[`{"},
      {L"éàöþÿ÷", L"ÉÀÖÞŸ÷"},
      {L"ĀāĂăžſ", L"ĀĀĂĂŽſ"},
      {L"λόγος", L"ΛΌΓΟς"},
      {L"радиоё", L"РАДИОЁ"},
      {L"ｍｐ３", L"ＭＰ３"},
      {L"straße", L"STRAßE"},
      {L"深夜ラジオ", L"深夜ラジオ"},
      {{L'a', L'\0', L'b'}, {L'A', L'\0', L'B'}},
  };
  for (const auto& row : rows) EXPECT_EQ(Capitals(row.text), row.capitals);
}

// So comparing ASCII letters is enough where a page's markers are compared in small letters.
TEST(PlatformLetterCaseTest, OnlyAsciiLettersBecomeSmallAsciiLetters) {
  for (unsigned unit = 0x80; unit <= 0xFFFF; ++unit) {
    const auto large = static_cast<wchar_t>(unit);
    wchar_t lowered = 0;
    ASSERT_EQ(LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_LOWERCASE, &large, 1, &lowered, 1), 1);
    ASSERT_GE(lowered, 0x80) << unit;
  }
}

TEST(SystemErrorTextTest, HasTheSystemsWordsWithoutALineBreak) {
  const std::wstring missing = SystemErrorText(ERROR_FILE_NOT_FOUND, L"");
  EXPECT_GT(missing.size(), 3U);
  EXPECT_EQ(missing.find_first_of(L"\r\n"), std::wstring::npos);
  EXPECT_NE(missing, SystemErrorText(ERROR_ACCESS_DENIED, L""));
  const std::wstring format = SystemErrorText(ERROR_BAD_EXE_FORMAT, L"C:\\文件.txt");
  EXPECT_NE(format.find(L"C:\\文件.txt"), std::wstring::npos);
  EXPECT_NE(format, missing);
  EXPECT_EQ(SystemErrorText(0x2000'0000, L""), L"");
}

}  // namespace
}  // namespace tellurvane

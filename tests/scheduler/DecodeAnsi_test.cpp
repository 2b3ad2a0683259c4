#include "scheduler/DecodeAnsi.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

bool IsBig5() { return GetACP() == 950; }

TEST(DecodeAnsiTest, ReadsTheUsersCodePage) {
  const struct {
    std::string_view bytes;
    const wchar_t* big5;
    const wchar_t* western;
  } rows[] = {
      {"", L"", L""},
      {"plain", L"plain", L"plain"},
      {"\xAD\xB5\xBC\xD6", L"音樂", L"\x00AD\x00B5\x00BC\x00D6"},
      // The second byte of each is one that ASCII uses as well.
      {"\xB3\x5C\xA5\x5C\xBB\x5C", L"許功蓋", L"\x00B3\\\x00A5\\\x00BB\\"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(DecodeAnsi(row.bytes), DecodedText(IsBig5() ? row.big5 : row.western));
  }
}

TEST(DecodeAnsiTest, ReadsUtf8WhereItIsNoTextOfTheCodePage) {
  // Every byte is a letter of the western code page: there the bytes could be both.
  EXPECT_EQ(DecodeAnsi("\xE9\x9F\xB3"),
            IsBig5() ? DecodedText(L"音") : DecodedText(L"\x00E9\x0178\x00B3", true));
  // The first two bytes are Big5 too; the rest decides for all.
  EXPECT_EQ(
      DecodeAnsi("\xC3\xA9|\xE9\x9F\xB3"),
      IsBig5() ? DecodedText(L"\x00E9|音") : DecodedText(L"\x00C3\x00A9|\x00E9\x0178\x00B3", true));
}

TEST(DecodeAnsiTest, TakesWhatCouldBeBothForTheCodePageAndTellsTheDoubt) {
  EXPECT_EQ(DecodeAnsi("\xC3\xA9"), DecodedText(IsBig5() ? L"矇" : L"\x00C3\x00A9", true));
  // 測試 in UTF-8.
  EXPECT_EQ(DecodeAnsi("\xE6\xB8\xAC\xE8\xA9\xA6"),
            DecodedText(IsBig5() ? L"皜祈岫" : L"\x00E6\x00B8\x00AC\x00E8\x00A9\x00A6", true));
}

// Wine offers no such page as the user's own; the number stands in for it.
TEST(DecodeAnsiTest, WhereTheCodePageIsUtf8ItselfThereIsNoDoubt) {
  constexpr std::string_view kTest = "\xE6\xB8\xAC\xE8\xA9\xA6";  // 測試
  EXPECT_EQ(DecodeFromCodePage(kTest, CP_UTF8), DecodedText(L"測試"));
  EXPECT_EQ(DecodeFromCodePage(kTest, 1252).hasLoss, true);
  EXPECT_EQ(DecodeFromCodePage("plain", CP_UTF8), DecodedText(L"plain"));
  EXPECT_TRUE(DecodeFromCodePage("\xAD\xB5", CP_UTF8).hasLoss) << "no UTF-8";
}

TEST(DecodeAnsiTest, TheMarkLeavesNoDoubt) {
  EXPECT_EQ(DecodeAnsi("\xEF\xBB\xBFplain"), DecodedText(L"plain"));
  EXPECT_EQ(DecodeAnsi("\xEF\xBB\xBF\xC3\xA9"), DecodedText(L"\x00E9"));
  EXPECT_EQ(DecodeAnsi("\xEF\xBB\xBF\xE9\x9F\xB3"), DecodedText(L"音"));
}

TEST(DecodeAnsiTest, TellsTheLossOfWhatIsMarkedAsUtf8AndIsNone) {
  EXPECT_EQ(DecodeAnsi("\xEF\xBB\xBF\xAD\xB5"),
            DecodedText(IsBig5() ? L"音" : L"\x00AD\x00B5", true));
}

TEST(DecodeAnsiTest, TellsTheLossOfBytesThatAreNoText) {
  // Half a character of Big5; a letter like any other of the western code page.
  EXPECT_EQ(DecodeAnsi("a\xAD").hasLoss, IsBig5());
}

}  // namespace
}  // namespace tellurvane

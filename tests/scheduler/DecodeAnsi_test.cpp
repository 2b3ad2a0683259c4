#include "scheduler/DecodeAnsi.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

bool IsBig5() { return GetACP() == 950; }

TEST(DecodeAnsiTest, ReadsTheCodePageOrUtf8AndReportsTheDoubt) {
  if (!IsBig5() && GetACP() != 1252) GTEST_SKIP() << "for code page 950 or 1252";
  const struct {
    std::string_view bytes;
    DecodedText big5, western;
  } rows[] = {
      {"", {L""}, {L""}},
      {"plain", {L"plain"}, {L"plain"}},
      {"\xAD\xB5\xBC\xD6", {L"音樂"}, {L"\x00AD\x00B5\x00BC\x00D6"}},
      // The second byte of each is one that ASCII uses as well.
      {"\xB3\x5C\xA5\x5C\xBB\x5C", {L"許功蓋"}, {L"\x00B3\\\x00A5\\\x00BB\\"}},
      // UTF-8: no text of Big5, but every byte is a letter of the western code page.
      {"\xE9\x9F\xB3", {L"音"}, {L"\x00E9\x0178\x00B3", true}},
      // The first two bytes are Big5 too; the rest decides for all.
      {"\xC3\xA9|\xE9\x9F\xB3", {L"\x00E9|音"}, {L"\x00C3\x00A9|\x00E9\x0178\x00B3", true}},
      // Both UTF-8 and the code page.
      {"\xC3\xA9", {L"矇", true}, {L"\x00C3\x00A9", true}},
      {"\xE6\xB8\xAC\xE8\xA9\xA6",
       {L"皜祈岫", true},
       {L"\x00E6\x00B8\x00AC\x00E8\x00A9\x00A6", true}},
      // The mark of UTF-8.
      {"\xEF\xBB\xBFplain", {L"plain"}, {L"plain"}},
      {"\xEF\xBB\xBF\xC3\xA9", {L"\x00E9"}, {L"\x00E9"}},
      {"\xEF\xBB\xBF\xAD\xB5", {L"音", true}, {L"\x00AD\x00B5", true}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(DecodeAnsi(row.bytes), IsBig5() ? row.big5 : row.western) << &row - rows;
  }
  // Half a character of Big5; a letter like any other of the western code page.
  EXPECT_EQ(DecodeAnsi("a\xAD").hasLoss, IsBig5());
}

// Under Wine no user has this code page, so the test names it.
TEST(DecodeAnsiTest, WhereTheCodePageIsUtf8ItselfThereIsNoDoubt) {
  constexpr std::string_view kTest = "\xE6\xB8\xAC\xE8\xA9\xA6";  // 測試
  EXPECT_EQ(DecodeFromCodePage(kTest, CP_UTF8), DecodedText(L"測試"));
  EXPECT_EQ(DecodeFromCodePage(kTest, 1252).hasLoss, true);
  EXPECT_EQ(DecodeFromCodePage("plain", CP_UTF8), DecodedText(L"plain"));
  EXPECT_TRUE(DecodeFromCodePage("\xAD\xB5", CP_UTF8).hasLoss) << "no UTF-8";
}

}  // namespace
}  // namespace tellurvane

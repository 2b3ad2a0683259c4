#include "radio/PercentEncoding.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/radio/BrowserRules.h"

namespace tellurvane {
namespace {

TEST(PercentEncodingTest, EncodesTheBytesOfUtf8) {
  const struct {
    std::wstring text;
    const wchar_t* encoded;
  } rows[] = {
      {L"", L""},
      {L"AZaz09-._~", L"AZaz09-._~"},
      {L" &=?#/+%\"'\\", L"%20%26%3D%3F%23%2F%2B%25%22%27%5C"},
      {L"R&B  live?", L"R%26B%20%20live%3F"},
      {std::wstring(L"\0\t\x7F", 3), L"%00%09%7F"},
      {L"\x80\x7FF", L"%C2%80%DF%BF"},
      {L"\x800\xFFFF", L"%E0%A0%80%EF%BF%BF"},
      {L"台北 é", L"%E5%8F%B0%E5%8C%97%20%C3%A9"},
      {L"\xD83D\xDE00", L"%F0%9F%98%80"},
      {L"\xD800\xDC00\xDBFF\xDFFF", L"%F0%90%80%80%F4%8F%BF%BF"},
      {L"a\xD83D", L"a%EF%BF%BD"},
      {L"\xDE00z", L"%EF%BF%BDz"},
      {L"\xD83D\xD83D\xDE00", L"%EF%BF%BD%F0%9F%98%80"},
      {L"\xD83D台", L"%EF%BF%BD%E5%8F%B0"},
  };
  for (const auto& row : rows) EXPECT_EQ(PercentEncoded(row.text), row.encoded);
}

TEST(PercentEncodingTest, LosesNothingOfRandomTexts) {
  std::mt19937 random{20'110'214};
  const auto below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
  for (int i = 0; i < 2'000; ++i) {
    std::wstring text;
    for (unsigned size = below(12); size > 0; --size) {
      const unsigned base[] = {0, 0x80, 0x4E00, 0xD800, 0xDC00};
      text += static_cast<wchar_t>(base[below(5)] + below(0x400));
    }
    ASSERT_EQ(EncodingFault(text), "") << testing::PrintToString(text);
  }
}

}  // namespace
}  // namespace tellurvane

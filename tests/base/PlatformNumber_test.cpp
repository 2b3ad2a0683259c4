// Compares with the platform's conversions in the user's locale.
#include <windows.h>

#include <gtest/gtest.h>
#include <oleauto.h>

#include <optional>
#include <string>

#include "base/Number.h"

namespace tellurvane {
namespace {

std::optional<std::int32_t> PlatformInteger(std::wstring text) {
  LONG value = 0;
  const HRESULT outcome = VarI4FromStr(text.data(), LOCALE_USER_DEFAULT, 0, &value);
  return SUCCEEDED(outcome) ? std::optional<std::int32_t>(value) : std::nullopt;
}

std::optional<bool> PlatformBoolean(std::wstring text) {
  VARIANT_BOOL value = VARIANT_FALSE;
  const HRESULT outcome = VarBoolFromStr(text.data(), LOCALE_USER_DEFAULT, 0, &value);
  return SUCCEEDED(outcome) ? std::optional<bool>(value != VARIANT_FALSE) : std::nullopt;
}

TEST(PlatformNumberTest, IntegersAreReadAsThePlatformReadsThem) {
  for (const wchar_t* text :
       {L"",       L" ",          L"abc",         L"0",           L"1",     L"50",   L" 12 ",
        L"+7",     L"-1",         L"--1",         L"2.5",         L"3.5",   L"-2.5", L"-3.5",
        L"0.5",    L"1.5",        L"2.4999",      L"1e3",         L"1E3",   L"1e-3", L"1e400",
        L"&H",     L"&Hg",        L"&",           L"&H 10",       L"1 2",   L"12a",  L"inf",
        L"nan",    L"0x10",       L"2147483647",  L"2147483648",  L"00012", L".5",   L"5.",
        L".",      L"-",          L"+",           L"e3",          L"1|0",   L"1;",   L"True",
        L"\xFF15", L"4294967295", L"-2147483648", L"-2147483649", L"1d3",   L"5%",   L"NT$5",
        L",1"}) {
    EXPECT_EQ(ParseInteger(text), PlatformInteger(text)) << '"' << text << '"';
  }
}

TEST(PlatformNumberTest, BooleansAreReadAsThePlatformReadsThem) {
  for (const wchar_t* text :
       {L"",    L" ",    L"abc",   L"0",    L"1",     L"-1",   L"2",   L"0.5",
        L"0.0", L"True", L"False", L"true", L"FALSE", L"TRUE", L"tru", L"truely",
        L"yes", L"no",   L"on",    L"是",   L"1 1",   L"1e3",  L" 1 ", L"4294967295"}) {
    EXPECT_EQ(ParseBoolean(text), PlatformBoolean(text)) << '"' << text << '"';
  }
}

}  // namespace
}  // namespace tellurvane

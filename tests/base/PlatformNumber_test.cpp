// Compares with the platform's conversions in the user's locale.
#include <windows.h>

#include <gtest/gtest.h>
#include <oleauto.h>

#include <initializer_list>
#include <optional>
#include <string>

#include "base/Number.h"
#include "tests/support/Wine.h"

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

void ExpectSameIntegers(std::initializer_list<const wchar_t*> texts) {
  for (const wchar_t* text : texts) {
    EXPECT_EQ(ParseInteger(text), PlatformInteger(text)) << '"' << text << '"';
  }
}

TEST(PlatformNumberTest, IntegersAreReadAsThePlatformReadsThem) {
  ExpectSameIntegers({L"",           L" ",          L"abc",         L"0",           L"1",
                      L"50",         L" 12 ",       L"+7",          L"-1",          L"--1",
                      L"2.5",        L"3.5",        L"-2.5",        L"-3.5",        L"0.5",
                      L"1.5",        L"2.4999",     L"1e3",         L"1E3",         L"1e-3",
                      L"1e400",      L"&H",         L"&Hg",         L"&",           L"&H 10",
                      L"1 2",        L"12a",        L"inf",         L"nan",         L"0x10",
                      L"2147483647", L"2147483648", L"00012",       L".5",          L"5.",
                      L".",          L"-",          L"+",           L"e3",          L"1;",
                      L"True",       L"4294967295", L"-2147483648", L"-2147483649", L"5%"});
}

TEST(PlatformNumberTest, OddIntegersAreReadAsWineReadsThem) {
  SKIP_UNLESS_WINE("Windows reads 1d3 and may read digits of other scripts and amounts of money");
  ExpectSameIntegers({L"1d3", L"\xFF15", L"NT$5", L",1", L"1|0"});
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

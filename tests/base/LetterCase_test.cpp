#include "base/LetterCase.h"

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

TEST(CapitalsTest, RaisesWhatHasACapitalOfOneUnit) {
  const struct {
    const wchar_t* text;
    const wchar_t* capitals;
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
  };
  for (const auto& row : rows) EXPECT_EQ(Capitals(row.text), row.capitals);
}

}  // namespace
}  // namespace tellurvane

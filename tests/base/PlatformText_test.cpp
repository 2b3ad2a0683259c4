#include "base/PlatformText.h"

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

}  // namespace
}  // namespace tellurvane

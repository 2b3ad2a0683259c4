#include "packaging/kit/Report.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tellurvane {
namespace {

const ProgramOutcome kGood = {.name = "base_tests", .results = {.passed = 40}, .seconds = 1.4};

TEST(ReportTest, HasCountsFactsAndEachTextUnderItsHeading) {
  const ProgramOutcome bad = {
      .name = "ui_tests",
      .results = {.passed = 200,
                  .failed = {{"FormTest.A", "a.cpp:1\r\nExpected: 1\n\nWhich is: 2"}},
                  .skipped = {{"TrayTest.B", "a.cpp:2\n只在 Wine 上"}}},
      .endedEarly = {{"FormTest.C", "120 秒沒有輸出"}, {"", "結束代碼 0xC0000005"}},
      .seconds = 61.6};
  EXPECT_EQ(ReportText("0.9.1", {"Windows：10.0.19045", "螢幕：一"}, {kGood, bad}),
            "\xEF\xBB\xBF"
            "Tellurvane 0.9.1 測試報告\r\n\r\n"
            "有失敗：通過 240，失敗 1，提早結束 2，略過 1\r\n\r\n"
            "電腦\r\n\r\nWindows：10.0.19045\r\n螢幕：一\r\n\r\n"
            "測試程式\r\n\r\n"
            "base_tests：通過 40，失敗 0，提早結束 0，略過 0（1 秒）\r\n"
            "ui_tests：通過 200，失敗 1，提早結束 2，略過 1（62 秒）\r\n\r\n"
            "提早結束（當機或逾時）\r\n\r\n"
            "ui_tests FormTest.C\r\n    120 秒沒有輸出\r\n"
            "ui_tests\r\n    結束代碼 0xC0000005\r\n\r\n"
            "失敗\r\n\r\n"
            "ui_tests FormTest.A\r\n    a.cpp:1\r\n    Expected: 1\r\n    Which is: 2\r\n\r\n"
            "略過\r\n\r\n"
            "ui_tests TrayTest.B\r\n    a.cpp:2\r\n    只在 Wine 上\r\n");
}

TEST(ReportTest, HasNoHeadingWithoutTexts) {
  const std::string text = ReportText("0.9.1", {}, {kGood});
  EXPECT_TRUE(text.ends_with("（1 秒）\r\n")) << text;
}

TEST(SummaryTest, IsGoodOnlyWithoutFailuresAndEarlyEnds) {
  const struct {
    std::vector<ProgramOutcome> outcomes;
    bool isGood;
    const char* summary;
  } rows[] = {
      {{kGood}, true, "沒有失敗：通過 40，失敗 0，提早結束 0，略過 0"},
      {{{.results = {.skipped = {{"A.a", "r"}}}}, kGood},
       true,
       "沒有失敗：通過 40，失敗 0，提早結束 0，略過 1"},
      {{kGood, {.results = {.failed = {{"A.a", "t"}}}}},
       false,
       "有失敗：通過 40，失敗 1，提早結束 0，略過 0"},
      {{{.endedEarly = {{"A.a", "t"}}}, kGood},
       false,
       "有失敗：通過 40，失敗 0，提早結束 1，略過 0"},
      {{}, false, "沒有測試程式"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Summary(row.outcomes), row.summary);
    EXPECT_EQ(IsGood(row.outcomes), row.isGood) << row.summary;
  }
}

}  // namespace
}  // namespace tellurvane

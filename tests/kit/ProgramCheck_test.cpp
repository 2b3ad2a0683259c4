#include "packaging/kit/ProgramCheck.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ui/Com.h"

namespace tellurvane {
namespace {

std::string Xml(int passed, int skipped = 0) {
  std::string xml = "<testsuites>";
  for (int i = 0; i < passed; ++i) xml += "<testcase name=\"p\" result=\"completed\" />";
  for (int i = 0; i < skipped; ++i) {
    xml += "<testcase classname=\"A\" name=\"s\" result=\"skipped\"></testcase>";
  }
  return xml + "</testsuites>";
}

std::string Began(const std::string& test) { return "[ RUN      ] " + test + "\n"; }

// Gives the runs in turn and keeps the filters.
class FakeProgram {
 public:
  explicit FakeProgram(std::vector<ProgramRun> runs) : runs_(std::move(runs)) {}

  ProgramOutcome Check() {
    return CheckProgram("ui_tests", [this](const std::string& filter) {
      filters.push_back(filter);
      EXPECT_LE(filters.size(), runs_.size());
      return runs_.at(std::min(filters.size(), runs_.size()) - 1);
    });
  }

  std::vector<std::string> filters;

 private:
  const ComApartment com_;
  std::vector<ProgramRun> runs_;
};

TEST(CheckProgramTest, OneRunIsEnoughForAProgramThatEnds) {
  FakeProgram program({{.xml = Xml(3, 1), .seconds = 2}});
  const ProgramOutcome outcome = program.Check();
  EXPECT_EQ(outcome.name, "ui_tests");
  EXPECT_EQ(outcome.results.passed, 3);
  EXPECT_EQ(outcome.results.skipped.size(), 1U);
  EXPECT_EQ(outcome.seconds, 2);
  EXPECT_TRUE(outcome.IsGood());
  EXPECT_EQ(program.filters, std::vector<std::string>{"*"});
}

TEST(CheckProgramTest, RunsAgainWithoutEachTestThatEndsIt) {
  FakeProgram program({{.fault = "code 5", .output = Began("A.a"), .seconds = 1},
                       {.fault = "too long", .output = Began("A.b"), .seconds = 2},
                       {.xml = "<testsuites><testcase", .output = Began("A.c"), .seconds = 3},
                       {.xml = Xml(7), .seconds = 4}});
  const ProgramOutcome outcome = program.Check();
  EXPECT_EQ(program.filters,
            (std::vector<std::string>{"*", "*-A.a", "*-A.a:A.b", "*-A.a:A.b:A.c"}));
  EXPECT_EQ(outcome.results.passed, 7);
  EXPECT_EQ(outcome.endedEarly, (std::vector<TestNote>{{"A.a", "code 5\n[ RUN      ] A.a"},
                                                       {"A.b", "too long\n[ RUN      ] A.b"},
                                                       {"A.c", "提早結束\n[ RUN      ] A.c"}}));
  EXPECT_EQ(outcome.seconds, 10);
  EXPECT_FALSE(outcome.IsGood());
}

TEST(CheckProgramTest, StopsAfterFiveRunsThatEndEarlyAndKeepsWhatTheyPrinted) {
  const std::string output = Began("A.f") + "text\n[  FAILED  ] A.f (1 ms)\n" + Began("A.a");
  FakeProgram program(std::vector<ProgramRun>(5, {.fault = "code 5", .output = output}));
  const ProgramOutcome outcome = program.Check();
  EXPECT_EQ(outcome.endedEarly.size(), 5U);
  EXPECT_EQ(outcome.results, (TestResults{.failed = {{"A.f", "\ntext\n"}}}));
}

TEST(CheckProgramTest, DoesNotRunAgainWhereNoTestIsToBlame) {
  const struct {
    const char* name;
    ProgramRun run;
    TestNote expected;
  } rows[] = {
      {"does not start", {.fault = "error 2"}, {"", "error 2\n"}},
      {"no result file", {.output = "text\n"}, {"", "沒有結果檔\ntext"}},
      {"no tests", {.xml = Xml(0)}, {"", "沒有執行任何測試"}},
      {"crashes at its end", {.fault = "code 5", .xml = Xml(2)}, {"", "code 5\n"}},
      {"crashes between tests",
       {.fault = "code 5", .output = Began("A.a") + "[       OK ] A.a (1 ms)\n"},
       {"", "code 5\n[ RUN      ] A.a\n[       OK ] A.a (1 ms)"}},
  };
  for (const auto& row : rows) {
    const ProgramOutcome outcome = FakeProgram({row.run}).Check();
    EXPECT_EQ(outcome.endedEarly, std::vector<TestNote>{row.expected}) << row.name;
    EXPECT_FALSE(outcome.IsGood()) << row.name;
  }
}

TEST(CheckProgramTest, KeepsTheResultsOfAProgramThatCrashesAtItsEnd) {
  FakeProgram program({{.fault = "code 5", .xml = Xml(2)}});
  EXPECT_EQ(program.Check().results.passed, 2);
}

TEST(CheckProgramTest, OnlySkippedTestsAreNoFailure) {
  EXPECT_TRUE(FakeProgram({{.xml = Xml(0, 2)}}).Check().IsGood());
}

TEST(CheckProgramTest, ReportsTheLastTwelveLinesOfTheOutput) {
  std::string output;
  for (int line = 1; line <= 30; ++line) output += std::to_string(line) + "\r\n";
  const ProgramOutcome outcome = FakeProgram({{.fault = "code 5", .output = output}}).Check();
  const std::string& text = outcome.endedEarly.at(0).text;
  EXPECT_TRUE(text.starts_with("code 5\n\n19\r\n20\r\n")) << text;
  EXPECT_TRUE(text.ends_with("\r\n30")) << text;
}

}  // namespace
}  // namespace tellurvane

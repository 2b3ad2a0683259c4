#include "packaging/kit/TestResults.h"

#include <gtest/gtest.h>

#include <string>

#include "ui/Com.h"

namespace tellurvane {
namespace {

constexpr const char* kBegin =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<testsuites tests=\"2\" failures=\"0\" disabled=\"0\" errors=\"0\" name=\"AllTests\">\n"
    "  <testsuite name=\"FormTest\" tests=\"2\" failures=\"0\" skipped=\"0\">\n";
constexpr const char* kEnd = "  </testsuite>\n</testsuites>\n";

// The attributes in the order of GoogleTest.
std::string Case(const std::string& name, const std::string& result, const std::string& rest) {
  return "    <testcase name=\"" + name +
         "\" file=\"./tests/ui/Form_test.cpp\" line=\"7\" status=\"run\" result=\"" + result +
         "\" time=\"0.01\" timestamp=\"2026-01-01T00:00:00.000\" classname=\"FormTest\"" + rest;
}

std::string Passed(const std::string& name) { return Case(name, "completed", " />\n"); }

std::string With(const std::string& name, const std::string& result, const std::string& children) {
  return Case(name, result, ">\n" + children + "    </testcase>\n");
}

class ReadTestXmlTest : public testing::Test {
  const ComApartment com_;
};

TEST_F(ReadTestXmlTest, CountsTestsAndKeepsTheTextsOfTheOthers) {
  const std::string failure = "<failure message=\"a.cpp:1&#x0A;Expected: &lt;1&gt;\" type=\"\">";
  const struct {
    const char* name;
    std::string tests;
    TestResults expected;
  } rows[] = {
      {"none", "", {}},
      {"passed", Passed("A") + Passed("B"), {.passed = 2}},
      {"not selected", Case("A", "suppressed", " />\n") + Passed("B"), {.passed = 1}},
      {"a property",
       With("A", "completed",
            "      <properties>\n        <property name=\"n\" value=\"v\"/>\n"
            "      </properties>\n"),
       {.passed = 1}},
      {"failed",
       With("A", "completed", failure + "<![CDATA[a.cpp:1]]></failure>\n") + Passed("B"),
       {.passed = 1, .failed = {{"FormTest.A", "a.cpp:1\nExpected: <1>"}}}},
      {"failed twice",
       With("A", "completed",
            failure + "</failure>\n<failure message=\"b\" type=\"\"></failure>\n"),
       {.failed = {{"FormTest.A", "a.cpp:1\nExpected: <1>\nb"}}}},
      {"failed, then skipped the rest",
       With("A", "completed", failure + "</failure>\n<skipped message=\"s\"></skipped>\n"),
       {.failed = {{"FormTest.A", "a.cpp:1\nExpected: <1>"}}}},
      {"failed outside of a test",
       "<testcase name=\"\" status=\"run\" result=\"completed\" classname=\"\">\n" + failure +
           "</failure>\n</testcase>\n",
       {.failed = {{".", "a.cpp:1\nExpected: <1>"}}}},
      {"skipped",
       With("A", "skipped",
            "<skipped message=\"a.cpp:2&#x0A;needs 上 &amp; 下\">"
            "<![CDATA[x]]></skipped>\n"),
       {.skipped = {{"FormTest.A", "a.cpp:2\nneeds 上 & 下"}}}},
      {"a text like tags",
       With("A", "completed",
            failure + "<![CDATA[</testcase></testsuites><testcase result=\"completed\" />"
                      "]]>]]&gt;<![CDATA[ > ]]></failure>\n") +
           Passed("B"),
       {.passed = 1, .failed = {{"FormTest.A", "a.cpp:1\nExpected: <1>"}}}},
      {"a value like an attribute",
       Case("A", "completed",
            " value_param=\"result=&quot;skipped&quot; &apos;&#xFF;\""
            " />\n"),
       {.passed = 1}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ReadTestXml(kBegin + row.tests + kEnd), row.expected) << row.name;
  }
}

TEST_F(ReadTestXmlTest, KeepsOddTexts) {
  const struct {
    const char* message;
    const char* expected;
  } rows[] = {{"&quot;&apos;&amp;amp;", "\"'&amp;"},
              {"&#x85;", "\xC2\x85"},
              {" a&#x0A;  b ", " a\n  b "},
              {"\xA4\xA4", "\xEF\xBF\xBD\xEF\xBF\xBD"}};
  for (const auto& [message, expected] : rows) {
    const std::string skipped = std::string("<skipped message=\"") + message + "\"></skipped>\n";
    EXPECT_EQ(ReadTestXml(kBegin + With("A", "skipped", skipped) + kEnd),
              (TestResults{.skipped = {{"FormTest.A", expected}}}))
        << message;
  }
}

TEST_F(ReadTestXmlTest, AFileThatIsCutOffAnywhereIsNoResult) {
  const std::string whole =
      kBegin + Passed("A") +
      With("B", "completed", "<failure message=\"m\" type=\"\"><![CDATA[t]]></failure>\n") + kEnd;
  ASSERT_TRUE(ReadTestXml(whole));
  // The last character is a line break.
  for (size_t length = 0; length + 1 < whole.size(); ++length) {
    EXPECT_EQ(ReadTestXml(whole.substr(0, length)), std::nullopt) << length;
  }
}

TEST(PrintedResultsTest, AreThoseOfTheTestsThatEnded) {
  EXPECT_EQ(PrintedResults("[ RUN      ] A.a\r\n[       OK ] A.a (1 ms)\r\n"
                           "[ RUN      ] A.b/0\na.cpp:1\nx[  FAILED  ] A.b/0, where 1 (1 ms)\n"
                           "[ RUN      ] A.c\na.cpp:2\n[  SKIPPED ] A.c (1 ms)\n"
                           "[ RUN      ] A.d\n[       OK ] A.d (1 ms)\n[  FAILED  ] A.b/0\n"
                           "[ RUN      ] A.e\na.cpp:3\n"),
            (TestResults{.passed = 2,
                         .failed = {{"A.b/0", "\na.cpp:1\nx"}},
                         .skipped = {{"A.c", "\na.cpp:2\n"}}}));
}

TEST(UnfinishedTestTest, IsTheLastOneThatBeganIfItDidNotEnd) {
  const struct {
    const char* output;
    const char* expected;
  } rows[] = {
      {"", ""},
      {"[==========] Running 2 tests\r\n", ""},
      {"[ RUN      ] A.a\r\n", "A.a"},
      {"[ RUN      ] A.a", "A.a"},
      {"[ RUN      ] A.a\r\nsome output\r\n", "A.a"},
      {"[ RUN      ] A.a\r\n[       OK ] A.a (1 ms)\r\n[ RUN      ] A.b\r\n", "A.b"},
      {"[ RUN      ] A.a\n[       OK ] A.a (1 ms)\n", ""},
      {"[ RUN      ] A.a/0\nx[  FAILED  ] A.a/0, where GetParam() = 1 (1 ms)\n", ""},
      {"[ RUN      ] A.a\n[  SKIPPED ] A.a (1 ms)\n", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(UnfinishedTest(row.output), row.expected) << row.output;
}

}  // namespace
}  // namespace tellurvane

// What a test program of GoogleTest wrote about its tests. Texts are UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tellurvane {

// A test, "Suite.Name", with the text of its failure or the reason of its skip.
struct TestNote {
  std::string test;
  std::string text;

  bool operator==(const TestNote&) const = default;
};

struct TestResults {
  int passed = 0;
  std::vector<TestNote> failed = {};
  std::vector<TestNote> skipped = {};

  bool operator==(const TestResults&) const = default;
};

// From the file of --gtest_output=xml. Empty if the text is not complete: the program ended early.
// Needs a thread with COM. Throws if the platform's parser cannot be used.
std::optional<TestResults> ReadTestXml(const std::string& xml);

// From the printed output: the tests that ended.
TestResults PrintedResults(std::string_view output);

// From the printed output: the test that began last and did not end. Empty without one.
std::string UnfinishedTest(std::string_view output);

}  // namespace tellurvane

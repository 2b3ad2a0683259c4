// Runs one test program until all of its tests have had their turn.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "packaging/kit/TestResults.h"

namespace tellurvane {

// How one run of a program ended.
struct ProgramRun {
  std::string fault = {};   // empty if it ended by itself, with code 0 or 1
  std::string xml = {};     // its result file; empty without one
  std::string output = {};  // all that it printed
  double seconds = 0;
};

// Gets the value of --gtest_filter.
using RunProgram = std::function<ProgramRun(const std::string& filter)>;

struct ProgramOutcome {
  std::string name = {};
  TestResults results = {};
  // In which test, and how. Without a test if it was outside of all tests.
  std::vector<TestNote> endedEarly = {};
  double seconds = 0;

  bool IsGood() const { return results.failed.empty() && endedEarly.empty(); }
};

// A test that hangs or crashes ends its program. The program then runs again without this test, up
// to five times.
ProgramOutcome CheckProgram(const std::string& name, const RunProgram& run);

}  // namespace tellurvane

// A scenario of the program, done over and over, with another call of the platform refused each
// time.
#pragma once

#include <functional>
#include <set>
#include <string>

namespace tellurvane {

// From its beginning to its end: what it makes it takes away again.
struct Scenario {
  const char* name = nullptr;
  std::function<void()> act;
  // The functions that fail. Where none is named, all that the scenario calls do.
  std::set<std::string> refused = {};
  // Before each time, with nothing refused.
  std::function<void()> prepare = [] {};
  // What is wrong with the files afterwards; empty when they are whole.
  std::function<std::string()> fault = [] { return ""; };
};

// Each of the functions, which are of AllFailingCalls, fails at its first call, in the middle, at
// the last one, at more in between where it may be fatal, and then at all of them. After that
// allocations fail, one each time. Each time the scenario has to come to its end: in time, without
// an exception other than that of a fatal error or of no memory where one is meant to be, without a
// leak, and with its files whole.
void FailEachCall(const Scenario& scenario);

}  // namespace tellurvane

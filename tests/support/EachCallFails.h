// Runs a scenario again and again, each time with another failing call of the platform.
#pragma once

#include <functional>
#include <set>
#include <string>

namespace tellurvane {

// A use of the program from begin to end. It frees everything that it creates.
struct Scenario {
  const char* name = nullptr;
  std::function<void()> act;
  // The functions that the scenario must call. If empty: those that it happens to call.
  std::set<std::string> calls = {};
  // Runs before each run; no call fails in it.
  std::function<void()> prepare = [] {};
  // Describes damage to the files after a run; empty if there is none.
  std::function<std::string()> fault = [] { return ""; };
};

// Lets each call of the scenario fail at its first, its middle and its last use, and at all of
// them. Each run must end in time, without an exception except an expected fatal error, without a
// leak and with undamaged files.
void FailEachCall(const Scenario& scenario);

}  // namespace tellurvane

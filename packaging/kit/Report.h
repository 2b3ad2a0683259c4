// The report of all test programs, for people.
#pragma once

#include <string>
#include <vector>

#include "packaging/kit/ProgramCheck.h"

namespace tellurvane {

// Where the programs ran. Each line is one fact.
using MachineFacts = std::vector<std::string>;

bool IsGood(const std::vector<ProgramOutcome>& outcomes);

// One line.
std::string Summary(const std::vector<ProgramOutcome>& outcomes);

// UTF-8 with its mark and CR LF, as old editors need them.
std::string ReportText(const std::string& version, const MachineFacts& facts,
                       const std::vector<ProgramOutcome>& outcomes);

}  // namespace tellurvane

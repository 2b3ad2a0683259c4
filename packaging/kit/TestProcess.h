// One run of a test program.
#pragma once

#include <chrono>
#include <filesystem>

#include "packaging/kit/ProgramCheck.h"

namespace tellurvane {

// Runs in the folder, which holds its temporary files too and is empty before. A run that
// prints nothing for longer than the limit is ended, with all processes that it started.
ProgramRun RunTestProcess(const std::filesystem::path& program, const std::string& filter,
                          const std::filesystem::path& folder, std::chrono::seconds limit);

}  // namespace tellurvane

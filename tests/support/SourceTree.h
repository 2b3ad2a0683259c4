// Files of the source tree that tests read: icons, and the corpora of the fuzz targets.
#pragma once

#include <filesystem>
#include <string>

namespace tellurvane {

// By its path in the source tree. The kit has the same folders beside its test programs.
std::filesystem::path SourceFile(const std::string& path);

}  // namespace tellurvane

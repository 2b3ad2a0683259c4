// The measure for loading and saving: what the machine takes for the bytes alone.
#pragma once

#include <string>

#include "scheduler/FileOperations.h"

namespace tellurvane {

// Reads the file into a buffer and makes wide text of it, once. Returns the length of the text.
size_t BareRead(FileOperations& files, const std::wstring& path);

}  // namespace tellurvane

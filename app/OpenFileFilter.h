// What the open-file dialog offers.
#pragma once

#include <string>

namespace tellurvane {

// Descriptions and patterns by turns, each ended by a NUL, and one NUL more at the end.
std::wstring OpenFileFilter(bool wantExecutables);

// The path up to its last backslash, that included; empty without one.
std::wstring FolderOf(const std::wstring& path);

}  // namespace tellurvane

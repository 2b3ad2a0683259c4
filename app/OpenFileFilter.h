// The filter of the open-file dialog.
#pragma once

#include <string>

namespace tellurvane {

// Descriptions and patterns alternate, each ends with a NUL, and one more NUL is at the end.
std::wstring OpenFileFilter(bool wantExecutables);

// The path up to and including its last backslash; empty without one.
std::wstring FolderOf(const std::wstring& path);

}  // namespace tellurvane

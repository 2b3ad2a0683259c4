// Choosing a file to play or to start.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace tellurvane {

// Shows the system's dialog and returns the chosen full path, or nothing if it was cancelled.
// Begins in `filesPath`, and sets it to the chosen file's folder with its trailing backslash. The
// file need not exist.
std::optional<std::wstring> BrowseForSource(HWND owner, bool wantExecutables,
                                            std::wstring& filesPath);

}  // namespace tellurvane

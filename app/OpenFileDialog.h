// Choosing a file to play or to start.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace tellurvane {

// Shows the system's dialog and returns the full path that was chosen; nothing when it was
// cancelled. Begins in `filesPath`, which then becomes the chosen file's folder with its trailing
// backslash. The file need not exist.
std::optional<std::wstring> BrowseForSource(HWND owner, bool wantExecutables,
                                            std::wstring& filesPath);

}  // namespace tellurvane

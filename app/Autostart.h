// Starting with Windows: a value in one of the registry's two Run keys.
#pragma once

#include <string>

namespace tellurvane {

// Writes the value "RunTellurvane" under
// HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Run, in the ANSI code page and
// without a terminating NUL, and deletes the user's value. An ordinary user may not write there:
// then it is written under HKEY_CURRENT_USER, in quotes and in Unicode. False if both fail.
bool WriteRunValue(const std::wstring& executable);
// Deletes both values. A missing one counts as deleted. False if one may be left.
bool DeleteRunValue();

// The full path to write: the program's folder, its name and ".exe".
std::wstring ExecutablePath();

}  // namespace tellurvane

// Starting with Windows: a value in one of the registry's two Run keys.
#pragma once

#include <string>

namespace tellurvane {

// Writes the value "RunTellurvane" under
// HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Run: text in the ANSI code page,
// handed over without a terminating NUL; what the code page does not have is lost. An ordinary user
// is denied that key. Then the same key under HKEY_CURRENT_USER gets it: the path in quotes, in
// Unicode. Where the machine's key takes it, the user's value is deleted. False when neither key
// takes it.
bool WriteRunValue(const std::wstring& executable);
// Deletes both values; one that is not there counts as deleted. False when one of them may be left.
bool DeleteRunValue();

// The full path that is written: the program's folder, its name and ".exe".
std::wstring ExecutablePath();

}  // namespace tellurvane

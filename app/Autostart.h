// Starting with Windows: one value in the registry's Run key.
#pragma once

#include <string>

namespace tellurvane {

// The value "RunTellurvane" under HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Run:
// text in the ANSI code page, handed over without a terminating NUL; what the code page does not
// have is lost. Both answer whether it was done; without the right to write there it is not.
bool WriteRunValue(const std::wstring& executable);
// A value that is not there counts as done.
bool DeleteRunValue();

// The full path that is written: the program's folder, its name and ".exe".
std::wstring ExecutablePath();

}  // namespace tellurvane

// Starts command lines as child processes and forgets them.
#pragma once

#include <windows.h>

#include <string>

namespace tellurvane {

// Whether the platform refuses a collection count and a time-out for this pipe end.
using PipeTest = bool (*)(HANDLE readEnd);
bool PipeRefusesCollection(HANDLE readEnd);

// Starts the command line as it stands, without a shell: the platform looks the program up in the
// usual places, documents are not opened. The child's output goes to a pipe that nobody reads; its
// standard input is empty.
// False when nothing was started. Does not wait. The launch goes on only where the pipe test
// holds; only tests name another than the platform's own.
bool RunCommand(const std::wstring& commandLine, PipeTest pipeTest = PipeRefusesCollection);

}  // namespace tellurvane

// Starts command lines as child processes and does not wait for them.
#pragma once

#include <windows.h>

#include <string>

namespace tellurvane {

// True if the platform rejects a collection count and a time-out for this end of a pipe.
using PipeTest = bool (*)(HANDLE readEnd);
bool PipeRefusesCollection(HANDLE readEnd);

// Starts the command line without a shell: the platform searches for the program, and documents are
// not opened. The child's output goes to a pipe that nobody reads, its input is empty. False if
// nothing was started; `creationError` is then the system's error, if the creation of the process
// has failed. The launch goes on only if the pipe test is true; tests pass another test.
bool RunCommand(const std::wstring& commandLine, PipeTest pipeTest = PipeRefusesCollection,
                DWORD* creationError = nullptr);

}  // namespace tellurvane

// The message loops of the program.
#pragma once

#include <windows.h>

#include <functional>

namespace tellurvane {

// Until the quit message. Returns its exit code.
int RunMessageLoop();

// While the condition holds and there is no quit message; that one is left for the outer loop.
void RunMessageLoopWhile(const std::function<bool()>& condition);

// Handles the waiting messages and returns.
void ProcessPendingMessages();

// The loops handle the Tab, Enter and Esc keys of these top-level windows.
void AddKeyboardForm(HWND form);
void RemoveKeyboardForm(HWND form);
bool IsKeyboardForm(HWND window);

}  // namespace tellurvane

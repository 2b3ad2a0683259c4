// How messages are fetched. Every loop of the program is one of these.
#pragma once

#include <windows.h>

#include <functional>

namespace tellurvane {

// Until the quit message. Returns its exit code.
int RunMessageLoop();

// While the condition holds and no quit message has come; that one is left for the outer loop.
void RunMessageLoopWhile(const std::function<bool()>& condition);

// Handles what is waiting, once, and returns.
void ProcessPendingMessages();

// Names a top-level window whose Tab, Enter and Esc keys the loop is to handle, or forgets it.
void AddKeyboardForm(HWND form);
void RemoveKeyboardForm(HWND form);
bool IsKeyboardForm(HWND window);

}  // namespace tellurvane

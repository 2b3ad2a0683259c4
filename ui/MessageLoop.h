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

// True when the key is handled.
using KeyHandler = std::function<bool(const MSG& keyDown)>;

// The loops handle the Tab, Enter and Esc keys of these top-level windows; Enter and Esc act once
// while they are held down. Before that, and before the control with the focus, `keyDown` gets each
// key that is pressed in the form. The repeats of a key are lost if it was last pressed in another
// top-level window, or if no loop has seen a press since the start or since ForgetPressedKey.
// Presses in menus are not seen.
void AddKeyboardForm(HWND form, KeyHandler keyDown);
void RemoveKeyboardForm(HWND form);
bool IsKeyboardForm(HWND window);

// To be called when a form loses the activation: message boxes have loops of their own.
void ForgetPressedKey();

}  // namespace tellurvane

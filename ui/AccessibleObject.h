// Describes a window to screen readers.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace tellurvane {

// Called on the window's thread. The system answers for members that are left empty.
struct AccessibleCallbacks {
  long role = 0;  // a ROLE_SYSTEM_ number
  std::function<std::wstring()> name = {};
  std::function<std::wstring()> value = {};
  // False for a text that is no value of the window.
  std::function<bool(const std::wstring& text)> setValue = {};
  std::wstring actionName = {};  // of the default action
  std::function<void()> act = {};
  // The number of the part that has the keyboard; 0 if none has it.
  std::function<long()> focusedChild = {};
  bool hasNoChildren = false;  // its child windows are only parts of its picture
};

// Gives the window an accessible object. Replaces a former one. Nothing is loaded before a screen
// reader asks. Screen readers may keep the object longer than the window; it then answers nothing.
void MakeAccessible(HWND window, AccessibleCallbacks callbacks);
// Call it before the callbacks' owner ends, if the window lives longer.
void StopAccessible(HWND window);

// Names a field after the label beside it. The system itself names a field after the label before
// it only if both have the same parent.
void NameByLabel(HWND field, HWND label);
void NameByText(HWND window, const std::wstring& name);

}  // namespace tellurvane

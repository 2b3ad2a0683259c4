#include "ui/MessageLoop.h"

#include <map>
#include <utility>

#include "ui/Boundary.h"
#include "ui/DrawnWindow.h"

namespace tellurvane {
namespace {

std::map<HWND, KeyHandler>& KeyboardForms() {
  static std::map<HWND, KeyHandler> forms;
  return forms;
}

bool IsKeyDown(const MSG& message) {
  return message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
}

// Outside of a window procedure, so it needs a boundary of its own.
bool IsOwnKeyOf(HWND form, const MSG& message) {
  if (!IsKeyDown(message)) return false;
  // Copied: the handler may close the form.
  const KeyHandler handler = KeyboardForms().at(form);
  return GuardBoundary([&] { return handler(message); });
}

// The Enter key that opened the form may still be down, and would leave it again. A text box may
// want each of them.
bool IsHeldFormKey(MSG& message) {
  const bool isFormKey = message.wParam == VK_RETURN || message.wParam == VK_ESCAPE;
  if (message.message != WM_KEYDOWN || !isFormKey || !IsRepeatedKey(message.lParam)) return false;
  const LRESULT code =
      SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
  return (code & DLGC_WANTMESSAGE) == 0;
}

// Its place on the keyboard: an input method that takes a held key over gives it another code.
WPARAM KeyOf(const MSG& message) {
  const WPARAM place = HIWORD(message.lParam) & (KF_EXTENDED | 0xFF);
  return place != 0 ? place : message.wParam;
}

struct KeyPress {
  WPARAM key = 0;
  HWND root = nullptr;
};

// The last press that a loop saw. Without a window if nobody knows where the last key was pressed.
KeyPress& LastPress() {
  static KeyPress press;
  return press;
}

// A key belongs to the window in which it was pressed. A Space that opened a form and is still down
// would overwrite its selected text. VK_PACKET is a character without a key.
bool IsHeldFromAnotherWindow(HWND root, const MSG& message) {
  if (!IsKeyDown(message) || message.wParam == VK_PACKET) return false;
  KeyPress& last = LastPress();
  if (IsRepeatedKey(message.lParam)) {
    return root != last.root && (last.root == nullptr || KeyOf(message) == last.key);
  }
  last = {.key = KeyOf(message), .root = root};
  return false;
}

void Dispatch(MSG& message) {
  const HWND root = message.hwnd == nullptr ? nullptr : GetAncestor(message.hwnd, GA_ROOT);
  const bool isHeldFromAnother = IsHeldFromAnotherWindow(root, message);
  if (root != nullptr && IsKeyboardForm(root) &&
      (isHeldFromAnother || IsOwnKeyOf(root, message) || IsHeldFormKey(message) ||
       IsDialogMessageW(root, &message))) {
    return;
  }
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

}  // namespace

int RunMessageLoop() {
  MSG message = {};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) Dispatch(message);
  return static_cast<int>(message.wParam);
}

void RunMessageLoopWhile(const std::function<bool()>& condition) {
  MSG message = {};
  while (condition()) {
    if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    Dispatch(message);
  }
}

void ProcessPendingMessages() {
  MSG message = {};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    Dispatch(message);
  }
}

void AddKeyboardForm(HWND form, KeyHandler keyDown) {
  KeyboardForms().insert_or_assign(form, std::move(keyDown));
}

void RemoveKeyboardForm(HWND form) { KeyboardForms().erase(form); }

void ForgetPressedKey() { LastPress() = {}; }

bool IsKeyboardForm(HWND window) { return KeyboardForms().contains(window); }

}  // namespace tellurvane

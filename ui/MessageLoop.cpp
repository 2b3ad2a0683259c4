#include "ui/MessageLoop.h"

#include <set>

namespace tellurvane {
namespace {

std::set<HWND>& KeyboardForms() {
  static std::set<HWND> forms;
  return forms;
}

void Dispatch(MSG& message) {
  const HWND root = message.hwnd == nullptr ? nullptr : GetAncestor(message.hwnd, GA_ROOT);
  if (root != nullptr && IsKeyboardForm(root) && IsDialogMessageW(root, &message)) {
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

void AddKeyboardForm(HWND form) { KeyboardForms().insert(form); }

void RemoveKeyboardForm(HWND form) { KeyboardForms().erase(form); }

bool IsKeyboardForm(HWND window) { return KeyboardForms().contains(window); }

}  // namespace tellurvane

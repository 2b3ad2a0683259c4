// A window, and owners of subclassed windows, that record their calls in one list.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "ui/GXISubclass.h"
#include "ui/GXMSubclass.h"

namespace tellurvane {

using CallLog = std::vector<std::string>;

// Only the test sends these.
inline constexpr UINT kPing = WM_APP + 1;
inline constexpr UINT kOther = WM_APP + 2;
inline constexpr LRESULT kPreviousAnswer = 100;

inline constexpr int kBoth = kBeforePrevious | kAfterPrevious;

// Its own procedure answers messages of the application with kPreviousAnswer + wParam.
class TargetWindow {
 public:
  explicit TargetWindow(CallLog* log = nullptr) : log_(log) {
    WNDCLASSEXW definition = {};
    definition.cbSize = sizeof(definition);
    definition.lpfnWndProc = Procedure;
    definition.hInstance = GetModuleHandleW(nullptr);
    definition.lpszClassName = L"SubclassTestTarget";
    RegisterClassExW(&definition);
    hwnd_ = CreateWindowExW(0, definition.lpszClassName, L"", WS_POPUP, 0, 0, 10, 10, nullptr,
                            nullptr, definition.hInstance, nullptr);
    SetWindowLongPtrW(hwnd_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }
  TargetWindow(const TargetWindow&) = delete;
  TargetWindow& operator=(const TargetWindow&) = delete;
  ~TargetWindow() { Destroy(); }

  HWND hwnd() const { return hwnd_; }
  void Destroy() {
    if (hwnd_ != nullptr) DestroyWindow(std::exchange(hwnd_, nullptr));
  }
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(hwnd_, message, wParam, lParam);
  }

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto* const self =
        reinterpret_cast<const TargetWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self != nullptr && self->log_ != nullptr) self->log_->emplace_back("previous");
    if (message >= WM_APP) return kPreviousAnswer + static_cast<LRESULT>(wParam);
    return DefWindowProcW(window, message, wParam, lParam);
  }

 private:
  CallLog* log_;
  HWND hwnd_ = nullptr;
};

// The current procedure of a window.
inline WNDPROC ProcedureOf(HWND window) {
  return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
}

// The arguments of an owner's call; the references are the engine's own.
struct SubclassCall {
  bool before;
  bool& handled;
  LRESULT& result;
  HWND window;
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  LONG_PTR& userParam;
};

class RecordingOwner : public GXISubclass {
 public:
  explicit RecordingOwner(CallLog* log = nullptr, std::string name = {})
      : log_(log), name_(std::move(name)) {}

  std::function<void(const SubclassCall&)> onCall;
  int calls = 0;

  void WndProc(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
               WPARAM wParam, LPARAM lParam, LONG_PTR& userParam) override {
    ++calls;
    if (log_ != nullptr) log_->push_back(name_ + (before ? "before" : "after"));
    // Copied: the handler may delete this owner.
    if (const auto call = onCall) {
      call({before, handled, result, window, message, wParam, lParam, userParam});
    }
  }

 private:
  CallLog* log_;
  std::string name_;
};

// The text of the error that the operation throws; empty without one.
inline std::string ErrorOf(const std::function<void()>& operation) {
  try {
    operation();
  } catch (const SubclassError& error) {
    return error.what();
  }
  return {};
}

}  // namespace tellurvane

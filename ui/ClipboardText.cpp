#include "ui/ClipboardText.h"

namespace tellurvane {
namespace {

class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND window) : isOpen_(OpenClipboard(window) != FALSE) {}
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  ~OpenedClipboard() {
    if (isOpen_) CloseClipboard();
  }

  HANDLE Data(UINT format) const { return isOpen_ ? GetClipboardData(format) : nullptr; }

 private:
  bool isOpen_;
};

class LockedMemory {
 public:
  explicit LockedMemory(HANDLE memory)
      : memory_(memory), text_(memory == nullptr ? nullptr : GlobalLock(memory)) {}
  LockedMemory(const LockedMemory&) = delete;
  LockedMemory& operator=(const LockedMemory&) = delete;
  ~LockedMemory() {
    if (text_ != nullptr) GlobalUnlock(memory_);
  }

  // Another program wrote it: the terminating zero may be missing.
  std::wstring Text() const {
    if (text_ == nullptr) return {};
    const auto* const text = static_cast<const wchar_t*>(text_);
    return {text, wcsnlen(text, GlobalSize(memory_) / sizeof(wchar_t))};
  }

 private:
  HANDLE memory_;
  void* text_;
};

}  // namespace

std::wstring ClipboardText(HWND window) {
  const OpenedClipboard clipboard(window);
  const LockedMemory memory(clipboard.Data(CF_UNICODETEXT));
  return memory.Text();
}

}  // namespace tellurvane

// A formatted text on the clipboard, and keys that are held down.
#pragma once

#include <windows.h>

#include <array>
#include <chrono>
#include <cstring>
#include <string>
#include <vector>

#include "tests/support/WindowTestSupport.h"

namespace tellurvane {

// Puts the text "pasted" on the clipboard, as RTF in large Courier letters and as plain text. False
// on failure.
inline bool PutRtfOnClipboard(HWND owner) {
  const auto put = [](UINT format, const auto& text) {
    const size_t size = (text.size() + 1) * sizeof(text[0]);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    void* const place = GlobalLock(memory);
    if (place == nullptr) return false;
    std::memcpy(place, text.c_str(), size);
    GlobalUnlock(memory);
    return SetClipboardData(format, memory) != nullptr;
  };
  const std::string rtf = "{\\rtf1\\ansi{\\fonttbl{\\f0 Courier;}}\\f0\\fs96 pasted}";
  // Other programs open it after each change: its history, a remote desktop.
  if (!PumpUntil([&] { return OpenClipboard(owner) != FALSE; }, std::chrono::seconds(1))) {
    return false;
  }
  const bool isPut = EmptyClipboard() != FALSE &&
                     put(RegisterClipboardFormatW(L"Rich Text Format"), rtf) &&
                     put(CF_UNICODETEXT, std::wstring(L"pasted"));
  CloseClipboard();
  return isPut;
}

// Holds the keys down during its life.
class HeldKeys {
 public:
  explicit HeldKeys(const std::vector<int>& keys) {
    GetKeyboardState(before_.data());
    auto held = before_;
    for (const int key : keys) held.at(static_cast<size_t>(key)) = 0x80;
    SetKeyboardState(held.data());
  }
  HeldKeys(const HeldKeys&) = delete;
  HeldKeys& operator=(const HeldKeys&) = delete;
  ~HeldKeys() { SetKeyboardState(before_.data()); }

 private:
  std::array<BYTE, 256> before_ = {};
};

}  // namespace tellurvane

// The clipboard with a text that has formats, and keys that are held down.
#pragma once

#include <windows.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

namespace tellurvane {

// Puts the text "pasted" there, as RTF in large Courier letters and as plain text. False where the
// system refuses.
inline bool PutRtfOnClipboard(HWND owner) {
  const auto put = [](UINT format, const void* bytes, size_t size) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    void* const place = GlobalLock(memory);
    if (place == nullptr) return false;
    std::memcpy(place, bytes, size);
    GlobalUnlock(memory);
    return SetClipboardData(format, memory) != nullptr;
  };
  const std::string rtf = "{\\rtf1\\ansi{\\fonttbl{\\f0 Courier;}}\\f0\\fs96 pasted}";
  const std::wstring plain = L"pasted";
  const bool isOpen = OpenClipboard(owner) != FALSE;
  const bool isPut =
      isOpen && EmptyClipboard() != FALSE &&
      put(RegisterClipboardFormatW(L"Rich Text Format"), rtf.c_str(), rtf.size() + 1) &&
      put(CF_UNICODETEXT, plain.c_str(), (plain.size() + 1) * sizeof(wchar_t));
  if (isOpen) CloseClipboard();
  return isPut;
}

// While it lives, the keys are held down.
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

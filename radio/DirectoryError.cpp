#include "radio/DirectoryError.h"

#include <array>
#include <cwchar>

namespace tellurvane {
namespace {

std::wstring WithCause(const wchar_t* text, std::uint32_t code) {
  std::array<wchar_t, 40> cause = {};
  (void)std::swprintf(cause.data(), cause.size(), L"（錯誤 0x%08X）", code);
  return std::wstring(text) + cause.data();
}

}  // namespace

std::wstring UnreachableText(std::uint32_t code) {
  return WithCause(L"無法連線到電台目錄，請稍後再試一次。", code);
}

std::wstring BadCertificateText(std::uint32_t code) {
  return WithCause(L"電台目錄的安全憑證無效，已停止連線。", code);
}

}  // namespace tellurvane

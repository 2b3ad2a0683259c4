// Why a directory gave no stations.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace tellurvane {

// Carries a text for the user.
class DirectoryError : public std::exception {
 public:
  explicit DirectoryError(std::wstring text) : text_(std::move(text)) {}

  const std::wstring& Text() const { return text_; }
  const char* what() const noexcept override { return "a directory gave no stations"; }

 private:
  std::wstring text_;
};

inline constexpr const wchar_t* kTooLargeAnswer = L"電台目錄的資料過大，無法讀取。";

// `code` is the system's own for the cause.
std::wstring UnreachableText(std::uint32_t code);
// The same for a server whose certificate is not valid.
std::wstring BadCertificateText(std::uint32_t code);

}  // namespace tellurvane

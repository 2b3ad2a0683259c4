// Why a directory gave no stations.
#pragma once

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

}  // namespace tellurvane

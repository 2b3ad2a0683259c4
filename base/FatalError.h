// An error that ends the program. The entry routine shows the message in a box.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace tellurvane {

class FatalError : public std::exception {
 public:
  explicit FatalError(std::wstring message) : message_(std::move(message)) {}

  const std::wstring& Message() const { return message_; }
  const char* what() const noexcept override { return "fatal error"; }

 private:
  std::wstring message_;
};

}  // namespace tellurvane

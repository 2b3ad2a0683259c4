// What the program cannot go on after: it ends in the entry routine with one message box.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace tellurvane {

class FatalError : public std::exception {
 public:
  // The message is shown to the user as it stands.
  explicit FatalError(std::wstring message) : message_(std::move(message)) {}

  const std::wstring& Message() const { return message_; }
  const char* what() const noexcept override { return "fatal error"; }

 private:
  std::wstring message_;
};

}  // namespace tellurvane

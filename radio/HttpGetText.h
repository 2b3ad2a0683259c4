// Fetching a page.
#pragma once

#include <windows.h>

#include <exception>
#include <string>

namespace tellurvane {

// A page could not be fetched: no network, no such host, no answer.
class FetchError : public std::exception {
 public:
  explicit FetchError(HRESULT code) : code_(code) {}
  const char* what() const noexcept override { return "a page could not be fetched"; }
  // The system's own.
  HRESULT Code() const { return code_; }

 private:
  HRESULT code_;
};

// The page's text, decoded by the charset that the server declares; of an error page too. Always
// from the network. Blocks until the whole page is there. The address goes out as it stands. Throws
// FetchError. Needs a thread with COM.
std::wstring HttpGetText(const std::wstring& url);

}  // namespace tellurvane

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

// Returns the page's text, decoded by the charset that the server declares, also for an error page.
// Never uses a cache. Blocks until the whole page is there. Sends the address as it is. Throws
// FetchError. Needs a thread with COM.
std::wstring HttpGetText(const std::wstring& url);

}  // namespace tellurvane

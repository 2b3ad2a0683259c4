// Fetching bytes from one of several servers, where a silent one must not hold up the others.
#pragma once

#include <chrono>
#include <string>

namespace tellurvane {

// The most bytes that an answer may have.
inline constexpr size_t kMostAnswerBytes = size_t{4} << 20U;

// The bytes of the answer to a GET request by https, through the system's proxy. Blocks for `limit`
// at most. Throws DirectoryError for every answer but 200, and for a certificate that is not valid.
// Follows no redirection; uses no cache and no cookies.
std::string HttpsGet(const std::wstring& host, const std::wstring& path,
                     std::chrono::milliseconds limit);

}  // namespace tellurvane

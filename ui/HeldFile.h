// Files that another program, such as a virus scanner or a backup, may hold for a moment.
#pragma once

#include <windows.h>

#include <string>
#include <utility>

#include "base/Pause.h"
#include "ui/Handle.h"

namespace tellurvane {

// How often a call is tried, and the pause between two tries: about half a second in all.
inline constexpr int kHeldAttempts = 25;
inline constexpr unsigned kHeldPauseMilliseconds = 20;

// None when it fails; the last error then says why.
inline UniqueKernelHandle OpenFile(const std::wstring& path, DWORD access, DWORD sharing,
                                   DWORD disposition) {
  return OwnedFile(CreateFileW(path.c_str(), access, sharing, nullptr, disposition,
                               FILE_ATTRIBUTE_NORMAL, nullptr));
}

constexpr bool IsHeldByOthers(DWORD error) {
  return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION ||
         error == ERROR_LOCK_VIOLATION;
}

// Tries a call again while another program holds its file. After a series of attempts in vain the
// next one is tried once only: many tasks may be due at once, and a list that cannot be read is
// loaded again each second.
class HeldFileRetry {
 public:
  explicit HeldFileRetry(Pause pause) : pause_(std::move(pause)) {}

  // Whether the call succeeded. The last error is that of the last attempt.
  template <typename Call>
  bool Try(Call call) {
    const int attempts = std::exchange(attempts_, kHeldAttempts);
    for (int attempt = 1; !call(); ++attempt) {
      if (!IsHeldByOthers(GetLastError())) return false;
      if (attempt >= attempts) {
        attempts_ = 1;
        return false;
      }
      pause_(kHeldPauseMilliseconds);
    }
    return true;
  }

 private:
  Pause pause_;
  int attempts_ = kHeldAttempts;
};

}  // namespace tellurvane

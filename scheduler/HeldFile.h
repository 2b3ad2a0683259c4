// Files that another program, a virus scanner or a backup say, may hold for a moment.
#pragma once

#include <windows.h>

#include <string>

#include "base/Pause.h"
#include "ui/Handle.h"

namespace tellurvane {

// How often a call is tried, and the pause between two tries: about half a second in all.
inline constexpr int kHeldAttempts = 25;
inline constexpr unsigned kHeldPauseMilliseconds = 20;

// None where it fails; the last error then says why.
inline UniqueKernelHandle OpenFile(const std::wstring& path, DWORD access, DWORD sharing,
                                   DWORD disposition) {
  return OwnedFile(CreateFileW(path.c_str(), access, sharing, nullptr, disposition,
                               FILE_ATTRIBUTE_NORMAL, nullptr));
}

constexpr bool IsHeldByOthers(DWORD error) {
  return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION ||
         error == ERROR_LOCK_VIOLATION;
}

// Calls until the call succeeds, fails for another reason, or the attempts are used up. `wasHeld`
// says that the last series of attempts was in vain; then there is one attempt only: many tasks may
// be due at once, and a list is loaded again each second. The last error is that of the last call.
template <typename Call>
bool RetryWhileHeld(bool& wasHeld, const Pause& pause, Call call) {
  const int attempts = wasHeld ? 1 : kHeldAttempts;
  for (int attempt = 1; !call(); ++attempt) {
    wasHeld = IsHeldByOthers(GetLastError());
    if (!wasHeld || attempt >= attempts) return false;
    pause(kHeldPauseMilliseconds);
  }
  wasHeld = false;
  return true;
}

}  // namespace tellurvane

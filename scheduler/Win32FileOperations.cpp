#include "scheduler/Win32FileOperations.h"

#include <algorithm>
#include <utility>

namespace tellurvane {
namespace {

// How long a virus scanner or a backup may hold the file before it counts as refused.
constexpr int kAttempts = 25;
constexpr unsigned kRetryMilliseconds = 20;

UniqueKernelHandle OpenFile(const std::wstring& path, DWORD access, DWORD sharing,
                            DWORD disposition) {
  return OwnedFile(CreateFileW(path.c_str(), access, sharing, nullptr, disposition,
                               FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool IsHeldByOthers(DWORD error) {
  return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION ||
         error == ERROR_LOCK_VIOLATION;
}

// Calls until it succeeds, fails for another reason than somebody else's hold, or time is up.
// The last error is that of the last call.
template <typename Call>
bool RetryWhileHeld(int attempts, const Pause& pause, Call call) {
  for (int attempt = 1; !call(); ++attempt) {
    if (attempt >= attempts || !IsHeldByOthers(GetLastError())) return false;
    pause(kRetryMilliseconds);
  }
  return true;
}

DWORD Limited(size_t size) {
  constexpr size_t kMost = 1U << 30;
  return static_cast<DWORD>(std::min(size, kMost));
}

}  // namespace

Win32FileOperations::Win32FileOperations(Pause pause) : pause_(std::move(pause)) {}

OpenOutcome Win32FileOperations::OpenForReading(const std::wstring& path) {
  const bool opened = RetryWhileHeld(kAttempts, pause_, [&] {
    reading_ = OpenFile(path, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    return static_cast<bool>(reading_);
  });
  if (opened) return OpenOutcome::kOpened;
  // A path that is gone is no missing list: the share or the disk may come back, with the list.
  return GetLastError() == ERROR_FILE_NOT_FOUND ? OpenOutcome::kMissing : OpenOutcome::kRefused;
}

std::optional<std::uint64_t> Win32FileOperations::SizeOfReading() {
  LARGE_INTEGER size = {};
  if (!GetFileSizeEx(reading_.Get(), &size)) return std::nullopt;
  return static_cast<std::uint64_t>(size.QuadPart);
}

std::optional<size_t> Win32FileOperations::Read(char* buffer, size_t size) {
  DWORD got = 0;
  if (!ReadFile(reading_.Get(), buffer, Limited(size), &got, nullptr)) return std::nullopt;
  return got;
}

void Win32FileOperations::CloseReading() { reading_.Reset(); }

bool Win32FileOperations::CreateForWriting(const std::wstring& path) {
  writing_ = OpenFile(path, GENERIC_WRITE, 0, CREATE_ALWAYS);
  return static_cast<bool>(writing_);
}

std::optional<size_t> Win32FileOperations::Write(std::string_view bytes) {
  DWORD written = 0;
  if (!WriteFile(writing_.Get(), bytes.data(), Limited(bytes.size()), &written, nullptr)) {
    return std::nullopt;
  }
  return written;
}

bool Win32FileOperations::Flush() { return FlushFileBuffers(writing_.Get()); }

bool Win32FileOperations::CloseWriting() {
  writing_.Reset();
  return true;
}

bool Win32FileOperations::MoveOver(const std::wstring& from, const std::wstring& to) {
  // Who held the file through one whole wait is not waited for again: many tasks may be due at
  // once.
  const bool moved = RetryWhileHeld(wasHeld_ ? 1 : kAttempts, pause_, [&] {
    return MoveFileExW(from.c_str(), to.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
  });
  wasHeld_ = !moved;
  return moved;
}

CopyOutcome Win32FileOperations::CopyToNew(const std::wstring& from, const std::wstring& to) {
  if (GetFileAttributesW(to.c_str()) != INVALID_FILE_ATTRIBUTES) return CopyOutcome::kTargetExists;
  if (!CopyFileW(from.c_str(), to.c_str(), TRUE)) {
    const DWORD error = GetLastError();
    // The same errors stand for a target whose path is too long; then there is much to lose.
    const bool isNotFound = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    if (isNotFound && GetFileAttributesW(from.c_str()) == INVALID_FILE_ATTRIBUTES) {
      return CopyOutcome::kSourceMissing;
    }
    if (error == ERROR_FILE_EXISTS) return CopyOutcome::kTargetExists;
    DeleteFileW(to.c_str());
    return CopyOutcome::kFailed;
  }
  // The copy of a write-protected file cannot be opened for writing; it is a copy all the same.
  const UniqueKernelHandle copy = OpenFile(to, GENERIC_WRITE, FILE_SHARE_READ, OPEN_EXISTING);
  if (!copy || FlushFileBuffers(copy.Get())) return CopyOutcome::kCopied;
  DeleteFileW(to.c_str());
  return CopyOutcome::kFailed;
}

void Win32FileOperations::Remove(const std::wstring& path) { DeleteFileW(path.c_str()); }

}  // namespace tellurvane

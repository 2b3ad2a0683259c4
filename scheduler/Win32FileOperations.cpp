#include "scheduler/Win32FileOperations.h"

#include <algorithm>

namespace tellurvane {
namespace {

// How long a virus scanner or a backup may hold the file before it counts as refused.
constexpr int kAttempts = 25;
constexpr DWORD kRetryMilliseconds = 20;

UniqueKernelHandle OpenFile(const std::wstring& path, DWORD access, DWORD sharing,
                            DWORD disposition) {
  const HANDLE file = CreateFileW(path.c_str(), access, sharing, nullptr, disposition,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  return UniqueKernelHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

bool IsHeldByOthers(DWORD error) {
  return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION ||
         error == ERROR_LOCK_VIOLATION;
}

// Calls until it succeeds, fails for another reason than somebody else's hold, or time is up.
// The last error is that of the last call.
template <typename Call>
bool RetryWhileHeld(Call call) {
  for (int attempt = 1; !call(); ++attempt) {
    if (attempt == kAttempts || !IsHeldByOthers(GetLastError())) return false;
    Sleep(kRetryMilliseconds);
  }
  return true;
}

bool IsMissing(DWORD error) {
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

DWORD Limited(size_t size) {
  constexpr size_t kMost = 1U << 30;
  return static_cast<DWORD>(std::min(size, kMost));
}

}  // namespace

OpenOutcome Win32FileOperations::OpenForReading(const std::wstring& path) {
  const bool opened = RetryWhileHeld([&] {
    reading_ = OpenFile(path, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    return static_cast<bool>(reading_);
  });
  if (opened) return OpenOutcome::kOpened;
  return IsMissing(GetLastError()) ? OpenOutcome::kMissing : OpenOutcome::kRefused;
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
  return RetryWhileHeld([&] {
    return MoveFileExW(from.c_str(), to.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
  });
}

CopyOutcome Win32FileOperations::CopyToNew(const std::wstring& from, const std::wstring& to) {
  if (GetFileAttributesW(to.c_str()) != INVALID_FILE_ATTRIBUTES) return CopyOutcome::kTargetExists;
  if (!CopyFileW(from.c_str(), to.c_str(), TRUE)) {
    const DWORD error = GetLastError();
    if (IsMissing(error)) return CopyOutcome::kSourceMissing;
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

std::wstring DecodeAnsi(std::string_view bytes) {
  const int size = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0);
  if (length <= 0) return {};
  std::wstring text(static_cast<size_t>(length), L'\0');
  MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.data(), length);
  return text;
}

}  // namespace tellurvane

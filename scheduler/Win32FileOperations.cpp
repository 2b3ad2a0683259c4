#include "scheduler/Win32FileOperations.h"

#include <algorithm>

namespace tellurvane {
namespace {

DWORD Limited(size_t size) {
  constexpr size_t kMost = 1U << 30;
  return static_cast<DWORD>(std::min(size, kMost));
}

}  // namespace

Win32FileOperations::Win32FileOperations(const Pause& pause)
    : openForReading_(pause), createForWriting_(pause), moveOver_(pause) {}

OpenOutcome Win32FileOperations::OpenForReading(const std::wstring& path) {
  const bool opened = openForReading_.Try([&] {
    reading_ = OpenFile(path, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    return static_cast<bool>(reading_);
  });
  if (opened) return OpenOutcome::kOpened;
  // Only a missing file counts as missing. A missing folder may be a share or disk that comes back.
  return GetLastError() == ERROR_FILE_NOT_FOUND ? OpenOutcome::kMissing : OpenOutcome::kFailed;
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
  return createForWriting_.Try([&] {
    writing_ = OpenFile(path, GENERIC_WRITE, 0, CREATE_ALWAYS);
    return static_cast<bool>(writing_);
  });
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
  return moveOver_.Try([&] {
    return MoveFileExW(from.c_str(), to.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
  });
}

CopyOutcome Win32FileOperations::CopyToNew(const std::wstring& from, const std::wstring& to) {
  if (GetFileAttributesW(to.c_str()) != INVALID_FILE_ATTRIBUTES) return CopyOutcome::kTargetExists;
  if (!CopyFileW(from.c_str(), to.c_str(), TRUE)) {
    if (GetLastError() == ERROR_FILE_EXISTS) return CopyOutcome::kTargetExists;
    // CopyFileW's error may be about the target, so the source is checked by itself. A source that
    // is missing for another reason, such as a missing folder, may come back.
    if (GetFileAttributesW(from.c_str()) == INVALID_FILE_ATTRIBUTES &&
        GetLastError() == ERROR_FILE_NOT_FOUND) {
      return CopyOutcome::kSourceMissing;
    }
    DeleteFileW(to.c_str());
    return CopyOutcome::kFailed;
  }
  // The copy of a write-protected file cannot be opened for writing. It is complete all the same.
  const UniqueKernelHandle copy = OpenFile(to, GENERIC_WRITE, FILE_SHARE_READ, OPEN_EXISTING);
  if (!copy || FlushFileBuffers(copy.Get())) return CopyOutcome::kCopied;
  DeleteFileW(to.c_str());
  return CopyOutcome::kFailed;
}

void Win32FileOperations::Remove(const std::wstring& path) { DeleteFileW(path.c_str()); }

}  // namespace tellurvane

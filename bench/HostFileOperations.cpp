#include "bench/HostFileOperations.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>
#include <utility>

namespace tellurvane {
namespace {

std::string Narrow(const std::wstring& path) { return std::filesystem::path(path).string(); }

void Close(int& file) {
  if (file >= 0) close(std::exchange(file, -1));
}

}  // namespace

OpenOutcome HostFileOperations::OpenForReading(const std::wstring& path) {
  reading_ = open(Narrow(path).c_str(), O_RDONLY | O_CLOEXEC);
  return reading_ >= 0 ? OpenOutcome::kOpened : OpenOutcome::kMissing;
}

std::optional<std::uint64_t> HostFileOperations::SizeOfReading() {
  struct stat status = {};
  if (fstat(reading_, &status) != 0) return std::nullopt;
  return static_cast<std::uint64_t>(status.st_size);
}

std::optional<size_t> HostFileOperations::Read(char* buffer, size_t size) {
  const ssize_t got = read(reading_, buffer, size);
  if (got < 0) return std::nullopt;
  return static_cast<size_t>(got);
}

void HostFileOperations::CloseReading() { Close(reading_); }

bool HostFileOperations::CreateForWriting(const std::wstring& path) {
  writing_ = open(Narrow(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  return writing_ >= 0;
}

std::optional<size_t> HostFileOperations::Write(std::string_view bytes) {
  const ssize_t written = write(writing_, bytes.data(), bytes.size());
  if (written < 0) return std::nullopt;
  return static_cast<size_t>(written);
}

bool HostFileOperations::Flush() { return fsync(writing_) == 0; }

bool HostFileOperations::CloseWriting() {
  Close(writing_);
  return true;
}

bool HostFileOperations::MoveOver(const std::wstring& from, const std::wstring& to) {
  std::error_code error;
  std::filesystem::rename(from, to, error);
  return !error;
}

CopyOutcome HostFileOperations::CopyToNew(const std::wstring& from, const std::wstring& to) {
  std::error_code error;
  const bool copied = std::filesystem::copy_file(from, to, error);
  return copied ? CopyOutcome::kCopied : CopyOutcome::kFailed;
}

void HostFileOperations::Remove(const std::wstring& path) {
  std::error_code error;
  std::filesystem::remove(path, error);
}

}  // namespace tellurvane

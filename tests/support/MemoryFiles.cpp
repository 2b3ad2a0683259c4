#include "tests/support/MemoryFiles.h"

namespace tellurvane {

void MemoryFiles::SetFaults(const Faults& faults) {
  faults_ = faults;
  operationCount_ = 0;
  operations_.clear();
}

bool MemoryFiles::Begin(const char* operation) {
  const int count = operationCount_++;
  const bool fails =
      faults_.first >= 0 && (faults_.fromThenOn ? count >= faults_.first : count == faults_.first);
  operations_.push_back(std::string(operation) + (fails ? "!" : ""));
  return !fails;
}

bool MemoryFiles::IsOpen(const std::wstring& path) const {
  return path == reading_ || path == writing_;
}

OpenOutcome MemoryFiles::OpenForReading(const std::wstring& path) {
  if (!Begin("open") || locked.contains(path) || unreadable.contains(path)) {
    return OpenOutcome::kFailed;
  }
  if (!files.contains(path)) return OpenOutcome::kMissing;
  reading_ = path;
  readPosition_ = 0;
  return OpenOutcome::kOpened;
}

std::optional<std::uint64_t> MemoryFiles::SizeOfReading() {
  if (!Begin("size") || reading_.empty()) return std::nullopt;
  return files.at(reading_).bytes.size();
}

std::optional<size_t> MemoryFiles::Read(char* buffer, size_t size) {
  const bool works = Begin("read");
  if (reading_.empty()) return std::nullopt;
  const std::string& bytes = files.at(reading_).bytes;
  const size_t asked = works ? size : size / 2;
  const size_t got = bytes.copy(buffer, asked, readPosition_);
  readPosition_ += got;
  if (works || faults_.returnsHalf) return got;
  return std::nullopt;
}

void MemoryFiles::CloseReading() { reading_.clear(); }

bool MemoryFiles::CreateForWriting(const std::wstring& path) {
  if (!Begin("create") || locked.contains(path) || IsOpen(path)) return false;
  files[path] = {.bytes = {}, .isOnDisk = false};
  writing_ = path;
  return true;
}

std::optional<size_t> MemoryFiles::Write(std::string_view bytes) {
  const bool works = Begin("write");
  if (writing_.empty()) return std::nullopt;
  const std::string_view moved = works ? bytes : bytes.substr(0, bytes.size() / 2);
  files.at(writing_).bytes += moved;
  files.at(writing_).isOnDisk = false;
  if (works || faults_.returnsHalf) return moved.size();
  return std::nullopt;
}

bool MemoryFiles::Flush() {
  if (!Begin("flush") || writing_.empty()) return false;
  files.at(writing_).isOnDisk = true;
  return true;
}

bool MemoryFiles::CloseWriting() {
  const bool works = Begin("close");
  writing_.clear();
  return works;
}

bool MemoryFiles::MoveOver(const std::wstring& from, const std::wstring& to) {
  if (!Begin("move") || IsOpen(from) || IsOpen(to) || !files.contains(from)) return false;
  if (beforeMoveOver) beforeMoveOver(from, to);
  files[to] = files.at(from);
  files.erase(from);
  return true;
}

CopyOutcome MemoryFiles::CopyToNew(const std::wstring& from, const std::wstring& to) {
  if (!Begin("copy") || isCopyRefused) return CopyOutcome::kFailed;
  if (files.contains(to)) return CopyOutcome::kTargetExists;
  if (locked.contains(from)) return CopyOutcome::kFailed;
  if (!files.contains(from)) return CopyOutcome::kSourceMissing;
  files[to] = {.bytes = files.at(from).bytes, .isOnDisk = true};
  return CopyOutcome::kCopied;
}

void MemoryFiles::Remove(const std::wstring& path) {
  if (Begin("remove") && !IsOpen(path)) files.erase(path);
}

}  // namespace tellurvane

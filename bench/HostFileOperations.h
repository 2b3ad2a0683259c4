// FileOperations on this machine's file system, for benchmarks.
#pragma once

#include "scheduler/FileOperations.h"

namespace tellurvane {

// Paths are ASCII.
class HostFileOperations : public FileOperations {
 public:
  OpenOutcome OpenForReading(const std::wstring& path) override;
  std::optional<std::uint64_t> SizeOfReading() override;
  std::optional<size_t> Read(char* buffer, size_t size) override;
  void CloseReading() override;

  bool CreateForWriting(const std::wstring& path) override;
  std::optional<size_t> Write(std::string_view bytes) override;
  bool Flush() override;
  bool CloseWriting() override;

  bool MoveOver(const std::wstring& from, const std::wstring& to) override;
  CopyOutcome CopyToNew(const std::wstring& from, const std::wstring& to) override;
  void Remove(const std::wstring& path) override;

 private:
  int reading_ = -1;
  int writing_ = -1;
};

}  // namespace tellurvane

// FileOperations on the real file system.
#pragma once

#include "base/Pause.h"
#include "scheduler/FileOperations.h"
#include "ui/Handle.h"
#include "ui/HeldFile.h"

namespace tellurvane {

class Win32FileOperations : public FileOperations {
 public:
  // The pause before an operation is tried again.
  explicit Win32FileOperations(const Pause& pause = SleepFor);

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
  UniqueKernelHandle reading_;
  UniqueKernelHandle writing_;
  HeldFileRetry openForReading_;
  HeldFileRetry createForWriting_;
  HeldFileRetry moveOver_;
};

}  // namespace tellurvane

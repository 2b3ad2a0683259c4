// FileOperations on the real file system.
#pragma once

#include "base/Pause.h"
#include "scheduler/FileOperations.h"
#include "ui/Handle.h"

namespace tellurvane {

class Win32FileOperations : public FileOperations {
 public:
  // The pause comes before an operation is tried again. Only tests name another one than the
  // platform's own.
  explicit Win32FileOperations(Pause pause = SleepFor);

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
  Pause pause_;
  // Whether another program held the file through the whole last wait.
  bool wasReadingHeld_ = false;
  bool wasWritingHeld_ = false;
  bool wasTargetHeld_ = false;
};

}  // namespace tellurvane

// Files in memory, with operations that fail when they are told to.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "scheduler/FileOperations.h"

namespace tellurvane {

// Which operations fail, counted from 0 over all operations since the faults were set. The two
// closings of a reader and the questions of a test are no operations.
struct Faults {
  int first = -1;  // none
  bool fromThenOn = false;
  // A read or a write that fails still moves half of the bytes and tells so, as on a full disk;
  // without this it moves half of them and tells nothing.
  bool tellsHalf = false;
};

class MemoryFiles : public FileOperations {
 public:
  struct File {
    std::string bytes;
    bool isOnDisk = true;  // false while a crash could still lose the bytes
  };

  void SetFaults(const Faults& faults);
  // How many operations there were since the faults were set.
  int OperationCount() const { return operationCount_; }
  // "open", "size", "read", "create", "write", "flush", "close", "move", "copy", "remove"; those
  // that failed end in "!".
  const std::vector<std::string>& Operations() const { return operations_; }

  std::map<std::wstring, File> files;
  // Paths that exist and cannot be opened, and those that can be copied all the same.
  std::set<std::wstring> refused;
  std::set<std::wstring> refusedToRead;
  bool isCopyRefused = false;
  // Called when one file is about to take another's place.
  std::function<void(const std::wstring& from, const std::wstring& to)> beforeMoveOver;

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
  // Counts and records the operation. False when it is to fail.
  bool Begin(const char* operation);
  bool IsOpen(const std::wstring& path) const;

  Faults faults_;
  int operationCount_ = 0;
  std::vector<std::string> operations_;
  std::wstring reading_;
  size_t readPosition_ = 0;
  std::wstring writing_;
};

}  // namespace tellurvane

// A file system in memory. A test sets which of its operations fail.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "scheduler/FileOperations.h"

namespace tellurvane {

// The operations that fail. Operations count from 0 since SetFaults. CloseReading is not counted.
struct Faults {
  int first = -1;  // none
  bool fromThenOn = false;
  // A read or write that fails still transfers half of the bytes. True: it returns their number, as
  // on a full disk. False: it returns nothing.
  bool returnsHalf = false;
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
  // Paths whose files cannot be opened or copied. Those in `unreadable` can be copied.
  std::set<std::wstring> locked;
  std::set<std::wstring> unreadable;
  bool isCopyRefused = false;
  // Called before MoveOver replaces the target.
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

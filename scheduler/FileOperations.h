// The file operations that the task list needs, one by one, so that each can be made to fail.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tellurvane {

enum class OpenOutcome { kOpened, kMissing, kFailed };
enum class CopyOutcome { kCopied, kSourceMissing, kTargetExists, kFailed };

// At most one file is open for reading and one for writing at a time. Closing is always allowed.
class FileOperations {
 public:
  FileOperations() = default;
  FileOperations(const FileOperations&) = delete;
  FileOperations& operator=(const FileOperations&) = delete;
  virtual ~FileOperations() = default;

  // Others may read at the same time. Tries again for a moment while another program writes.
  // Missing means that the file is known not to exist; after any other error it may exist.
  virtual OpenOutcome OpenForReading(const std::wstring& path) = 0;
  virtual std::optional<std::uint64_t> SizeOfReading() = 0;
  // Fewer bytes than asked when the file ends; nothing when it fails.
  virtual std::optional<size_t> Read(char* buffer, size_t size) = 0;
  virtual void CloseReading() = 0;

  // Creates the file or empties it. Tries again for a moment while another program holds it open.
  virtual bool CreateForWriting(const std::wstring& path) = 0;
  // The number of bytes written; nothing when it fails.
  virtual std::optional<size_t> Write(std::string_view bytes) = 0;
  // Waits until the bytes are on the disk.
  virtual bool Flush() = 0;
  virtual bool CloseWriting() = 0;

  // Replaces a file by another in one step: a reader sees the old or the new one. Tries again for a
  // moment while another program holds the target open.
  virtual bool MoveOver(const std::wstring& from, const std::wstring& to) = 0;
  // The copy is on the disk when the call returns. Never overwrites a file; a copy that fails
  // leaves nothing.
  virtual CopyOutcome CopyToNew(const std::wstring& from, const std::wstring& to) = 0;
  virtual void Remove(const std::wstring& path) = 0;
};

}  // namespace tellurvane

// The file of the task list, JobList.dbs.
#pragma once

#include <span>
#include <string>

#include "base/DateText.h"
#include "scheduler/FileOperations.h"
#include "scheduler/TaskListText.h"
#include "scheduler/TaskRecord.h"

namespace tellurvane {

// A file of this many bytes or more is not read.
inline constexpr std::uint64_t kTaskListSizeLimit = 0x400000;

// How dates and ANSI bytes are read and written: the user's locale, or a test's.
struct TaskListDialect {
  // Called at each load: the user may change the locale while the program runs.
  std::function<DateReader()> dateReader;
  DateWriter writeDate;
  AnsiDecoder decodeAnsi;
};

class TaskListFile {
 public:
  TaskListFile(FileOperations& files, std::wstring path, TaskListDialect dialect, Clock clock);

  // Empties the list, then fills it from the file, moves past next runs forward and writes the
  // file back. True when there is at least one task. A file that is missing, cannot be read, is
  // too large or ends in half a UTF-16 unit gives an empty list.
  //
  // When the file holds anything that the list does not, it is first copied to
  // JobList.dbs.<yyyymmdd-hhmmss>.bak, never over an earlier backup. While that fails, the file is
  // not overwritten.
  bool Load(TaskList& tasks);

  // Whether the list is empty because the last load could neither read the file nor replace it.
  // Loading again may succeed. Saving a list with tasks ends this state.
  bool IsUnread() const { return isUnread_; }

  // Writes the whole list beside the file and moves it over the file, so that a reader or a
  // killed process finds the old list or the new one. False when anything fails, or when the list
  // has grown to the size that is not read; then the old file stays and the temporary one is
  // removed. An empty list is not written while the file is unread: it may hold tasks.
  bool Save(std::span<const TaskRecord> tasks);

 private:
  bool Write(std::span<const TaskRecord> tasks);
  TaskListReading Read();
  std::optional<std::string> ReadBytes();
  // `made` is the path of the copy; empty when there was nothing to copy.
  bool KeepBackup(std::wstring& made);
  bool WriteBeside(std::string_view bytes);
  bool WriteAndFlush(std::string_view bytes);

  FileOperations& files_;
  std::wstring path_;
  std::wstring temporaryPath_;
  TaskListDialect dialect_;
  Clock clock_;
  bool isBackupNeeded_ = false;
  bool isUnread_ = false;
};

}  // namespace tellurvane

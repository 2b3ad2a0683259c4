// A task list file in memory: in zh-TW, at noon.
#pragma once

#include <string>
#include <vector>

#include "scheduler/TaskListFile.h"
#include "tests/support/HostDates.h"
#include "tests/support/MemoryFiles.h"
#include "tests/support/Moments.h"

namespace tellurvane {

inline const std::wstring kListPath = L"JobList.dbs";
inline const std::wstring kTemporaryPath = L"JobList.dbs.tmp";
inline const std::string kMarkAlone = "\xFF\xFE";

// A line that is written as it is read, for a task named so.
std::wstring Line(const std::wstring& name);

// The task of such a line, with another source.
TaskRecord Reminder(const std::wstring& name, const std::wstring& source);

struct TaskListFixture {
  // Without a file.
  TaskListFixture() = default;
  explicit TaskListFixture(const std::string& bytes) { files.files[kListPath].bytes = bytes; }

  std::string Bytes() const { return files.files.at(kListPath).bytes; }
  // In the order of their names.
  std::vector<std::string> Backups() const;

  MemoryFiles files;
  DateSerial now = At(2011, 2, 14, 12);
  const HostLocale* locale = &ZhTw();
  bool isAnsiLossy = false;
  TaskListFile file{files, kListPath, Dialect(), [this] { return now; }};

  TaskListDialect Dialect();
};

}  // namespace tellurvane

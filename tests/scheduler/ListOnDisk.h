// The task list file as it lies in a folder after something went wrong.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/LocaleDates.h"
#include "scheduler/DecodeAnsi.h"
#include "scheduler/TaskListText.h"
#include "scheduler/Win32FileOperations.h"
#include "tests/support/TemporaryFolder.h"

namespace tellurvane {

// Whether the file holds these tasks and nothing else, dates included.
inline bool Holds(const std::string& bytes, const TaskList& expected, DateSerial now) {
  const auto decoded = DecodeTaskListBytes(bytes, DecodeAnsi);
  if (!decoded || decoded->hasLoss) return false;
  const TaskListReading reading = ReadTaskListText(decoded->text, UserDateReader(), now);
  if (reading.hasLoss || reading.tasks.size() != expected.size()) return false;
  for (size_t i = 0; i < expected.size(); ++i) {
    const TaskRecord& task = reading.tasks[i];
    if (task.Name != expected[i].Name || task.Source != expected[i].Source ||
        SecondsFromSerial(task.NextRun) != SecondsFromSerial(expected[i].NextRun)) {
      return false;
    }
  }
  return true;
}

// Empty when the list is one of those that it may be, or lies beside itself as it was.
inline std::string ListFault(const TemporaryFolder& folder, const std::string& before,
                             const std::vector<TaskList>& allowed, DateSerial now) {
  const std::string bytes = ReadBytes(folder.File(L"JobList.dbs"));
  for (const TaskList& tasks : allowed) {
    if (Holds(bytes, tasks, now)) return "";
  }
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
    if (entry.path().extension() == L".bak" && ReadBytes(entry.path().wstring()) == before) {
      return "";
    }
  }
  return "the list is lost";
}

}  // namespace tellurvane

#include "tests/support/TaskListRoundTrip.h"

#include "base/Text.h"
#include "scheduler/Schedule.h"
#include "scheduler/TaskListFile.h"
#include "tests/support/MemoryFiles.h"
#include "tests/support/Moments.h"

namespace tellurvane {
namespace {

const std::wstring kPath = L"JobList.dbs";

// A code page in which every byte is a letter of its own.
std::wstring DecodeBytewise(std::string_view bytes) {
  std::wstring text;
  for (const char byte : bytes) text += static_cast<wchar_t>(static_cast<unsigned char>(byte));
  return text;
}

struct Loading {
  TaskList tasks;
  std::string fileAfter;
  std::string fault;
};

// Whether the bytes say anything that the list cannot hold.
bool HoldsMoreThanAList(std::string_view bytes, const HostLocale& locale, DateSerial now) {
  if (bytes.size() >= kTaskListSizeLimit) return true;
  const auto decoded = DecodeTaskListBytes(bytes, DecodeBytewise);
  return !decoded || ReadTaskListText(decoded->text, HostDateReader(locale), now).hasLoss;
}

std::string FaultOfFiles(const MemoryFiles& files, std::string_view bytes, bool owesBackup) {
  if (files.files.size() != (owesBackup ? 2U : 1U)) {
    return owesBackup ? "no backup was kept" : "more is left than the list";
  }
  for (const auto& [path, file] : files.files) {
    if (path != kPath && file.bytes != bytes) return "what is left beside the list is no backup";
    if (!file.isOnDisk) return "a file is not on the disk";
  }
  return {};
}

Loading Load(std::string_view bytes, const HostLocale& locale, DateSerial now) {
  MemoryFiles files;
  files.files[kPath].bytes = bytes;
  const TaskListDialect dialect = {.dateReader = [&] { return HostDateReader(locale); },
                                   .writeDate = HostDateWriter(locale),
                                   .decodeAnsi = DecodeBytewise};
  TaskListFile file(files, kPath, dialect, [now] { return now; });
  Loading loading;
  const bool hasTasks = file.Load(loading.tasks);
  loading.fileAfter = files.files[kPath].bytes;
  loading.fault = FaultOfFiles(files, bytes, HoldsMoreThanAList(bytes, locale, now));
  if (hasTasks == loading.tasks.empty()) loading.fault = "Load returned the wrong value";
  return loading;
}

std::string FaultOfTask(const TaskRecord& task, size_t index, DateSerial now) {
  if (task.Index != static_cast<std::int32_t>(index) || task.Id != task.Index + 1) {
    return "the place is wrong";
  }
  if (task.Deleted || task.RunStarted != 0) return "a field that is not stored has a value";
  if (!IsDateSerial(task.NextRun) || !IsDateSerial(task.LastRun)) return "a date is not valid";
  if (HasSchedule(task) && IsEarlier(task.NextRun, now)) return "a next run is past";
  return {};
}

bool IsSameOnceStored(const TaskRecord& first, const TaskRecord& second) {
  return first.Enabled == second.Enabled && first.MediaType == second.MediaType &&
         first.IntervalUnit == second.IntervalUnit && first.Interval == second.Interval &&
         TrimBlanks(first.Name) == second.Name && TrimBlanks(first.Source) == second.Source &&
         first.LastRun == second.LastRun && first.NextRun == second.NextRun;
}

}  // namespace

std::string TaskListRoundTripFault(std::string_view bytes, const HostLocale& locale) {
  const DateSerial now = At(2026, 11, 20, 14, 30, 15);
  const Loading first = Load(bytes, locale, now);
  if (!first.fault.empty()) return first.fault;
  for (size_t i = 0; i < first.tasks.size(); ++i) {
    const std::string fault = FaultOfTask(first.tasks[i], i, now);
    if (!fault.empty()) return fault;
  }

  const Loading second = Load(first.fileAfter, locale, now);
  if (!second.fault.empty()) return second.fault;
  if (first.tasks.size() != second.tasks.size()) return "the lists are not of one length";
  for (size_t i = 0; i < first.tasks.size(); ++i) {
    if (!IsSameOnceStored(first.tasks[i], second.tasks[i])) return "a task has changed";
  }
  if (first.fileAfter != second.fileAfter) return "the files differ";
  return {};
}

}  // namespace tellurvane

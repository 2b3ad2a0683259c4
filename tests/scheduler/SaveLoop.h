// What the program that saves in a loop and the test that kills it have in common.
#pragma once

#include <windows.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <string>

#include "base/DateText.h"
#include "scheduler/DecodeAnsi.h"
#include "scheduler/TaskListFile.h"
#include "scheduler/Win32FileOperations.h"

namespace tellurvane {

// The next step of a save.
enum class SaveStep : std::uint32_t { kCreate, kWrite, kWriteRest, kFlush, kClose, kMove, kReturn };
inline constexpr std::array<const char*, 7> kSaveStepNames = {
    "create", "write", "write the rest", "flush", "close", "move", "return"};

// A step of no save: it goes through all of them.
inline constexpr SaveStep kNoStop = static_cast<SaveStep>(~0U);

// Lives in memory that both share, so that it outlasts the one that is killed.
struct SaveLoopShare {
  std::atomic<std::uint32_t> acknowledged = 0;  // the last generation whose save returned true
  std::atomic<std::uint32_t> failures = 0;      // saves that returned false
  std::atomic<SaveStep> step = SaveStep::kCreate;
  // Written before a loop gets its turn: the generation that it begins with, and the step of the
  // second one at which it stops and waits to be killed.
  std::atomic<std::uint32_t> first = 0;
  std::atomic<SaveStep> stop = kNoStop;
  std::atomic<bool> hasStopped = false;
};
static_assert(std::atomic<std::uint32_t>::is_always_lock_free);
static_assert(std::atomic<SaveStep>::is_always_lock_free);

// Some 20 KB that are a function of the generation alone: any mixture of two generations shows.
inline TaskList ListOfGeneration(std::uint32_t generation) {
  constexpr std::int32_t kTasks = 220;
  TaskList tasks(kTasks);
  for (std::int32_t i = 0; i < kTasks; ++i) {
    TaskRecord& task = tasks[static_cast<size_t>(i)];
    task.Enabled = true;
    task.MediaType = kReminderNote;
    task.Interval = 1 + i % 60;
    task.Name = std::to_wstring(generation);
    task.Source = L"第" + std::to_wstring(i) + L"項提醒，寫入世代" + std::to_wstring(generation);
    task.LastRun = 40588.5;
    task.NextRun = SerialFromSeconds(3'500'000'000LL + generation + i);
  }
  return tasks;
}

// Dates as plain numbers: the locale's writer would bring libraries along, whose loading takes
// longer than the life of the one that is killed.
inline void AppendPlainDate(std::wstring& text, DateSerial date) {
  text += std::to_wstring(SecondsFromSerial(date));
}

inline TaskListFile RealTaskListFile(FileOperations& files, const std::wstring& path) {
  const auto noReader = [] { return DateReader({}, {}); };
  const auto noClock = [] { return DateSerial{0}; };
  return {files, path, {noReader, AppendPlainDate, DecodeAnsi}, noClock};
}

}  // namespace tellurvane

// The process-wide state: folder, single instance, settings, task list, icons.
#pragma once

#include <windows.h>

#include <array>
#include <memory>
#include <string>

#include "app/SettingsFile.h"
#include "scheduler/TaskListFile.h"
#include "scheduler/TaskRecord.h"
#include "scheduler/Win32FileOperations.h"
#include "ui/ClsIcon.h"

namespace tellurvane {

inline constexpr const wchar_t* kApplicationTitle = L"Tellurvane";
inline constexpr size_t kIconCount = kMediaTypeCount + 5;

// Created once by the entry routine, after ClaimInstance.
class ModGeneral {
 public:
  // Reads the settings; throws FatalError when a number is missing.
  explicit ModGeneral(const std::wstring& applicationFolder);

  // The icons of the task list, from the executable. Throws FatalError when one is missing.
  void LoadIcons();
  void ReleaseIcons();

 private:
  Win32FileOperations files_;  // declared before taskListFile, which uses it

 public:
  SettingsFile settingsFile;
  Settings settings;
  TaskList tasks;
  TaskListFile taskListFile;
  bool radioFlag = false;  // a stream plays
  // One for each media type, then the marks for playing, disabled, due, trying and failed. Empty
  // before LoadIcons.
  std::array<std::unique_ptr<ClsIcon>, kIconCount> icons;
};

// The full path of the executable.
std::wstring ModulePath();

// The folder of the executable, without a backslash at its end unless it is a drive's root.
std::wstring ApplicationFolder();

// Takes the single-instance mutex. False if another copy holds it.
bool ClaimInstance();
void ReleaseInstance() noexcept;

// GDI+ for the whole process. False if it is not available.
bool StartGdiplus();
void StopGdiplus();

// Whether the path names a file or a folder.
bool PathExists(const std::wstring& path);

}  // namespace tellurvane

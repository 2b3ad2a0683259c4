// The user's preferences, kept in Setting.ini beside the executable.
#pragma once

#include <cstdint>
#include <string>

#include "base/Pause.h"

namespace tellurvane {

// An on/off setting is on only when it is exactly 1; switching it writes 1 or 0.
constexpr bool IsOn(std::int32_t setting) { return setting == 1; }
constexpr std::int32_t Switched(std::int32_t setting) { return IsOn(setting) ? 0 : 1; }

// Read once at start-up.
struct Settings {
  std::int32_t SavedVolume = 0;  // 0 to 100
  std::int32_t TimeForm = 0;     // the desktop clock is shown
  std::int32_t SongLoop = 0;     // continuous play
  std::int32_t StartPlay = 0;    // start with Windows
  std::wstring FilesPath;        // folder of the file last chosen, with its trailing backslash
  std::wstring HinetUrl;         // what a HiNet station's id is appended to
};

// One file, one section. Each call opens the file anew: nothing is held between them.
class SettingsFile {
 public:
  // The pause comes before a file that another program holds is tried again. Only tests name
  // another one than the platform's own.
  explicit SettingsFile(std::wstring path, Pause pause = SleepFor);

  // Throws FatalError when a number is missing or is none: the program never starts on defaults.
  // Tries for a moment first to open a file that another program holds.
  Settings ReadAll() const;

  // The value cut at 127 units; empty when the key, the section or the file is missing.
  std::wstring Read(const std::wstring& key) const;

  // At once. False when it could not be written; the callers go on with the value in memory.
  bool Write(const std::wstring& key, const std::wstring& value) const;
  bool Write(const std::wstring& key, std::int32_t value) const;

 private:
  std::int32_t ReadNumber(const std::wstring& key) const;

  std::wstring path_;
  Pause pause_;
};

}  // namespace tellurvane

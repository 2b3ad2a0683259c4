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
  std::wstring HinetUrl;         // a HiNet station's id is appended to it
};

// Each call opens and closes the file.
class SettingsFile {
 public:
  // Tests pass a pause of their own. It waits before a file that another program holds is opened
  // again.
  explicit SettingsFile(std::wstring path, Pause pause = SleepFor);

  // Throws FatalError if a number is missing or invalid: the program never starts with defaults.
  // Waits for a moment if another program holds the file.
  Settings ReadAll() const;

  // The value, cut at 127 units; empty if the key, the section or the file is missing.
  std::wstring Read(const std::wstring& key) const;

  // Writes at once. False if that fails.
  bool Write(const std::wstring& key, const std::wstring& value) const;
  bool Write(const std::wstring& key, std::int32_t value) const;

 private:
  std::int32_t ReadNumber(const std::wstring& key) const;

  std::wstring path_;
  Pause pause_;
};

}  // namespace tellurvane

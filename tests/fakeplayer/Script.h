// The script of the fake control, and the log of its calls.
//
// Both are UTF-8 text files in the folder of the environment variable TELLURVANE_PLAYER:
//
//   player.script  lines KEY=VALUE, read again at each call. Members of these names return the
//                  value: playState, currentPosition, duration, status, currentPositionString,
//                  durationString. Timeline.h lists the keys of the timeline.
//                  "fail.MEMBER" is the failure of a member, in hexadecimal digits, or "null":
//                  success without an object or text.
//                  "clock" is the number of seconds by which the program's monotonic clock is
//                  ahead.
//   player.calls   one line for each call: the member, a blank, its argument. "event 5101 3" is an
//                  event that the fake raised. Calls from inside an event begin with "(in event) ".
//                  "awake 1" and "awake 0": the program asked the system to stay awake, or not.
#pragma once

#include <windows.h>

#include <map>
#include <string>

namespace fakeplayer {

class Script {
 public:
  Script();
  ~Script();
  Script(const Script&) = delete;
  Script& operator=(const Script&) = delete;

  void Write(const std::string& line);
  // Keeps the previous values where the file cannot be read.
  void Read();

  // Empty, or 0, for a key that is missing.
  std::wstring Text(const std::string& key) const;
  double Number(const std::string& key) const;

  bool GivesNothing(const std::string& member) const;
  HRESULT Result(const std::string& member) const;

 private:
  std::string Value(const std::string& key) const;

  std::wstring path_;
  HANDLE calls_ = INVALID_HANDLE_VALUE;
  std::map<std::string, std::string> values_;
};

}  // namespace fakeplayer

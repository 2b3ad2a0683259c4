// What the stand-in is to play, and what was asked of it.
//
// Both are text in UTF-8, in the folder that the environment names in TELLURVANE_PLAYER:
//
//   player.script  lines KEY=VALUE. The facts that the members of these names answer with:
//                  playState, currentPosition, duration, status, currentPositionString,
//                  durationString. Those of a control that goes by itself are in Timeline.h.
//                  "fail.MEMBER" is the result, in hexadecimal digits, with which a member
//                  refuses, or "null" where it says yes and hands out nothing.
//                  Read anew at each call.
//   player.calls   one line a call: the member, a blank, its argument. "event 5101 3" is an event
//                  that the stand-in sent; a member called from within one has "(in event) " before
//                  it.
#pragma once

#include <windows.h>

#include <map>
#include <string>

namespace standin {

class Script {
 public:
  Script();
  ~Script();
  Script(const Script&) = delete;
  Script& operator=(const Script&) = delete;

  void Write(const std::string& line);
  // The previous text stays where the file cannot be read just now.
  void Read();

  // Empty, or 0, for what the script does not name.
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

}  // namespace standin

// The states and positions of a control on Windows, as documented: it opens, plays, raises an event
// for each state, and goes back to the start at the end unless autoRewind is off.
//
// An http address is a stream: it has no length, begins at 0 and plays until it is lost.
//
// Its keys in the script (all in seconds):
//
//   mode=windows     the timeline is on; without it the control answers by the script alone
//   opening          the time from play until the media is open
//   currentPosition  the position at which the media begins; a new value moves it there
//   duration         the stated length, which is known after the opening
//   ends             the real end, if it is not the stated length
//   plays            the time from a stream's opening until it is lost; without it, it plays on
//   refuses          the number of starts, from the first one of the program on, that do not open
//   lateTick=1       the thread sleeps from a second before the end until after it
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <functional>
#include <string>

#include "tests/fakeplayer/Script.h"

namespace fakeplayer {

// The dispatch numbers of the events.
inline constexpr DISPID kOpenStateChange = 5001;
inline constexpr DISPID kPlayStateChange = 5101;

class Timeline {
 public:
  // Raises an event with its dispatch number and the new state.
  using Raise = std::function<void(DISPID event, int state)>;

  Timeline(Script& script, Raise raise);

  bool IsOn() const { return script_.Text("mode") == L"windows"; }

  void SetUrl(const std::string& url);
  void Play();
  void Stop();
  void Close();
  void Seek(double seconds);
  void AutoRewind(bool isOn) { rewinds_ = isOn; }

  int PlayState() const { return state_; }
  double Position() const;
  double Duration() const { return isOpen_ && !isStream_ ? script_.Number("duration") : 0; }

  // Called several times a second.
  void Beat();

 private:
  void Become(int state);
  void RaiseOpenState(int state);
  void Begin(double position);
  double End() const;
  void ReachTheEnd();

  Script& script_;
  Raise raise_;
  int state_ = 0;
  bool rewinds_ = true;
  bool isStream_ = false;
  bool isOpen_ = false;
  int starts_ = 0;
  bool isRefused_ = false;
  double opensAt_ = 0;   // on the program's clock
  double begunAt_ = 0;   // when the media was at 0
  double scripted_ = 0;  // the latest position from the script
  double restsAt_ = 0;   // the position while it does not play
};

}  // namespace fakeplayer

// How a control on Windows goes through a piece of media, as it is documented: it opens in its own
// time, plays on from there, tells its states by events, and goes back to the start at the end
// unless autoRewind is off.
//
// The script's facts for it (all in seconds):
//
//   mode=windows     the control goes by itself; without it, it says what the script says
//   opening          from play until the media is open
//   currentPosition  where the media begins; a new value moves it there
//   duration         the stated length, which is known once the media is open
//   ends             where it ends, if not at the stated length
//   lateTick=1       the thread stands still from a second before the end until after it
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <functional>

#include "tests/standin/Script.h"

namespace standin {

class Timeline {
 public:
  // What an event is told with: the dispatch number and the new state.
  using Tell = std::function<void(DISPID event, int state)>;

  Timeline(Script& script, Tell tell);

  bool IsOn() const { return script_.Text("mode") == L"windows"; }

  void SetUrl();
  void Play();
  void Stop();
  void Close();
  void Seek(double seconds);
  void AutoRewind(bool isOn) { rewinds_ = isOn; }

  int PlayState() const { return state_; }
  double Position() const;
  double Duration() const { return isOpen_ ? script_.Number("duration") : 0; }

  // Called some times a second.
  void Beat();

 private:
  void Become(int state);
  void TellOpenState(int state);
  void Begin(double position);
  double End() const;
  void ReachTheEnd();

  Script& script_;
  Tell tell_;
  int state_ = 0;
  bool rewinds_ = true;
  bool isOpen_ = false;
  double opensAt_ = 0;   // on the system's clock
  double begunAt_ = 0;   // where the media stood at 0
  double scripted_ = 0;  // the script's position that was taken over last
  double restsAt_ = 0;   // while it does not play
};

}  // namespace standin

// Plays, stops, follows and seeks media, acts on its end, and keeps a stream alive.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "mainwin/MediaPlayer.h"
#include "mainwin/PlaybackSign.h"
#include "mainwin/StreamKeeper.h"
#include "scheduler/TaskRunner.h"

namespace tellurvane {

// What the main window shows of the playback.
class PlaybackView {
 public:
  virtual ~PlaybackView() = default;
  // Enable one of the toolbar's "播 放" and "停 止", and give the sign to a row or to none.
  virtual void ShowPlaying(size_t row) = 0;
  virtual void ShowStopped() = 0;
  virtual void ShowSign(PlaybackSign sign) = 0;
  // How the run of the row with the sign goes. Without such a row nothing happens.
  virtual void ShowOutcome(const RunOutcome& outcome) = 0;
  // The position slider. Its values are seconds.
  virtual void EnablePosition(bool enable) = 0;
  virtual void PositionRange(double seconds) = 0;
  virtual void PositionValue(double seconds) = 0;
  // The timers that call TimerVis_Tick and TimerOpening_Tick.
  virtual void EnableTimerVis(bool enable) = 0;
  virtual void EnableTimerOpening(bool enable) = 0;
};

// All must be set.
struct PlaybackCallbacks {
  // Whether continuous play is on.
  std::function<bool()> songLoop;
  // Runs the selected task, stop step included.
  std::function<void()> runSelectedTask;
  // Writes the volume to the settings file.
  std::function<void(std::int32_t volume)> writeSavedVolume;
  // Since some moment; never goes back.
  std::function<std::uint64_t()> milliseconds;
  // Whether the computer may not fall asleep by itself. Called for each change.
  std::function<void(bool isAwake)> keepAwake;
};

class PlaybackController final : public TaskPlayer {
 public:
  // The radio flag is true while a stream plays. Others read it.
  PlaybackController(MediaPlayer& player, PlaybackView& view, bool& radioFlag,
                     PlaybackCallbacks callbacks);

  // TaskPlayer. StopPlayback leaves the radio flag as it is.
  void StopPlayback() override;
  void SetRadioFlag(bool isRadio) override { radioFlag_ = isRadio; }
  void SetUrl(const std::wstring& url) override;
  void Play() override { player_.Play(); }
  void ShowPlaying(size_t row) override;
  // At once, or as soon as the media is open: a sleeping disk takes seconds.
  void FollowPosition() override;

  // Since a task's media was started, until playback is stopped.
  bool IsStarted() const { return isStarted_; }

  void TimerVis_Tick();
  void TimerOpening_Tick();
  // Looks at the player once a second. Tries a lost stream again, unless that has to wait.
  void TimerSet_Tick(bool mayTry);
  // The computer falls asleep.
  void FallAsleep();
  // The user set one of the sliders.
  void SliderH_PositionSetByMouse(double seconds) { player_.Position(seconds); }
  void SliderVolH_PositionSet(double value);

 private:
  void FollowNow();
  Sound SoundNow();
  void KeepStream(Sound sound, bool mayTry);
  void WatchMusic(Sound sound);
  void KeepAwake(bool isAwake);

  MediaPlayer& player_;
  PlaybackView& view_;
  bool& radioFlag_;
  PlaybackCallbacks callbacks_;
  std::uint64_t openingSince_ = 0;  // milliseconds
  std::uint64_t startedAt_ = 0;     // milliseconds
  bool isStarted_ = false;
  bool hasPlayed_ = false;  // since it was started
  bool isAwake_ = false;
  unsigned starts_ = 0;  // tries and stops
  StreamKeeper keeper_;
};

}  // namespace tellurvane

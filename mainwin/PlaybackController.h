// Plays, stops, follows and seeks; and what happens when a piece of music ends.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "mainwin/MediaPlayer.h"
#include "scheduler/TaskRunner.h"

namespace tellurvane {

// What the main window shows of the playback.
class PlaybackView {
 public:
  virtual ~PlaybackView() = default;
  // The toolbar's "播 放" and "停 止", of which one can be pressed, and the mark of the row that
  // plays.
  virtual void ShowPlaying(size_t row) = 0;
  virtual void ShowStopped() = 0;
  // The position slider. Its values are seconds.
  virtual void EnablePosition(bool enable) = 0;
  virtual void PositionRange(double seconds) = 0;
  virtual void PositionValue(double seconds) = 0;
  // The timer whose tick is TimerVis_Tick.
  virtual void EnableTimerVis(bool enable) = 0;
  // The timer whose tick is TimerOpening_Tick.
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
  // Milliseconds since some moment; never goes back, whatever the machine's clock is set to.
  std::function<std::uint64_t()> milliseconds;
};

class PlaybackController final : public TaskPlayer {
 public:
  // The radio flag says that what plays is a stream. It is kept outside: others read it.
  PlaybackController(MediaPlayer& player, PlaybackView& view, bool& radioFlag,
                     PlaybackCallbacks callbacks);

  // TaskPlayer. Stopping leaves the radio flag as it is.
  void StopPlayback() override;
  void SetRadioFlag(bool isRadio) override { radioFlag_ = isRadio; }
  void SetUrl(const std::wstring& url) override { player_.Url(url); }
  void Play() override { player_.Play(); }
  void ShowPlaying(size_t row) override { view_.ShowPlaying(row); }
  // At once, or when what was started is open: a disk that sleeps takes longer than anybody should
  // have to wait for.
  void FollowPosition() override;

  void TimerVis_Tick();
  void TimerOpening_Tick();
  // Of the two sliders: what the user set.
  void SliderH_PositionSetByMouse(double seconds) { player_.Position(seconds); }
  void SliderVolH_PositionSet(double value);

 private:
  void FollowNow();

  MediaPlayer& player_;
  PlaybackView& view_;
  bool& radioFlag_;
  PlaybackCallbacks callbacks_;
  std::uint64_t openingSince_ = 0;  // milliseconds
};

}  // namespace tellurvane

// The media player: the Windows Media Player control, invisible.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <memory>

#include "mainwin/MediaPlayer.h"
#include "mainwin/PlayerEvents.h"
#include "ui/Com.h"

struct IWMPControls;
struct IWMPMedia;
struct IWMPPlayer4;
struct IWMPSettings;

namespace tellurvane {

// The control is created when something is played for the first time: it takes more memory than the
// whole program. If that fails, the status says so for a while, and the next URL tries again.
//
// Needs a thread with COM.
class WindowsMediaPlayer final : public MediaPlayer {
 public:
  WindowsMediaPlayer();
  WindowsMediaPlayer(const WindowsMediaPlayer&) = delete;
  WindowsMediaPlayer& operator=(const WindowsMediaPlayer&) = delete;
  ~WindowsMediaPlayer() override;

  void Url(const std::wstring& url) override;
  void Play() override;
  void Stop() override;
  void Close() override;
  bool IsOpening() override;
  bool HasEnded() override;

  int PlayState() override;
  std::wstring Status() override;

  double Position() override;
  void Position(double seconds) override;
  double Duration() override;
  std::wstring PositionText() override;
  std::wstring DurationText() override;

  void Volume(int volume) override;

 private:
  // Creates the control if there is none yet. False if that fails.
  bool Make();
  bool Create();
  void ListenToEvents();
  void ApplyVolume();
  ComPtr<IWMPMedia> CurrentMedia();

  // The tick count when the control could not be created; 0 if it was created.
  ULONGLONG creationFailedAt_ = 0;
  bool isOpen_ = false;     // a URL was set and not closed since
  bool isStarted_ = false;  // the control took the play command
  int volume_ = 0;
  ComPtr<IWMPPlayer4> player_;
  ComPtr<IWMPControls> controls_;
  ComPtr<IWMPSettings> settings_;
  std::shared_ptr<PlayerReports> reports_ = std::make_shared<PlayerReports>();
  ComPtr<IConnectionPoint> events_;
  DWORD eventsCookie_ = 0;
};

}  // namespace tellurvane

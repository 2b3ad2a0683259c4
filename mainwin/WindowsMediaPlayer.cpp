// No library has the constants of the control's header: initguid.h defines them in this file only.
#include "mainwin/WindowsMediaPlayer.h"

#include <windows.h>

#include <initguid.h>
#include <olectl.h>
#include <wmp.h>

#include <algorithm>
#include <cmath>

#include "mainwin/StatusLine.h"

namespace tellurvane {
namespace {

constexpr ULONGLONG kMissingMilliseconds = 10'000;
constexpr int kLoudest = 100;
constexpr double kLongest = 1e9;  // seconds

double ClampedSeconds(double seconds) {
  return std::isfinite(seconds) && seconds > 0 ? std::min(seconds, kLongest) : 0;
}

// For a control without a status text.
std::wstring StateText(int playState) {
  switch (playState) {
    case kStoppedState:
      return L"已停止";
    case kPlayingState:
      return L"正在播放";
    case kBufferingState:
      return L"正在緩衝";
    case kTransitioningState:
      return L"正在開啟媒體";
    default:
      return L"";
  }
}

}  // namespace

WindowsMediaPlayer::WindowsMediaPlayer() = default;

WindowsMediaPlayer::~WindowsMediaPlayer() {
  if (events_) events_->Unadvise(eventsCookie_);
}

bool WindowsMediaPlayer::Make() {
  if (!player_ && !Create()) {
    settings_.Reset();
    controls_.Reset();
    player_.Reset();
  }
  creationFailedAt_ = player_ ? 0 : GetTickCount64();
  return static_cast<bool>(player_);
}

bool WindowsMediaPlayer::Create() {
  if (FAILED(CoCreateInstance(CLSID_WindowsMediaPlayer, nullptr, CLSCTX_INPROC_SERVER,
                              __uuidof(IWMPPlayer4), player_.ReceiveVoid())) ||
      !player_ || FAILED(player_->get_controls(controls_.Receive())) || !controls_ ||
      FAILED(player_->get_settings(settings_.Receive())) || !settings_) {
    return false;
  }
  // Some controls crash if an automatic start fails.
  settings_->put_autoStart(VARIANT_FALSE);
  settings_->put_enableErrorDialogs(VARIANT_FALSE);
  // The end is also seen by a position that has reached the length.
  const Bstr rewinding(L"autoRewind");
  settings_->setMode(rewinding.Get(), VARIANT_FALSE);
  ApplyVolume();
  ListenToEvents();
  return true;
}

// Without events only the control's own answers count.
void WindowsMediaPlayer::ListenToEvents() {
  ComPtr<IConnectionPointContainer> container;
  if (FAILED(
          player_->QueryInterface(__uuidof(IConnectionPointContainer), container.ReceiveVoid())) ||
      !container ||
      FAILED(container->FindConnectionPoint(__uuidof(_WMPOCXEvents), events_.Receive())) ||
      !events_) {
    return;
  }
  const ComPtr<IDispatch> sink = MakePlayerEvents(reports_);
  if (FAILED(events_->Advise(sink.Get(), &eventsCookie_))) events_.Reset();
}

void WindowsMediaPlayer::ApplyVolume() { settings_->put_volume(volume_); }

ComPtr<IWMPMedia> WindowsMediaPlayer::CurrentMedia() {
  ComPtr<IWMPMedia> media;
  if (player_ && FAILED(player_->get_currentMedia(media.Receive()))) media.Reset();
  return media;
}

void WindowsMediaPlayer::Url(const std::wstring& url) {
  if (!Make()) return;
  isStarted_ = false;
  // Before put_URL: reports inside it are about the new media.
  reports_->ForgetMedia();
  const Bstr text(url);
  // If it fails, the control keeps the previous address, which must not play.
  isOpen_ = SUCCEEDED(player_->put_URL(text.Get()));
}

void WindowsMediaPlayer::Play() {
  if (isOpen_) isStarted_ = SUCCEEDED(controls_->play());
}

void WindowsMediaPlayer::Stop() {
  if (controls_) controls_->stop();
  isStarted_ = false;
  // After stop, which reports that it has stopped.
  reports_->ForgetMedia();
}

void WindowsMediaPlayer::Close() {
  if (player_) player_->close();
  isOpen_ = false;
}

// After media that it cannot open the control's state is undefined.
bool WindowsMediaPlayer::IsOpening() {
  const int state = PlayState();
  return isStarted_ && state != kUndefinedState && !reports_->IsMediaOpen(state) &&
         !reports_->HasMediaEnded(state) && Duration() == 0;
}

// Called ten times a second, so it reads the state only after a reported end.
bool WindowsMediaPlayer::HasEnded() {
  return reports_->IsEndReported() && reports_->HasMediaEnded(PlayState());
}

int WindowsMediaPlayer::PlayState() {
  if (creationFailedAt_ != 0) {
    const bool isRecent = GetTickCount64() - creationFailedAt_ < kMissingMilliseconds;
    return isRecent ? kStoppedState : kUndefinedState;
  }
  // A control without `close` stays stopped; for the user it is closed.
  if (!player_ || !isOpen_) return kUndefinedState;
  WMPPlayState state = {};
  return SUCCEEDED(player_->get_playState(&state)) ? static_cast<int>(state)
                                                   : reports_->PlayState();
}

std::wstring WindowsMediaPlayer::Status() {
  if (creationFailedAt_ != 0) return L"找不到媒體播放程式";
  Bstr text;
  if (player_ && SUCCEEDED(player_->get_status(text.Receive()))) return text.Text();
  return StateText(PlayState());
}

double WindowsMediaPlayer::Position() {
  double seconds = 0;
  if (!isOpen_ || FAILED(controls_->get_currentPosition(&seconds))) return 0;
  return ClampedSeconds(seconds);
}

void WindowsMediaPlayer::Position(double seconds) {
  if (controls_) controls_->put_currentPosition(seconds);
}

double WindowsMediaPlayer::Duration() {
  const ComPtr<IWMPMedia> media = CurrentMedia();
  double seconds = 0;
  // A control without `close` keeps the previous media.
  if (!isOpen_ || !media || FAILED(media->get_duration(&seconds))) return 0;
  return ClampedSeconds(seconds);
}

std::wstring WindowsMediaPlayer::PositionText() {
  Bstr text;
  if (controls_ && SUCCEEDED(controls_->get_currentPositionString(text.Receive()))) {
    return text.Text();
  }
  return MediaTimeText(Position());
}

std::wstring WindowsMediaPlayer::DurationText() {
  const ComPtr<IWMPMedia> media = CurrentMedia();
  Bstr text;
  if (media && SUCCEEDED(media->get_durationString(text.Receive()))) return text.Text();
  return MediaTimeText(Duration());
}

void WindowsMediaPlayer::Volume(int volume) {
  volume_ = std::clamp(volume, 0, kLoudest);
  if (settings_) ApplyVolume();
}

}  // namespace tellurvane

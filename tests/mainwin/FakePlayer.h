// A media player that stores its calls and returns what the test sets.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "mainwin/MediaPlayer.h"

namespace tellurvane {

class FakePlayer final : public MediaPlayer {
 public:
  std::vector<std::wstring> calls;
  std::function<void()> whileOpening;   // called inside Url
  std::function<void()> whilePlaying;   // called inside Play
  std::function<void()> whileStopping;  // called inside Stop
  bool isOpening = false;
  bool hasEnded = false;  // reset by Url and Stop
  int state = kUndefinedState;
  int stateReads = 0;
  std::wstring status;
  double position = 0;
  int positionReads = 0;
  double duration = 0;
  int durationReads = 0;
  std::wstring positionText;
  std::wstring durationText;

  void Url(const std::wstring& url) override {
    calls.push_back(L"url " + url);
    hasEnded = false;
    if (whileOpening) whileOpening();
  }
  void Play() override {
    calls.emplace_back(L"play");
    if (whilePlaying) whilePlaying();
  }
  void Stop() override {
    calls.emplace_back(L"stop");
    hasEnded = false;
    if (whileStopping) whileStopping();
  }
  void Close() override { calls.emplace_back(L"close"); }
  bool IsOpening() override { return isOpening; }
  bool HasEnded() override { return hasEnded; }
  int PlayState() override {
    ++stateReads;
    return state;
  }
  std::wstring Status() override { return status; }
  double Position() override {
    ++positionReads;
    return position;
  }
  void Position(double seconds) override {
    calls.push_back(L"position " + std::to_wstring(seconds));
  }
  double Duration() override {
    ++durationReads;
    return duration;
  }
  std::wstring PositionText() override { return positionText; }
  std::wstring DurationText() override { return durationText; }
  void Volume(int volume) override { calls.push_back(L"volume " + std::to_wstring(volume)); }
};

}  // namespace tellurvane

// A playback between a fake player and a fake window.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "mainwin/PlaybackController.h"
#include "tests/mainwin/FakePlayer.h"

namespace tellurvane {

// All calls of the player and of the window are in one list, but for the sign and the outcome.
class PlaybackTest : public testing::Test, public PlaybackView {
 protected:
  void ShowPlaying(size_t row) override { Write(L"playing: row " + std::to_wstring(row)); }
  void ShowStopped() override { Write(L"stopped"); }
  void ShowSign(PlaybackSign shown) override { sign = shown; }
  void ShowOutcome(const RunOutcome& shown) override {
    if (outcome != shown) ++outcomeChanges;
    outcome = shown;
  }
  void EnablePosition(bool enable) override { Write(enable ? L"slider on" : L"slider off"); }
  void PositionRange(double seconds) override { Write(L"range " + std::to_wstring(seconds)); }
  void PositionValue(double seconds) override { Write(L"value " + std::to_wstring(seconds)); }
  void EnableTimerVis(bool enable) override { Write(enable ? L"timer on" : L"timer off"); }
  void EnableTimerOpening(bool enable) override {
    Write(enable ? L"opening timer on" : L"opening timer off");
  }

  void Write(const std::wstring& call) { player.calls.push_back(call); }
  std::vector<std::wstring> Taken() { return std::exchange(player.calls, {}); }

  FakePlayer player;
  bool radioFlag = false;
  bool isSongLoop = false;
  std::uint64_t milliseconds = 1'000'000;
  PlaybackSign sign = PlaybackSign::kNone;
  std::optional<RunOutcome> outcome;  // the latest one
  int outcomeChanges = 0;
  std::vector<bool> awake;  // as asked for
  PlaybackController playback{
      player,
      *this,
      radioFlag,
      {.songLoop = [this] { return isSongLoop; },
       .runSelectedTask = [this] { Write(L"run selected"); },
       .writeSavedVolume =
           [this](std::int32_t volume) { Write(L"write " + std::to_wstring(volume)); },
       .milliseconds = [this] { return milliseconds; },
       .keepAwake = [this](bool isAwake) { awake.push_back(isAwake); }}};
};

}  // namespace tellurvane

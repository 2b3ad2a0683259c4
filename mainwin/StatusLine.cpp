#include "mainwin/StatusLine.h"

#include <array>
#include <cwchar>

namespace tellurvane {
namespace {

constexpr const wchar_t* kMomentPicture = L"yyyy 年 mm 月 dd 日 - AMPM hh 時 mm 分 ss 秒";
constexpr double kLongest = 1e9;  // seconds, thirty years

}  // namespace

std::wstring StatusLineText(MediaPlayer& player, bool isRadio, DateSerial now,
                            const DayHalves& halves) {
  switch (player.PlayState()) {
    case kPlayingState: {
      const std::wstring length = isRadio ? L"" : L" / " + player.DurationText();
      return player.PositionText() + length + L" * " + player.Status();
    }
    case kStoppedState:
    case kBufferingState:
    case kTransitioningState:
      return player.Status();
    default:
      return FormatMoment(kMomentPicture, now, halves);
  }
}

std::wstring StatusLineWords(MediaPlayer& player) {
  switch (player.PlayState()) {
    case kPlayingState:
    case kStoppedState:
    case kBufferingState:
    case kTransitioningState: {
      std::wstring words = player.Status();
      std::erase_if(words, [](wchar_t unit) { return unit >= L'0' && unit <= L'9'; });
      return words;
    }
    default:
      return {};
  }
}

std::wstring MediaTimeText(double seconds) {
  // Not-a-number fails the comparison and counts as 0.
  const long long whole = seconds > 0 && seconds < kLongest ? static_cast<long long>(seconds) : 0;
  const long long hours = whole / 3'600;
  const long long minutes = whole / 60 % 60;
  std::array<wchar_t, 32> text = {};
  if (hours > 0) {
    (void)std::swprintf(text.data(), text.size(), L"%lld:%02lld:%02lld", hours, minutes,
                        whole % 60);
  } else {
    (void)std::swprintf(text.data(), text.size(), L"%02lld:%02lld", minutes, whole % 60);
  }
  return text.data();
}

}  // namespace tellurvane

// The text of the status strip.
#pragma once

#include <string>

#include "base/PictureFormat.h"
#include "mainwin/MediaPlayer.h"

namespace tellurvane {

// The player's state while something plays or loads, else the date and time.
std::wstring StatusLineText(MediaPlayer& player, bool isRadio, DateSerial now,
                            const DayHalves& halves);

// The player's words in that text, without digits; empty while it is the date and time. Screen
// readers hear only of their changes, not of each second and each percent.
std::wstring StatusLineWords(MediaPlayer& player);

// "mm:ss", or "h:mm:ss" from an hour on. A negative, endless or undefined time is "00:00".
std::wstring MediaTimeText(double seconds);

}  // namespace tellurvane

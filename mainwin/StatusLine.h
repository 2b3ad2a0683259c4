// What the status strip says.
#pragma once

#include <string>

#include "base/PictureFormat.h"
#include "mainwin/MediaPlayer.h"

namespace tellurvane {

// What the player does while something plays or is loaded, else the present moment.
std::wstring StatusLineText(MediaPlayer& player, bool isRadio, DateSerial now,
                            const DayHalves& halves);

// Whole seconds as "mm:ss", from an hour on as "h:mm:ss". What is no length of time is "00:00".
std::wstring MediaTimeText(double seconds);

}  // namespace tellurvane

// Receives the player control's events.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <memory>

#include "mainwin/PlayerReports.h"
#include "ui/Com.h"

namespace tellurvane {

// An event sink that only stores what it receives: events come inside the control's own calls, and
// some controls do not survive a call from there. Nothing in it throws. It shares the reports,
// since the control may call it after the player's owner is destroyed.
ComPtr<IDispatch> MakePlayerEvents(std::shared_ptr<PlayerReports> reports);

}  // namespace tellurvane

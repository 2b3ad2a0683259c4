// Hears what the player control reports of its own accord.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <memory>

#include "mainwin/PlayerReports.h"
#include "ui/Com.h"

namespace tellurvane {

// A sink for the control's events. It only writes down: events come in the middle of the control's
// own calls, and a call back into it from there would find it unprepared. It calls nothing that
// could throw. The reports are shared: the sink may be called when the player's owner is gone
// already.
ComPtr<IDispatch> MakePlayerEvents(std::shared_ptr<PlayerReports> reports);

}  // namespace tellurvane

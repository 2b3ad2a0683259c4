// What must hold for a task list file of any bytes; shared by the fuzz target and the tests.
#pragma once

#include <string>
#include <string_view>

#include "tests/support/HostDates.h"

namespace tellurvane {

// Loads the bytes, whereby they are written anew, and loads what was written: the two lists have
// to be the same in all that is stored, the two files the same to the byte, and a list that lost
// something has to have kept the bytes. Says what is wrong; empty when nothing is.
std::string TaskListRoundTripFault(std::string_view bytes, const HostLocale& locale);

}  // namespace tellurvane

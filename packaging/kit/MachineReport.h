// What the reader of a report has to know of the machine.
#pragma once

#include "packaging/kit/Report.h"

namespace tellurvane {

MachineFacts FactsOfThisMachine();

}  // namespace tellurvane

// Facts about the machine for the reader of a report.
#pragma once

#include "packaging/kit/Report.h"

namespace tellurvane {

MachineFacts FactsOfThisMachine();

}  // namespace tellurvane

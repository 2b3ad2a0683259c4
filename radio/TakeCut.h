// Cutting a field out of a page.
#pragma once

#include "radio/StationRows.h"
#include "radio/TextScan.h"

namespace tellurvane {

// Makes the field what stands between a place and the mark behind it. Where the mark does not begin
// within `window` characters the field stays as it was, and the answer is false.
inline bool TakeCut(Cut& field, NextOccurrence& mark, size_t start, size_t window) {
  const size_t end = mark.Within(start, window);
  if (end == kNotFound) return false;
  field = Cut(start, end - start);
  return true;
}

}  // namespace tellurvane

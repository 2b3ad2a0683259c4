// What a row of the task list shows.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/DateText.h"
#include "scheduler/TaskRecord.h"

namespace tellurvane {

// Pixels of 96 dpi. The texts take the right part, from twice the lines' x on; the icon has the
// left one.
inline constexpr int kTaskRowHeight = 86;
inline constexpr int kTaskRowTextLeft = 76;

// The state that a row marks. One at a time, the first that applies.
enum class RowMark { kNone, kPlaying, kDisabled, kDue };

// A task is due when it runs within a minute.
RowMark MarkOf(const TaskRecord& task, DateSerial now, bool isPlaying);

// A rule is a row of underscores; cut, it needs no ellipsis.
enum class RowFont { kName, kRule, kLabel, kValue };

struct RowLine {
  int x = 0;  // as the themed text routine takes it: half of the pixel column
  int y = 0;  // below the row's upper edge, in pixels of 96 dpi
  std::wstring text;
  std::uint32_t color = 0;  // ARGB
  RowFont font = RowFont::kLabel;

  bool operator==(const RowLine&) const = default;
};

// The name first. A task that never ran has words instead of a date.
std::vector<RowLine> TaskRowLines(const TaskRecord& task, const DateWriter& writeDate);

}  // namespace tellurvane

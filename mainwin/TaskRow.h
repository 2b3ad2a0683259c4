// The contents of a row of the task list.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/DateText.h"
#include "mainwin/PlaybackSign.h"
#include "scheduler/TaskRecord.h"

namespace tellurvane {

// Pixels of 96 dpi. The icon is left of the texts.
inline constexpr int kTaskRowHeight = 86;
inline constexpr int kTaskRowTextLeft = 76;

// A row has one mark, the first that applies.
enum class RowMark { kNone, kTrying, kPlaying, kFailed, kDisabled, kDue };

// What a row knows beside its task.
struct RowState {
  PlaybackSign sign = PlaybackSign::kNone;
  bool hasFailed = false;
};

// A task is due when it runs within a minute.
RowMark MarkOf(const TaskRecord& task, DateSerial now, const RowState& state);

// A rule is a row of underscores; it is cut without an ellipsis.
enum class RowFont { kName, kRule, kLabel, kValue };

struct RowLine {
  int x = 0;  // half of the pixel column, as ModTheme::Text takes it
  int y = 0;  // from the row's upper edge, in pixels of 96 dpi
  std::wstring text;
  std::uint32_t color = 0;  // ARGB
  RowFont font = RowFont::kLabel;

  bool operator==(const RowLine&) const = default;
};

// The date, or that there is none.
std::wstring LastRunText(const TaskRecord& task, const DateWriter& writeDate);

// The name is the first line.
std::vector<RowLine> TaskRowLines(const TaskRecord& task, const DateWriter& writeDate);

}  // namespace tellurvane

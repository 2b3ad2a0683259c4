// The task list as text: one task a line, each line ended by CR LF, five fields parted by TAB.
//
//   IntervalUnit|Interval|Enabled|MediaType <TAB> Name <TAB> Source <TAB> LastRun <TAB> NextRun
//
// docs/files.md describes the file byte by byte.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "base/DateText.h"
#include "scheduler/TaskRecord.h"

namespace tellurvane {

struct DecodedText {
  DecodedText(std::wstring decoded, bool isLossy = false)
      : text(std::move(decoded)), hasLoss(isLossy) {}

  std::wstring text;
  // Whether the bytes may hold something that the text does not.
  bool hasLoss;

  bool operator==(const DecodedText&) const = default;
};

// Turns bytes in the user's ANSI code page into UTF-16.
using AnsiDecoder = std::function<DecodedText(std::string_view bytes)>;

// UTF-16 after the byte order mark FF FE, ANSI without it. Nothing when UTF-16 ends in half a unit.
std::optional<DecodedText> DecodeTaskListBytes(std::string_view bytes,
                                               const AnsiDecoder& decodeAnsi);

struct TaskListReading {
  TaskList tasks;
  // Whether the text held anything that the tasks do not: a malformed line, text after an empty
  // line, surplus fields, an unreadable date.
  bool hasLoss = false;
};

// Takes the lines up to the first empty one. A malformed line (fewer than five fields or four
// parts, a part that is no number) is skipped. A date that cannot be read becomes 0. A next
// run in the past is moved forward (strict).
TaskListReading ReadTaskListText(std::wstring_view text, const DateReader& dates, DateSerial now);

// A name or a source as it will be read back: trimmed, each TAB and CR LF inside a blank.
std::wstring FieldText(std::wstring_view field);

// The bytes of the whole file, the mark included. Deleted tasks are left out; names and sources
// are trimmed, and a TAB or CR LF inside one, which would break the line, becomes a blank.
std::string TaskListBytes(std::span<const TaskRecord> tasks, const DateWriter& writeDate);

}  // namespace tellurvane

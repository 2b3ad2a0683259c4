// Any text as what a user types into a task's fields and a note: whatever is accepted is a task
// that the list's file gives back as it is.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>

#include "base/Number.h"
#include "base/Text.h"
#include "notes/NoteText.h"
#include "scheduler/TaskListText.h"
#include "scheduler/TaskValidation.h"
#include "tests/support/HostDates.h"

namespace tellurvane {
namespace {

void Expect(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

// The first two bytes choose the lists' entries; a zero byte parts the texts.
struct Typed {
  TaskFields fields;
  std::wstring note;
};

Typed FromBytes(std::string_view bytes) {
  Typed typed;
  const auto take = [&bytes] {
    if (bytes.empty()) return 0;
    const int value = static_cast<unsigned char>(bytes.front());
    bytes.remove_prefix(1);
    return value;
  };
  typed.fields.mediaType = take() % 6 - 1;
  typed.fields.timeType = take() % 5 - 1;
  typed.fields.isEnabled = take() % 2 == 1;
  typed.fields.firstRun = 40'000 + take();
  for (std::wstring* const text :
       {&typed.fields.name, &typed.fields.source, &typed.fields.interval, &typed.note}) {
    for (int unit = take(); unit != 0; unit = take()) {
      // Chinese too, and halves of surrogate pairs.
      *text += static_cast<wchar_t>(unit < 0x80   ? unit
                                    : unit < 0xC0 ? 0x4E00 + unit
                                                  : 0xD7C0 + unit);
    }
  }
  return typed;
}

void TryTask(const TaskFields& fields) {
  const ValidationCallbacks callbacks = {
      .clock = [] { return 40'050.5; },
      .pathExists = [](const std::wstring& path) { return path.size() % 2 == 0; },
      .isSameName = EqualsIgnoringAsciiCase};
  TaskRecord other;
  other.Name = L"other";
  const auto outcome = ValidateTask(fields, {}, {other}, callbacks);
  if (const auto* const error = std::get_if<ValidationError>(&outcome)) {
    Expect(!error->message.empty(), "an error says why");
    return;
  }
  const TaskRecord& task = std::get<TaskRecord>(outcome);
  Expect(task.Interval >= 1 && task.NextRun >= callbacks.clock(), "a task has a time to come");
  const auto bytes = DecodeTaskListBytes(TaskListBytes(std::span(&task, 1), HostDateWriter(ZhTw())),
                                         [](std::string_view) { return DecodedText(L""); });
  Expect(bytes.has_value(), "a written list is whole");
  const TaskListReading read =
      ReadTaskListText(bytes->text, HostDateReader(ZhTw()), callbacks.clock());
  Expect(!read.hasLoss && read.tasks.size() == 1, "a task is one line");
  const TaskRecord& back = read.tasks.front();
  Expect(back.Name == task.Name && back.Source == task.Source, "texts come back");
  Expect(back.Interval == task.Interval && back.IntervalUnit == task.IntervalUnit &&
             back.MediaType == task.MediaType && back.Enabled == task.Enabled,
         "numbers come back");
}

void TryNote(const std::wstring& note) {
  const std::wstring stored = StoredNoteText(note);
  Expect(stored.find(L"\r\n") == std::wstring::npos, "a stored note is one line of the list");
  Expect(StoredNoteText(NoteTextWithBreaks(stored)) == stored, "a stored note comes back");
  const NoteExtent extent = MeasureNote(note);
  Expect(extent.longest <= note.size() && extent.lines <= note.size() + 1, "a note's extent");
  (void)DrawableNoteText(note);
}

void TryNumbers(const std::wstring& text) {
  const auto integer = ParseInteger(text);
  (void)ParseBoolean(text);
  (void)ParseNumber(text);
  if (!integer) return;
  std::wstring written;
  AppendInteger(written, *integer);
  Expect(ParseInteger(written) == integer, "a written number reads back");
}

}  // namespace
}  // namespace tellurvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  const tellurvane::Typed typed =
      tellurvane::FromBytes({reinterpret_cast<const char*>(data), size});
  tellurvane::TryTask(typed.fields);
  tellurvane::TryNote(typed.note);
  tellurvane::TryNumbers(typed.fields.interval);
  return 0;
}

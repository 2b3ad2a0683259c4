// The text of a note, as it is stored and as it is shown.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tellurvane {

// The note editor's advice. Nothing enforces it.
inline constexpr size_t kNoteLines = 8;
inline constexpr size_t kNoteLineCharacters = 21;

// A line break is stored as the four characters \r\n and shown as CR LF. Nothing else changes.
std::wstring NoteTextWithBreaks(std::wstring_view stored);
std::wstring StoredNoteText(std::wstring_view text);

// With a blank on each empty line: on some systems GDI+ skips an empty line.
std::wstring DrawableNoteText(std::wstring_view text);

struct NoteExtent {
  size_t lines = 0;    // 0 for an empty text
  size_t longest = 0;  // characters of the longest line, a surrogate pair counted once
};
// Of a text with CR LF.
NoteExtent MeasureNote(std::wstring_view text);

}  // namespace tellurvane

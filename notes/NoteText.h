// How a note's text fits on one line of the task list.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tellurvane {

// What the note's author is asked to keep to. Nothing enforces it.
inline constexpr size_t kNoteLines = 8;
inline constexpr size_t kNoteLineCharacters = 21;

// A line break is stored as the four characters \r\n. Written for a screen it is CR LF. Nothing
// else changes: a stored text comes back as it was.
std::wstring NoteTextWithBreaks(std::wstring_view stored);
std::wstring StoredNoteText(std::wstring_view text);

// With a blank on each empty line: some systems' text drawing leaves out a line without any
// character.
std::wstring DrawableNoteText(std::wstring_view text);

struct NoteExtent {
  size_t lines = 0;    // 0 for an empty text
  size_t longest = 0;  // characters of the longest line, a surrogate pair counted once
};
// Of a text with CR LF.
NoteExtent MeasureNote(std::wstring_view text);

}  // namespace tellurvane

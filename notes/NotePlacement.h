// Where a new note is placed.
#pragma once

#include <span>

namespace tellurvane {

// Twips.
inline constexpr int kNoteWidth = 5'400;
inline constexpr int kNoteLeastHeight = 1'800;

struct NotePlace {
  double left = 0;
  double top = 0;

  bool operator==(const NotePlace&) const = default;
};

struct OpenNote {
  double top = 0;
  double height = 0;
};

// Below the open notes, which are in the order in which they were shown, on the right-hand side of
// the screen. The next column, to the left, begins where the stack would pass nine tenths of the
// screen's height. All twips.
NotePlace PlaceOfNote(std::span<const OpenNote> open, double width, double height,
                      double screenWidth, double screenHeight);

}  // namespace tellurvane

// Where a note comes up.
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

struct StandingNote {
  double top = 0;
  double height = 0;
};

// Below the notes that stand already, given in the order in which they came up, on the right-hand
// side of the screen; in the next column to the left where the stack would pass nine tenths of the
// screen's height. All twips.
NotePlace PlaceOfNote(std::span<const StandingNote> standing, double width, double height,
                      double screenWidth, double screenHeight);

}  // namespace tellurvane

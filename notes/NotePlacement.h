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

// Places a note below the open notes, on the right-hand side of the screen. `open` is in the order
// of showing. After a note that ends below nine tenths of the screen's height, a new column begins
// at the left. All lengths are twips.
NotePlace PlaceOfNote(std::span<const OpenNote> open, double width, double height,
                      double screenWidth, double screenHeight);

}  // namespace tellurvane

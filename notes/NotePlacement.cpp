#include "notes/NotePlacement.h"

namespace tellurvane {
namespace {

constexpr double kStep = 900;
constexpr double kColumnGap = 150;
constexpr double kLowest = 0.9;
constexpr double kRightShare = 0.87;
constexpr double kTopShare = 0.2;

}  // namespace

NotePlace PlaceOfNote(std::span<const OpenNote> open, double width, double height,
                      double screenWidth, double screenHeight) {
  double offset = 0;
  int column = 0;
  for (const OpenNote& note : open) {
    offset += kStep;
    if (note.top + note.height > kLowest * screenHeight) {
      ++column;
      offset = 0;
    }
  }
  // The new note counts too: even the first one is a step down.
  offset += kStep;
  return {kRightShare * (screenWidth - width / 2) - column * (width + kColumnGap),
          kTopShare * screenHeight - height / 2 + offset};
}

}  // namespace tellurvane

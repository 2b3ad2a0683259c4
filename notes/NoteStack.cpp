#include "notes/NoteStack.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace tellurvane {

NoteStack::NoteStack(Pause pause) : pause_(std::move(pause)) {
  afterwards_.Interval(10);
  afterwards_.Tick = [this] {
    afterwards_.Enabled(false);
    ForgetClosed();
  };
}

void NoteStack::Show(const std::wstring& text, const std::wstring& time) {
  ForgetClosed();
  std::vector<StandingNote> standing;
  for (const auto& note : notes_) {
    if (note->IsLoaded()) {
      standing.push_back({static_cast<double>(note->Top()), static_cast<double>(note->Height())});
    }
  }
  auto note = std::make_unique<frmNotes>(++made_, pause_);
  frmNotes& shown = *note;
  shown.Closed = [this] { ForgetLater(); };
  shown.Prepare(text, time, standing);
  // Only now: one that could not be made would stand here unseen, and keep its place.
  notes_.push_back(std::move(note));
  shown.ShowNote();
}

void NoteStack::CloseAll() {
  for (const auto& note : notes_) note->Unload();
}

size_t NoteStack::Count() const {
  return static_cast<size_t>(
      std::ranges::count_if(notes_, [](const auto& note) { return note->IsLoaded(); }));
}

void NoteStack::ForgetLater() {
  try {
    afterwards_.Enabled(true);
  } catch (const std::exception&) {
    // Passed over, unlike any other refused timer: the note is gone from the screen, and what is
    // left of it goes when the next one is shown.
    return;
  }
}

void NoteStack::ForgetClosed() {
  std::erase_if(notes_, [](const auto& note) { return !note->IsLoaded(); });
}

}  // namespace tellurvane

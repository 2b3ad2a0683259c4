#include "notes/NoteStack.h"

namespace tellurvane {

void NoteStack::Show(const std::wstring& text, const std::wstring& time) {
  std::erase_if(notes_, [](const auto& note) { return !note->IsLoaded(); });
  std::vector<OpenNote> open;
  for (const auto& note : notes_) {
    open.push_back({static_cast<double>(note->Top()), static_cast<double>(note->Height())});
  }
  auto note = std::make_unique<frmNotes>(++made_, pause_, keyboard_);
  note->Prepare(text, time, open);
  // Only a note that has a window takes a place in the stack.
  notes_.push_back(std::move(note));
  notes_.back()->ShowNote();
}

std::vector<HWND> NoteStack::Windows() const {
  std::vector<HWND> windows;
  for (const auto& note : notes_) {
    if (note->IsLoaded()) windows.push_back(note->hwnd());
  }
  return windows;
}

void NoteStack::CloseAll() {
  for (const auto& note : notes_) note->Unload();
}

}  // namespace tellurvane

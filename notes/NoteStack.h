// The notes that are open.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "notes/frmNotes.h"

namespace tellurvane {

class NoteStack {
 public:
  // `pause` waits between the steps of a fade.
  explicit NoteStack(Pause pause, NoteKeyboard keyboard = {})
      : pause_(std::move(pause)), keyboard_(std::move(keyboard)) {}

  // Shows a new note below those that are open. Returns when it has faded in.
  void Show(const std::wstring& text, const std::wstring& time);
  // At once, without fading.
  void CloseAll();

  // The open notes, the oldest first.
  std::vector<HWND> Windows() const;

 private:
  Pause pause_;
  NoteKeyboard keyboard_;
  unsigned made_ = 0;
  // A note that closes is still in its own handler: it is freed when the next one is shown.
  std::vector<std::unique_ptr<frmNotes>> notes_;
};

}  // namespace tellurvane

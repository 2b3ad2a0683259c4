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
  explicit NoteStack(Pause pause) : pause_(std::move(pause)) {}

  // Shows a new note below those that are open. Returns when it has faded in.
  void Show(const std::wstring& text, const std::wstring& time);
  // At once, without fading.
  void CloseAll();

 private:
  Pause pause_;
  unsigned made_ = 0;
  // A note that closes is still in its own handler: it is freed when the next one is shown.
  std::vector<std::unique_ptr<frmNotes>> notes_;
};

}  // namespace tellurvane

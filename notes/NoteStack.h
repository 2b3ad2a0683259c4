// The notes that are open.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "notes/frmNotes.h"
#include "ui/Timer.h"

namespace tellurvane {

class NoteStack {
 public:
  // `pause` waits between the steps of a fade.
  explicit NoteStack(Pause pause);

  // A new note, whatever is open. Returns when it has faded in.
  void Show(const std::wstring& text, const std::wstring& time);
  // At once, without fading.
  void CloseAll();

  // The notes on the screen.
  size_t Count() const;

 private:
  void ForgetLater();
  void ForgetClosed();

  Pause pause_;
  unsigned made_ = 0;
  std::vector<std::unique_ptr<frmNotes>> notes_;
  // A note that closes is still at work: its object goes when it is done.
  Timer afterwards_;
};

}  // namespace tellurvane

// A reminder note: a small borderless window that fades in and out.
#pragma once

#include <windows.h>

#include <functional>
#include <span>
#include <string>

#include "base/Pause.h"
#include "notes/NotePlacement.h"
#include "ui/Form.h"
#include "ui/PictureBox.h"

namespace tellurvane {

// A note and the keyboard. Any may be left empty.
struct NoteKeyboard {
  // A click is about to give the keyboard to the note.
  std::function<void()> isTaken;
  // The note that has the keyboard closes.
  std::function<void()> isFree;
  // F6: the keyboard goes to the next window.
  std::function<void()> next;
};

// The close image. It lights up under the pointer.
class CloseImage final : public PictureBox {
 public:
  std::function<void()> Click;

  void CreateAt(HWND parent, int x, int y, int size);

 private:
  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void DrawImage(HDC context) const;
  void SetHot(bool isHot);

  int size_ = 0;
  bool isHot_ = false;
};

class frmNotes final : public Form {
 public:
  // Each note of a process needs a number of its own: its window class is named after it.
  frmNotes(unsigned number, Pause pause, NoteKeyboard keyboard = {});
  frmNotes(const frmNotes&) = delete;
  frmNotes& operator=(const frmNotes&) = delete;
  ~frmNotes() override;

  // Creates the note, invisible, below those that are open. `text` is as the task list stores it;
  // `time` is shown above.
  void Prepare(const std::wstring& text, const std::wstring& time, std::span<const OpenNote> open);
  // Fades it in, which takes a quarter of a second. The keyboard stays where it is.
  void ShowNote();
  // Fades out and unloads.
  void Close();

 private:
  void Form_Load() override;
  bool Form_Unload() override;
  bool Form_KeyDown(const KeyEvent& event) override;
  void Form_Enter() override { Close(); }
  void Form_Escape() override { Close(); }
  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void ColorsChanged() override;

  void Form_MouseDown(const MouseEvent& event);
  void Form_MouseMove() { PullInside(); }
  void Form_DblClick() { Close(); }
  void Describe(const std::wstring& name);
  int HeightNeeded();
  void Draw(HDC context);

  std::wstring className_;
  Pause pause_;
  NoteKeyboard keyboard_;
  std::wstring text_;
  std::wstring FormTime_;
  ULONG_PTR savedClassStyle_ = 0;
  bool isClosing_ = false;
  bool isFocused_ = false;
  CloseImage picCerrar_;
};

}  // namespace tellurvane

// Notes and their editor where the platform refuses.
#include <windows.h>

#include <gtest/gtest.h>

#include <vector>

#include "base/FatalError.h"
#include "notes/NoteStack.h"
#include "notes/frmNotesEdit.h"
#include "tests/support/ActingForm.h"
#include "tests/support/EachCallFails.h"
#include "tests/support/GdiPlusSession.h"

namespace tellurvane {
namespace {

void WithoutPause(unsigned /*milliseconds*/) {}

void ShowAndCloseNote() {
  static unsigned made = 0;
  const GdiPlusSession gdiPlus;
  frmNotes note(1'000'000 + ++made, WithoutPause);
  note.Prepare(L"喝水\\r\\n休息", L"2026/11/21 上午 09:05:07", {});
  note.ShowNote();
  const HWND image = InsideOf(note.hwnd(), L"TellurvanePictureBox").at(0);
  SendMouse(image, WM_MOUSEMOVE, 5, 5);
  SendMessageW(image, WM_SETCURSOR, 0, 0);
  Pump();
  note.Close();
}

size_t NoteWindows() {
  std::vector<HWND> notes;
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND window, LPARAM all) {
        if (WindowText(window) == L"frmNotes") {
          reinterpret_cast<std::vector<HWND>*>(all)->push_back(window);
        }
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&notes));
  return notes.size();
}

// As the runner does, which passes over a note that cannot be shown.
void StackNotes() {
  const GdiPlusSession gdiPlus;
  NoteStack stack(WithoutPause);
  size_t shown = 0;
  for (int i = 0; i < 2; ++i) {
    try {
      stack.Show(L"喝水", L"09:05:07");
      ++shown;
    } catch (const FatalError&) {
      continue;
    }
  }
  EXPECT_EQ(NoteWindows(), shown);
  stack.CloseAll();
}

void EditNote() {
  ActingForm owner;
  std::wstring written;
  frmNotesEdit editor(L"喝水", [&](const std::wstring& text) { written = text; });
  owner.ActLater([&] {
    const std::vector<HWND> boxes = InsideOf(editor.hwnd(), L"RichEdit20W");
    if (!boxes.empty()) {
      SendMessageW(boxes[0], EM_SETSEL, 0, -1);
      SendMessageW(boxes[0], EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"休息"));
    }
    PressButton(editor.hwnd(), L"確 定");
    EndDialogWindow(editor.hwnd());
  });
  editor.Open(owner.hwnd());
  EXPECT_TRUE(written.empty() || written == L"休息") << "not a part of it";
}

TEST(FailingCallsTest, NotesAreShownOrPassedOver) {
  const Scenario scenarios[] = {
      {"note", ShowAndCloseNote},
      {"note stack", StackNotes, {"CreateWindowExW"}},
      {"note editor", EditNote, {"CreateWindowExW"}},
  };
  for (const Scenario& scenario : scenarios) FailEachCall(scenario);
}

}  // namespace
}  // namespace tellurvane

// Notes and their editor when a call fails.
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

// Like the task runner, which ignores a note that cannot be shown.
void StackNotes() {
  const GdiPlusSession gdiPlus;
  NoteStack stack(WithoutPause);
  for (int i = 0; i < 2; ++i) {
    try {
      stack.Show(L"喝水\\r\\n休息", L"09:05:07");
    } catch (const FatalError&) {
      continue;
    }
  }
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
  EXPECT_TRUE(written.empty() || written == L"休息");
}

TEST(FailingCallsTest, NotesAreShownOrFail) {
  const Scenario scenarios[] = {
      {"note stack", StackNotes, {"CreateWindowExW"}},
      {"note editor", EditNote, {"CreateWindowExW"}},
  };
  for (const Scenario& scenario : scenarios) FailEachCall(scenario);
}

}  // namespace
}  // namespace tellurvane

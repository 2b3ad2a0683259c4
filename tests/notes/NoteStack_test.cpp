#include "notes/NoteStack.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/FormProbe.h"
#include "tests/support/GdiPlusSession.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/Density.h"

namespace tellurvane {
namespace {

// In the order in which they were shown.
std::vector<HWND> NotesOnScreen() {
  std::vector<HWND> notes;
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND window, LPARAM all) {
        if (WindowText(window) == L"frmNotes" && IsWindowVisible(window)) {
          reinterpret_cast<std::vector<HWND>*>(all)->push_back(window);
        }
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&notes));
  std::ranges::sort(notes, {}, [](HWND note) { return std::stoi(ClassOf(note).substr(8)); });
  return notes;
}

bool IsRegistered(const std::wstring& windowClass) {
  WNDCLASSEXW definition = {};
  definition.cbSize = sizeof(definition);
  return GetClassInfoExW(GetModuleHandleW(nullptr), windowClass.c_str(), &definition) != 0;
}

class NoteStackTest : public testing::Test {
 protected:
  GdiPlusSession gdiPlus;
  int pauses = 0;
  NoteStack stack{[this](unsigned) { ++pauses; }};
};

// Also where the note is still in its own handler: the system's move with the mouse runs inside it.
TEST_F(NoteStackTest, FreesAClosedNoteWhenTheNextIsShown) {
  for (const bool isDragged : {false, true}) {
    stack.Show(L"a", L"b");
    const HWND note = NotesOnScreen().at(0);
    const std::wstring windowClass = ClassOf(note);
    const auto closeAndShow = [&] {
      SendMouse(note, WM_LBUTTONDBLCLK, 50, 50, MK_LBUTTON);
      EXPECT_TRUE(IsRegistered(windowClass)) << "it is in its own handler";
      stack.Show(L"c", L"d");
    };
    if (isDragged) {
      const CaughtMessage move(note, WM_NCLBUTTONDOWN, closeAndShow);
      SendMouse(note, WM_LBUTTONDOWN, 50, 50, MK_LBUTTON);
    } else {
      closeAndShow();
    }
    EXPECT_FALSE(IsRegistered(windowClass));
    EXPECT_EQ(NotesOnScreen().size(), 1U);
    stack.CloseAll();
  }
}

TEST_F(NoteStackTest, ClosesAllAtOnceWithoutFading) {
  for (int i = 0; i < 3; ++i) stack.Show(L"a", L"b");
  pauses = 0;
  stack.CloseAll();
  EXPECT_EQ(pauses, 0);
  EXPECT_TRUE(NotesOnScreen().empty());
  stack.CloseAll();
}

TEST_F(NoteStackTest, AClosedNoteGivesItsPlaceFreeAndAFullColumnBeginsAnother) {
  stack.Show(L"a", L"b");
  const RECT first = OnScreen(NotesOnScreen().at(0));
  SendMouse(NotesOnScreen().at(0), WM_LBUTTONDBLCLK, 50, 50, MK_LBUTTON);
  const LONG limit = 9 * GetSystemMetrics(SM_CYSCREEN) / 10;
  LONG top = first.top;
  for (LONG bottom = 0; bottom <= limit; top += PixelsFromTwips(900)) {
    stack.Show(L"a", L"b");
    const RECT newest = OnScreen(NotesOnScreen().back());
    ASSERT_EQ(newest.top, top);
    bottom = newest.bottom;
  }
  stack.Show(L"a", L"b");
  const RECT newest = OnScreen(NotesOnScreen().back());
  EXPECT_EQ(newest.top, first.top);
  EXPECT_LT(newest.left, first.left);
}

TEST_F(NoteStackTest, NamesTheOpenNotesFromTheOldestOn) {
  EXPECT_TRUE(stack.Windows().empty());
  for (int i = 0; i < 3; ++i) stack.Show(L"a", L"b");
  const std::vector<HWND> all = stack.Windows();
  ASSERT_EQ(all.size(), 3U);
  EXPECT_LT(OnScreen(all[0]).top, OnScreen(all[1]).top);
  EXPECT_LT(OnScreen(all[1]).top, OnScreen(all[2]).top);
  SendMouse(all[1], WM_LBUTTONDBLCLK, 50, 50, MK_LBUTTON);
  EXPECT_EQ(stack.Windows(), (std::vector<HWND>{all[0], all[2]}));
}

TEST_F(NoteStackTest, LeaksNothing) {
  EXPECT_EQ(LeakedBy([this] {
              stack.Show(L"一\\r\\n二", L"09:05:07");
              stack.Show(L"三", L"09:05:07");
              for (const HWND note : NotesOnScreen()) {
                SendMouse(InsideOf(note, L"TellurvanePictureBox").at(0), WM_MOUSEMOVE, 8, 8);
                SendMouse(note, WM_LBUTTONDBLCLK, 50, 50, MK_LBUTTON);
              }
            }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane

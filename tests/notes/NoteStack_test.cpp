#include "notes/NoteStack.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

#include "tests/support/FailingImport.h"
#include "tests/support/FormProbe.h"
#include "tests/support/GdiPlusSession.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/Density.h"

namespace tellurvane {
namespace {

// From one note down to the next, in pixels.
int Step() { return PixelsFromTwips(900); }

// The notes of this process, in the order in which they came up.
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

TEST_F(NoteStackTest, ShowsSeveralAtOnceNineHundredTwipsApart) {
  for (size_t i = 0; i < 5; ++i) {
    stack.Show(L"第 " + std::to_wstring(i), L"09:05:07");
    EXPECT_EQ(stack.Count(), i + 1);
  }
  const std::vector<HWND> notes = NotesOnScreen();
  ASSERT_EQ(notes.size(), 5U);
  for (size_t i = 1; i < notes.size(); ++i) {
    EXPECT_EQ(OnScreen(notes[i]).top - OnScreen(notes[i - 1]).top, Step());
    EXPECT_EQ(OnScreen(notes[i]).left, OnScreen(notes[0]).left);
  }
}

TEST_F(NoteStackTest, NoNoteCoversTheCloseImageOfAnother) {
  for (int i = 0; i < 5; ++i) stack.Show(L"a", L"b");
  for (const HWND note : NotesOnScreen()) {
    const RECT image = OnScreen(InsideOf(note, L"TellurvanePictureBox").at(0));
    const HWND at =
        WindowFromPoint({(image.left + image.right) / 2, (image.top + image.bottom) / 2});
    EXPECT_EQ(GetAncestor(at, GA_ROOT), note);
  }
}

TEST_F(NoteStackTest, EachClosesByItself) {
  for (int i = 0; i < 3; ++i) stack.Show(L"a", L"b");
  const std::vector<HWND> notes = NotesOnScreen();
  SendMouse(notes[1], WM_LBUTTONDBLCLK, 50, 50, MK_LBUTTON);
  EXPECT_EQ(NotesOnScreen(), (std::vector<HWND>{notes[0], notes[2]}));
  EXPECT_EQ(stack.Count(), 2U);
  const HWND image = InsideOf(notes[0], L"TellurvanePictureBox").at(0);
  SendMouse(image, WM_LBUTTONUP, 8, 8);
  EXPECT_EQ(NotesOnScreen(), std::vector<HWND>{notes[2]});
}

TEST_F(NoteStackTest, TheNextNoteComesBelowThoseThatAreLeft) {
  for (int i = 0; i < 3; ++i) stack.Show(L"a", L"b");
  const std::vector<HWND> before = NotesOnScreen();
  const LONG first = OnScreen(before[0]).top;
  for (const HWND note : before) SendMouse(note, WM_LBUTTONDBLCLK, 50, 50, MK_LBUTTON);
  stack.Show(L"a", L"b");
  EXPECT_EQ(OnScreen(NotesOnScreen().at(0)).top, first);
}

TEST_F(NoteStackTest, ForgetsAClosedNoteAndItsClass) {
  stack.Show(L"a", L"b");
  const std::wstring windowClass = ClassOf(NotesOnScreen().at(0));
  ASSERT_TRUE(IsRegistered(windowClass));
  SendMouse(NotesOnScreen().at(0), WM_LBUTTONDBLCLK, 50, 50, MK_LBUTTON);
  EXPECT_TRUE(PumpUntil([&] { return !IsRegistered(windowClass); }));
}

TEST_F(NoteStackTest, ForgetsAClosedNoteAtTheNextOneWhereThereIsNoTimer) {
  stack.Show(L"a", L"b");
  const std::wstring windowClass = ClassOf(NotesOnScreen().at(0));
  {
    FailingImport timer({.name = "SetTimer"});
    timer.Fail(1, INT_MAX);
    SendMouse(NotesOnScreen().at(0), WM_LBUTTONDBLCLK, 50, 50, MK_LBUTTON);
    EXPECT_GT(timer.Calls(), 0);
  }
  EXPECT_EQ(stack.Count(), 0U);
  Pump();
  EXPECT_TRUE(IsRegistered(windowClass)) << "nobody has cleaned up";
  stack.Show(L"a", L"b");
  EXPECT_FALSE(IsRegistered(windowClass));
  EXPECT_EQ(stack.Count(), 1U);
}

TEST_F(NoteStackTest, ClosesAllAtOnceWithoutFading) {
  for (int i = 0; i < 3; ++i) stack.Show(L"a", L"b");
  pauses = 0;
  stack.CloseAll();
  EXPECT_EQ(pauses, 0);
  EXPECT_EQ(stack.Count(), 0U);
  EXPECT_TRUE(NotesOnScreen().empty());
  stack.CloseAll();
}

TEST_F(NoteStackTest, AColumnThatIsFullIsFollowedByTheNextOne) {
  // Only the rows of the first column matter here: on a narrow screen the second one begins inside.
  LONG first = 0;
  LONG left = 0;
  const LONG limit = 9 * GetSystemMetrics(SM_CYSCREEN) / 10;
  for (int i = 0; i < 30; ++i) {
    stack.Show(L"a", L"b");
    const std::vector<HWND> notes = NotesOnScreen();
    const RECT newest = OnScreen(notes.back());
    if (i == 0) {
      first = newest.top;
      left = newest.left;
      continue;
    }
    const RECT previous = OnScreen(notes[notes.size() - 2]);
    if (previous.bottom <= limit) {
      ASSERT_EQ(newest.top, previous.top + Step());
      continue;
    }
    EXPECT_EQ(newest.top, first);
    EXPECT_LT(newest.left, left);
    return;
  }
  FAIL() << "no second column";
}

TEST_F(NoteStackTest, LeavesNothingBehind) {
  EXPECT_EQ(LeakedBy([this] {
              stack.Show(L"一\\r\\n二", L"09:05:07");
              stack.Show(L"三", L"09:05:07");
              std::wstring last;
              for (const HWND note : NotesOnScreen()) {
                last = ClassOf(note);
                SendMouse(note, WM_LBUTTONDBLCLK, 50, 50, MK_LBUTTON);
              }
              // Its object goes a moment later.
              PumpUntil([&] { return !IsRegistered(last); });
            }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane

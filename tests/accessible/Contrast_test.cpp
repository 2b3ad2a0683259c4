// Every window in the normal colours and under high contrast.
#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>

#include <string>

#include "notes/frmNotes.h"
#include "notes/frmNotesEdit.h"
#include "tests/accessible/WindowPicture.h"
#include "tests/clock/ClockFixture.h"
#include "tests/mainwin/FrmMainFixture.h"
#include "tests/radio/RadioFixture.h"
#include "tests/scheduler/EditorFixture.h"
#include "tests/support/ActingForm.h"
#include "tests/support/GdiPlusSession.h"

namespace tellurvane {
namespace {

class MainWindowContrastTest : public FrmMainTest {
 protected:
  // A playing, a disabled and a selected one; their dates do not depend on the present moment.
  void OpenWithTasks() {
    TaskList tasks;
    for (const MediaType type : {kLocalMusic, kInternetRadio, kApplication, kReminderNote}) {
      TaskRecord task;
      task.Name = L"早晨新聞 " + std::to_wstring(type);
      task.Source = L"http://a";
      task.MediaType = type;
      task.Enabled = type != kInternetRadio;
      task.IntervalUnit = kHours;
      task.Interval = 1;
      task.NextRun = At(2040, 2, 15, 12);
      tasks.push_back(task);
    }
    WriteBytes(folder.File(L"JobList.dbs"), TaskListBytes(tasks, AppendLocaleDateText));
    player.state = kStoppedState;
    player.status = L"已停止";
    Open();
    general->LoadIcons();
    Select(2);
    window->Open();
  }

  GdiPlusSession gdiPlus;
};

TEST_F(MainWindowContrastTest, TheMainWindow) {
  OpenWithTasks();
  SavePicture(PictureOf(window->hwnd()), "main");
}

using EditorContrastTest = EditorFixture;
TEST_F(EditorContrastTest, TheEditor) {
  tasks = {Task(L"a"), Task(L"b")};
  Play(0, [&] { SavePicture(PictureOf(window), "editor"); });
}

using RadioContrastTest = RadioFixture;
TEST_F(RadioContrastTest, TheRadioDirectory) {
  Play([&] {
    SearchHinet();
    SelectRow(1);
    SavePicture(PictureOf(window), "radio");
  });
}

TEST(NoteEditorContrastTest, TheNoteEditor) {
  ActingForm owner;
  frmNotesEdit editor(L"喝水", [](const std::wstring&) {});
  owner.ActLater([&] {
    SavePicture(PictureOf(editor.hwnd()), "note editor");
    PostMessageW(editor.hwnd(), WM_CLOSE, 0, 0);
  });
  editor.Open(owner.hwnd());
}

TEST(NoteContrastTest, ANote) {
  const GdiPlusSession gdiPlus;
  frmNotes note(1, [](unsigned) {});
  note.Prepare(L"喝水\\r\\n休息", L"2026/11/21 上午 09:05:07", {});
  note.ShowNote();
  SavePicture(PictureOf(note.hwnd()), "note");
}

using ClockContrastTest = FrmTimeTest;
TEST_F(ClockContrastTest, TheClock) {
  ShowAt(kMorning);
  SavePicture(PictureOf(clock->hwnd()), "clock");
}

}  // namespace
}  // namespace tellurvane

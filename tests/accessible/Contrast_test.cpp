// Every window in the normal colours and under high contrast.
#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>
#include <richedit.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "notes/frmNotes.h"
#include "notes/frmNotesEdit.h"
#include "tests/accessible/WindowPicture.h"
#include "tests/clock/ClockFixture.h"
#include "tests/mainwin/FrmMainFixture.h"
#include "tests/radio/RadioFixture.h"
#include "tests/scheduler/EditorFixture.h"
#include "tests/support/ActingForm.h"
#include "tests/support/ContrastScheme.h"
#include "tests/support/GdiPlusSession.h"
#include "tests/support/Wine.h"

// SetSysColors leaves the visual styles on, which a contrast theme of Windows switches off.
#define SKIP_NATIVE_CONTROLS_UNLESS_WINE() \
  SKIP_UNLESS_WINE("native controls keep the pixels of their visual style")

namespace tellurvane {
namespace {

// Grounds that we paint in the normal colours. Some native controls have the greys too.
const std::vector<Color> kNormalGrounds = {
    Rgb(0xF4, 0xF1, 0xFA), Rgb(0xF6, 0xF4, 0xFB), Rgb(0xFB, 0xFA, 0xFE), Rgb(0xFF, 0xF8, 0xE8),
    Rgb(0xF5, 0xDE, 0xB2), Rgb(0x1E, 0x0A, 0x3C), Rgb(0xFB, 0xF1, 0xDC), Rgb(0x6A, 0x3F, 0xA0)};
const std::vector<Color> kNormalGreys = {Rgb(0xEB, 0xEB, 0xEB), Rgb(0xF7, 0xF7, 0xF7),
                                         Rgb(0xF3, 0xF3, 0xF3)};

bool Has(const WindowPicture& picture, Color color) {
  return std::ranges::find(picture.pixels, color) != picture.pixels.end();
}

// The window takes the colours of each scheme at once and none of its own grounds, and afterwards
// it looks as before. `colors` are indices of system colours that it shows.
void ExpectContrast(HWND window, const std::string& name, std::initializer_list<int> colors,
                    const std::vector<Color>& grounds = kNormalGrounds) {
  const WindowPicture normal = PictureOf(window);
  SavePicture(normal, name);
  for (const auto& [scheme, suffix] :
       {std::pair{kBlackScheme, " black"}, std::pair{kWhiteScheme, " white"}}) {
    const ContrastScheme switched(scheme, window);
    const WindowPicture picture = PictureOf(window);
    SavePicture(picture, name + suffix);
    for (const int color : colors) {
      EXPECT_TRUE(Has(picture, GetSysColor(color))) << name << suffix << " color " << color;
    }
    for (const Color ground : grounds) {
      EXPECT_FALSE(Has(picture, ground)) << name << suffix << std::hex << " ground " << ground;
    }
  }
  EXPECT_TRUE(PictureOf(window).pixels == normal.pixels) << name;
}

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

  // Light lines around the toolbar's pictures.
  bool HasOutlines() const {
    RECT all = {};
    GetClientRect(toolbar, &all);
    return ToolbarShows(Rgb(0xFE, 0xFE, 0xFE), all);
  }
  bool ToolbarShows(Color color, RECT place) const {
    MapWindowPoints(toolbar, window->hwnd(), reinterpret_cast<POINT*>(&place), 2);
    const WindowPicture picture = PictureOf(window->hwnd());
    for (auto y = static_cast<int>(place.top); y < place.bottom; ++y) {
      for (auto x = static_cast<int>(place.left); x < place.right; ++x) {
        if (picture.At(x, y) == color) return true;
      }
    }
    return false;
  }

  GdiPlusSession gdiPlus;
};

TEST_F(MainWindowContrastTest, TheToolbarsPicturesHaveOutlinesOnADarkGroundOnly) {
  SKIP_NATIVE_CONTROLS_UNLESS_WINE();
  OpenWithTasks();
  EXPECT_FALSE(HasOutlines());
  RECT button = {};
  SendMessageW(toolbar, TB_GETRECT, kNew, reinterpret_cast<LPARAM>(&button));
  EXPECT_FALSE(ToolbarShows(kWhite, button)) << "the white of the pictures is transparent";
  {
    const ContrastScheme black(kBlackScheme, window->hwnd());
    EXPECT_TRUE(HasOutlines());
  }
  const ContrastScheme white(kWhiteScheme, window->hwnd());
  EXPECT_FALSE(HasOutlines());
}

TEST_F(MainWindowContrastTest, TheMainWindow) {
  SKIP_NATIVE_CONTROLS_UNLESS_WINE();
  OpenWithTasks();
  ExpectContrast(window->hwnd(), "main",
                 {COLOR_WINDOW, COLOR_WINDOWTEXT, COLOR_BTNFACE, COLOR_BTNTEXT, COLOR_HIGHLIGHT,
                  COLOR_HIGHLIGHTTEXT});
}

using EditorContrastTest = EditorFixture;
TEST_F(EditorContrastTest, TheEditor) {
  SKIP_NATIVE_CONTROLS_UNLESS_WINE();
  tasks = {Task(L"a"), Task(L"b")};
  Play(0, [&] { ExpectContrast(window, "editor", {COLOR_BTNFACE, COLOR_BTNTEXT, COLOR_WINDOW}); });
}

// They have the face colour, on which the window's text may not be readable.
TEST_F(EditorContrastTest, ALockedTextHasTheInkOfItsGround) {
  tasks = {Task(L"a")};
  Play(0, [&] {
    const ContrastScheme switched(kBlackScheme, window);
    const auto ink = [this] {
      CHARFORMATW format = {};
      format.cbSize = sizeof(format);
      SendMessageW(txtSrc, EM_GETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&format));
      return format.crTextColor;
    };
    EXPECT_EQ(ink(), GetSysColor(COLOR_WINDOWTEXT));
    Click(cmdCancelJob);
    EXPECT_EQ(Writable(), "");
    EXPECT_EQ(ink(), GetSysColor(COLOR_BTNTEXT));
  });
}

using RadioContrastTest = RadioFixture;
TEST_F(RadioContrastTest, TheRadioDirectory) {
  SKIP_NATIVE_CONTROLS_UNLESS_WINE();
  Play([&] {
    SearchHinet();
    SelectRow(1);
    ExpectContrast(window, "radio",
                   {COLOR_WINDOW, COLOR_WINDOWTEXT, COLOR_BTNFACE, COLOR_BTNTEXT, COLOR_HIGHLIGHT,
                    COLOR_HIGHLIGHTTEXT},
                   kNormalGreys);
  });
}

TEST(NoteEditorContrastTest, TheNoteEditor) {
  SKIP_NATIVE_CONTROLS_UNLESS_WINE();
  ActingForm owner;
  frmNotesEdit editor(L"喝水", [](const std::wstring&) {});
  owner.ActLater([&] {
    ExpectContrast(editor.hwnd(), "note editor",
                   {COLOR_WINDOW, COLOR_WINDOWTEXT, COLOR_BTNFACE, COLOR_BTNTEXT});
    PostMessageW(editor.hwnd(), WM_CLOSE, 0, 0);
  });
  editor.Open(owner.hwnd());
}

TEST(NoteContrastTest, ANote) {
  const GdiPlusSession gdiPlus;
  frmNotes note(1, [](unsigned) {});
  note.Prepare(L"喝水\\r\\n休息", L"2026/11/21 上午 09:05:07", {});
  note.ShowNote();
  ExpectContrast(note.hwnd(), "note", {COLOR_WINDOW, COLOR_WINDOWTEXT});
}

using ClockContrastTest = FrmTimeTest;
TEST_F(ClockContrastTest, TheClock) {
  ShowAt(kMorning);
  ExpectContrast(clock->hwnd(), "clock", {COLOR_WINDOW, COLOR_WINDOWTEXT, COLOR_HIGHLIGHT});
}

}  // namespace
}  // namespace tellurvane

// Every window of the program at the density of this screen. The test is run once for each density.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <urlmon.h>

#include <algorithm>
#include <memory>
#include <string>

#include "mainwin/TaskRow.h"
#include "mainwin/TaskRowPainter.h"
#include "notes/frmNotes.h"
#include "notes/frmNotesEdit.h"
#include "radio/HttpGetText.h"
#include "tests/clock/ClockFixture.h"
#include "tests/density/LayoutChecks.h"
#include "tests/mainwin/FrmMainFixture.h"
#include "tests/radio/RadioFixture.h"
#include "tests/scheduler/EditorFixture.h"
#include "tests/support/ActingForm.h"
#include "tests/support/GdiPlusSession.h"
#include "ui/ModTheme.h"

namespace tellurvane {
namespace {

// Pixels between two rows of a list.
int RowHeightOf(HWND list) {
  RECT first = {LVIR_BOUNDS, 0, 0, 0};
  SendMessageW(list, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&first));
  return static_cast<int>(first.bottom - first.top);
}

// Within 6 % of what the row of 96 dpi is on this screen.
void ExpectRowHeight(HWND list, int pixelsAt96Dpi) {
  const double expected = pixelsAt96Dpi * DotsPerInch() / 96.0;
  EXPECT_NEAR(RowHeightOf(list), expected, 0.06 * expected);
}

int WidthOf(HWND window) {
  const RECT place = OnScreen(window);
  return static_cast<int>(place.right - place.left);
}

// As many lines and characters as the hint of the note's editor allows.
std::wstring FullNote() {
  const std::wstring line(21, L'國');
  std::wstring text = line;
  for (int i = 1; i < 8; ++i) text += L"\\r\\n" + line;
  return text;
}

class MainWindowDensityTest : public FrmMainTest {
 protected:
  GdiPlusSession gdiPlus;
};

TEST_F(MainWindowDensityTest, TheMainWindowShowsEverything) {
  Tasks({{kLocalMusic, L"a.mp3"}, {kInternetRadio, L"http://a"}});
  Open();
  EXPECT_EQ(WidthOf(window->hwnd()), PixelsFromTwips(5'320));
  ExpectGoodLayout(window->hwnd());
  ExpectRowHeight(list, 86);
}

TEST_F(MainWindowDensityTest, TheSlidersCanBeClickedFromTheirUpperToTheirLowerEdge) {
  Open();
  const int sliderX[] = {Scaled(5), Scaled(5 + 70 + 8)};
  for (const int x : sliderX) {
    const HWND top = ChildWindowFromPoint(window->hwnd(), {x + 3, Scaled(28)});
    const HWND bottom = ChildWindowFromPoint(window->hwnd(), {x + 3, Scaled(28) + Scaled(19) - 1});
    EXPECT_NE(top, window->hwnd());
    EXPECT_EQ(top, bottom) << "something covers a part of it";
  }
}

TEST_F(MainWindowDensityTest, TheRowsOwnTextsAreNotClipped) {
  TaskRecord task;
  task.Name = L"早晨新聞";
  task.Interval = 60;
  task.LastRun = task.NextRun = At(2026, 12, 31, 23, 59, 59);
  const std::vector<RowLine> lines = TaskRowLines(task, AppendLocaleDateText);
  const auto picture = MemoryContext::Create(8, 8);
  for (const RowLine& line : lines) {
    if (line.font != RowFont::kLabel) continue;
    const int beside = Scaled(2 * lines.back().x) - Scaled(2 * line.x);
    EXPECT_EQ(FittingText(picture->Dc(), line.text, beside, line.font), line.text);
  }
  const auto last = ModTheme::MeasureText(picture->Dc(), lines.back().text, {.size = 13});
  EXPECT_LE(static_cast<float>(Scaled(lines.back().y) + 1) + last.height,
            static_cast<float>(Scaled(86)));
}

TEST_F(MainWindowDensityTest, TheStatusStripHoldsItsLongestDate) {
  Open();
  const auto picture = MemoryContext::Create(8, 8);
  const auto extent =
      ModTheme::MeasureText(picture->Dc(), L"2026 年 12 月 22 日 - 上午 12 時 58 分 58 秒",
                            {.size = 12, .style = ModTheme::kBold});
  EXPECT_LE(static_cast<float>(Scaled(4)) + extent.width, static_cast<float>(window->ScaleWidth()));
  EXPECT_LE(static_cast<float>(Scaled(1) + 1) + extent.height, static_cast<float>(Scaled(22)));
}

SIZE SizeOf(HICON icon) {
  ICONINFO facts = {};
  if (icon == nullptr || !GetIconInfo(icon, &facts)) return {};
  const UniqueBitmap color(facts.hbmColor);
  const UniqueBitmap mask(facts.hbmMask);
  BITMAP extent = {};
  GetObjectW(mask.Get(), sizeof(extent), &extent);
  return {extent.bmWidth, extent.bmHeight};
}

TEST_F(MainWindowDensityTest, IconsAndToolbarImagesGrowWithTheScreen) {
  Open();
  const auto icon = [&](int size) {
    return SizeOf(reinterpret_cast<HICON>(GetClassLongPtrW(window->hwnd(), size)));
  };
  EXPECT_EQ(icon(GCLP_HICON).cx, GetSystemMetrics(SM_CXICON));
  EXPECT_EQ(icon(GCLP_HICONSM).cx, GetSystemMetrics(SM_CXSMICON));
  int width = 0;
  int height = 0;
  ASSERT_TRUE(ImageList_GetIconSize(
      reinterpret_cast<HIMAGELIST>(SendMessageW(toolbar, TB_GETIMAGELIST, 0, 0)), &width, &height));
  EXPECT_EQ(width, Scaled(16));
}

TEST_F(EditorFixture, TheEditorShowsEverything) {
  tasks = {Task(L"a"), Task(L"b")};
  Play(0, [&] {
    ExpectGoodLayout(window);
    ExpectRowHeight(list, 18);
    // The frame of a dialog shows only an icon of its own.
    const LRESULT icon = SendMessageW(window, WM_GETICON, ICON_SMALL, 0);
    EXPECT_EQ(SizeOf(reinterpret_cast<HICON>(icon)).cx, GetSystemMetrics(SM_CXSMICON));
    for (size_t media = 0; media < Entries(cboMediaType).size(); ++media) {
      Choose(cboMediaType, static_cast<int>(media));
      ExpectTextFits(lblSource);
    }
    for (size_t unit = 0; unit < Entries(cboTimeType).size(); ++unit) {
      Choose(cboTimeType, static_cast<int>(unit));
      ExpectTextFits(lblInterval);
    }
  });
}

TEST_F(RadioFixture, TheRadioDirectoryShowsEverything) {
  Play([&] {
    fetch = [](const std::wstring&) { return HinetPage({L"a", L"b"}); };
    SearchHinet();
    ASSERT_EQ(RowCount(), 2);
    ExpectGoodLayout(window);
    ExpectRowHeight(list, 28);
    fetch = [](const std::wstring&) -> std::wstring { throw FetchError(INET_E_CANNOT_CONNECT); };
    Search();
    ASSERT_NE(Status(), L"");
    ExpectTextFits(lblStatus);
  });
}

TEST(NoteEditorDensityTest, TheNoteEditorShowsEverything) {
  ActingForm owner;
  frmNotesEdit editor(FullNote(), [](const std::wstring&) {});
  owner.ActLater([&] {
    ExpectGoodLayout(editor.hwnd());
    PostMessageW(editor.hwnd(), WM_CLOSE, 0, 0);
  });
  editor.Open(owner.hwnd());
}

TEST(NoteDensityTest, ANoteShowsItsLinesAndGrowsWithTheScreen) {
  const GdiPlusSession gdiPlus;
  frmNotes note(1, [](unsigned) {});
  note.Prepare(FullNote(), L"2026/11/21 上午 09:05:07", {});
  note.ShowNote();
  EXPECT_EQ(WidthOf(note.hwnd()), PixelsFromTwips(5'400));
  ExpectGoodLayout(note.hwnd());
  const RECT place = OnScreen(note.hwnd());
  const LONG spareWidth = GetSystemMetrics(SM_CXSCREEN) - (place.right - place.left);
  const LONG spareHeight = GetSystemMetrics(SM_CYSCREEN) - (place.bottom - place.top);
  const double left = 0.87 * (spareWidth + (place.right - place.left) / 2.0);
  const double top =
      0.2 * GetSystemMetrics(SM_CYSCREEN) - (place.bottom - place.top) / 2.0 + PixelsFromTwips(900);
  EXPECT_NEAR(place.left, std::min<double>(left, spareWidth), 1);
  EXPECT_NEAR(place.top, std::min<double>(top, spareHeight), 1);
  // Ink of the last character, which would be further left at 96 dpi.
  const int lastLine = note.ScaleHeight() - Scaled(10) - 1;
  const int right = Scaled(10) + Scaled(16) * 20;
  const RECT end = {right, lastLine - Scaled(16), right + Scaled(16), lastLine};
  EXPECT_GT(std::ranges::count(PixelsIn(note.Dc(), end), kBlack), 0);
}

TEST_F(FrmTimeTest, TheClockShowsEverything) {
  ShowAt(kMorning);
  EXPECT_EQ(WidthOf(clock->hwnd()), PixelsFromTwips(4'170));
  ExpectGoodLayout(clock->hwnd());
  const Scale scale = FaceScale(DotsPerInch());
  for (const Box box : kAllBoxes) {
    RECT inside = {};
    GetClientRect(BoxWindow(box), &inside);
    EXPECT_EQ(inside.right, scale.Scaled(16) * (box == kYear ? 4 : 2));
    EXPECT_EQ(inside.bottom, scale.Scaled(25));
  }
  if (DotsPerInch() > 120) return;
  EXPECT_EQ(Face(Middle() + 21, Middle() - 24), kRed);
  EXPECT_EQ(Face(Middle() + 16, Middle() - 28), kBlue);
}

}  // namespace
}  // namespace tellurvane

#include "notes/frmNotes.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/ContrastScheme.h"
#include "tests/support/FormProbe.h"
#include "tests/support/GdiPlusSession.h"
#include "tests/support/WindowTestSupport.h"
#include "tests/support/Wine.h"
#include "tests/ui/Canvas.h"
#include "tests/ui/ClipboardSupport.h"
#include "ui/Density.h"
#include "ui/ModTheme.h"

namespace tellurvane {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

const std::wstring kFullLine(21, L'國');

std::wstring Lines(int count, const std::wstring& line) {
  std::wstring text = line;
  for (int i = 1; i < count; ++i) text += L"\\r\\n" + line;
  return text;
}

class frmNotesTest : public testing::Test {
 protected:
  void TearDown() override { note.reset(); }

  frmNotes& Prepare(const std::wstring& text, const std::vector<OpenNote>& standing = {},
                    const std::wstring& time = L"2026/11/21 上午 09:05:07") {
    static unsigned made = 0;
    note = std::make_unique<frmNotes>(++made, log.Pause());
    note->Prepare(text, time, standing);
    log.window = note->hwnd();
    return *note;
  }
  frmNotes& Show(const std::wstring& text = L"喝水") {
    Prepare(text).ShowNote();
    Pump();
    log.Forget();
    return *note;
  }
  void DoubleClick(int x, int y) const {
    SendMouse(note->hwnd(), WM_LBUTTONDBLCLK, x, y, MK_LBUTTON);
  }
  void Press(UINT key, LPARAM lParam = 1) const {
    SetFocus(note->hwnd());
    PostMessageW(note->hwnd(), WM_KEYDOWN, key, lParam);
    Pump();
  }
  HWND CloseImageWindow() const { return InsideOf(note->hwnd(), L"TellurvanePictureBox").at(0); }
  // The rows of pixels, top to bottom, that have black ink below the time.
  struct Band {
    int top = 0;
    int bottom = 0;
  };
  std::vector<Band> TextLines() {
    std::vector<Band> lines;
    rightmostInk = 0;
    bool wasInk = false;
    for (int y = 21; y < note->ScaleHeight() - 1; ++y) {
      bool isInk = false;
      for (int x = 1; x < note->ScaleWidth() - 1; ++x) {
        const Color color = PixelOf(note->Dc(), x, y);
        if ((color & 0xFF) >= 0x30 || (color >> 8 & 0xFF) >= 0x30 || color >> 16 >= 0x30) continue;
        isInk = true;
        rightmostInk = std::max(rightmostInk, x);
      }
      if (isInk && !wasInk) lines.push_back({y, y});
      if (isInk) lines.back().bottom = y;
      wasInk = isInk;
    }
    return lines;
  }

  GdiPlusSession gdiPlus;
  FadeLog log;
  int rightmostInk = 0;
  std::unique_ptr<frmNotes> note;
};

TEST_F(frmNotesTest, GrowsWithItsLinesUpToTheScreensHeight) {
  for (const wchar_t* const text : {L"", L"喝水", L"a\\r\\nb"}) {
    EXPECT_EQ(Prepare(text).Width(), 5'400);
    EXPECT_EQ(note->Height(), 1'800);
  }
  int before = 1'800;
  for (int lines = 5; lines <= 12; ++lines) {
    const int height = Prepare(Lines(lines, kFullLine)).Height();
    EXPECT_GT(height, before) << lines << " lines";
    EXPECT_EQ(note->Width(), 5'400);
    before = height;
  }
  EXPECT_EQ(Prepare(Lines(9, L"a")).Height(), Prepare(Lines(8, L"a") + L"\\r\\n").Height())
      << "an empty last line counts";
  EXPECT_EQ(PixelsFromTwips(Prepare(Lines(200, L"a")).Height()), GetSystemMetrics(SM_CYSCREEN));
}

TEST_F(frmNotesTest, EightLinesOfTwentyOneCharactersFit) {
  Show(Lines(8, kFullLine));
  const std::vector<Band> lines = TextLines();
  EXPECT_GE(lines.size(), 8U);
  EXPECT_LT(lines.back().bottom, note->ScaleHeight() - 4);
  EXPECT_GT(rightmostInk, 320) << "the last character is there";
  EXPECT_LT(rightmostInk, note->ScaleWidth() - 4) << "and not cut";
  // A longer line does not cover the edge.
  Show(std::wstring(60, L'國'));
  const Color edge = PixelOf(note->Dc(), 0, 60);
  for (int y = 0; y < note->ScaleHeight(); ++y) {
    ASSERT_EQ(PixelOf(note->Dc(), note->ScaleWidth() - 1, y), edge) << y;
  }
}

TEST_F(frmNotesTest, OnlyAStoredBreakBeginsALine) {
  Show(L"一一一一");
  EXPECT_EQ(TextLines().size(), 1U);
  Show(L"一\\r\\n一\\r\\n\\r\\n一");
  const std::vector<Band> lines = TextLines();
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_GE(lines[2].top - lines[1].top, 2 * (lines[1].top - lines[0].top) - 1)
      << "an empty line between";
}

TEST_F(frmNotesTest, WritesTheTimeAndTheTextInTheirPlacesSizesAndColours) {
  Prepare(L" ", {}, L" ").ShowNote();
  // The last column is painted over the text.
  const int width = note->ScaleWidth() - 1;
  const Canvas expected(width, note->ScaleHeight(), kWhite);
  BitBlt(expected.Dc(), 0, 0, width, note->ScaleHeight(), note->Dc(), 0, 0, SRCCOPY);
  const std::vector<Color> paper = expected.Pixels();
  ModTheme::Text(expected.Dc(), L"12:00", 2, 2, {0xFF4B0082, 0xFFF5DEB3, 0xFFFFFFFF},
                 {L"Arial Unicode MS", 12, ModTheme::kBold});
  ModTheme::Text(expected.Dc(), L"喝水", 5, 20, {0xFF000000, 0xFFF5DEB3, 0xFFFFFFFF},
                 {L"Arial Unicode MS", 16, ModTheme::kBold});
  Prepare(L"喝水", {}, L"12:00").ShowNote();
  EXPECT_NE(expected.Pixels(), paper);
  EXPECT_EQ(PixelsIn(note->Dc(), {0, 0, width, note->ScaleHeight()}), expected.Pixels());
}

TEST_F(frmNotesTest, IsCreatedInvisibleAtItsPlace) {
  const int first = Prepare(L"a").Top();
  const LONG_PTR style = GetWindowLongPtrW(note->hwnd(), GWL_EXSTYLE);
  EXPECT_TRUE(style & WS_EX_LAYERED);
  EXPECT_TRUE(style & WS_EX_TOOLWINDOW);
  EXPECT_TRUE(style & WS_EX_TOPMOST);
  EXPECT_FALSE(style & WS_EX_APPWINDOW);
  EXPECT_EQ(OpacityOf(note->hwnd()), 0);
  EXPECT_FALSE(note->Visible());
  EXPECT_EQ(WindowText(note->hwnd()), L"frmNotes");

  EXPECT_EQ(Prepare(L"a", {{1'000, 1'800}}).Top() - first, 900);
}

TEST_F(frmNotesTest, FadesInInSevenStepsAndOutOnceInSix) {
  bool isClosing = false;
  note = std::make_unique<frmNotes>(1'000, [&, write = log.Pause()](unsigned milliseconds) {
    write(milliseconds);
    if (isClosing) DoubleClick(100, 60);
  });
  note->Prepare(L"a", L"b", {});
  log.window = note->hwnd();
  note->ShowNote();
  EXPECT_THAT(log.opacities, ElementsAre(0, 40, 80, 120, 160, 200, 240));
  EXPECT_EQ(OpacityOf(note->hwnd()), 230);
  EXPECT_TRUE(note->Visible());
  isClosing = true;
  note->Close();
  EXPECT_THAT(log.opacities, ElementsAre(0, 40, 80, 120, 160, 200, 240, 200, 160, 120, 80, 40, 0));
  EXPECT_THAT(log.milliseconds, Each(30));
  EXPECT_FALSE(note->IsLoaded());
}

TEST_F(frmNotesTest, ClosesInEachOfItsWays) {
  const struct {
    const char* name;
    std::function<void()> close;
  } ways[] = {
      {"double-click at the top", [this] { DoubleClick(5, 5); }},
      {"double-click in the middle", [this] { DoubleClick(180, 60); }},
      {"double-click at the bottom", [this] { DoubleClick(359, 119); }},
      {"close message", [this] { SendMessageW(note->hwnd(), WM_CLOSE, 0, 0); }},
      {"close image", [this] { SendMouse(CloseImageWindow(), WM_LBUTTONUP, 8, 8); }},
      {"Esc", [this] { Press(VK_ESCAPE); }},
      {"Enter", [this] { Press(VK_RETURN); }},
  };
  for (const auto& [name, close] : ways) {
    Show();
    close();
    EXPECT_FALSE(note->IsLoaded()) << name;
    EXPECT_EQ(log.opacities.size(), 6U) << name;
  }
}

TEST_F(frmNotesTest, ReportsWhenItTakesTheKeyboardPassesItOnAndGivesItBack) {
  std::vector<std::string> events;
  note = std::make_unique<frmNotes>(1'001, log.Pause(),
                                    NoteKeyboard{.isTaken = [&] { events.emplace_back("taken"); },
                                                 .isFree = [&] { events.emplace_back("free"); },
                                                 .next = [&] { events.emplace_back("next"); }});
  note->Prepare(L"a", L"b", {});
  log.window = note->hwnd();
  TestForm other;
  SetForegroundWindow(other.hwnd());
  note->ShowNote();
  EXPECT_EQ(GetForegroundWindow(), other.hwnd());
  SendMessageW(note->hwnd(), WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(note->hwnd()),
               MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN));
  Press(VK_F6);
  Press(VK_F6, 0x4000'0001);
  {
    const HeldKeys held({VK_SHIFT});
    Press(VK_F6);
  }
  Press(VK_ESCAPE);
  EXPECT_THAT(events, ElementsAre("taken", "next", "free"))
      << "a key that is held down acts once, and Shift+F6 is another key";
  EXPECT_FALSE(note->IsLoaded());
}

TEST_F(frmNotesTest, HasAThickEdgeWhileItHasTheKeyboard) {
  Show();
  const auto edge = [this] {
    int width = 0;
    while (PixelOf(note->Dc(), width, 60) == PixelOf(note->Dc(), 0, 60)) ++width;
    return width;
  };
  EXPECT_EQ(edge(), 1);
  SetFocus(note->hwnd());
  EXPECT_EQ(edge(), 3);
  SetFocus(nullptr);
  EXPECT_EQ(edge(), 1);
}

TEST_F(frmNotesTest, TheCloseImageIsAtTheTopRightAndLightsUp) {
  Show();
  const RECT image = OnScreen(CloseImageWindow());
  const RECT outer = OnScreen(note->hwnd());
  EXPECT_LE(outer.right - image.right, 8);
  EXPECT_LE(image.top - outer.top, 8);
  const auto picture = [this] {
    return PixelsIn(ObjectOf(CloseImageWindow()).Dc(), {0, 0, 16, 16});
  };
  const std::vector<Color> atRest = picture();
  EXPECT_GT(std::ranges::count_if(atRest, [&](Color color) { return color != atRest[0]; }), 20);
  SendMouse(CloseImageWindow(), WM_MOUSEMOVE, 8, 8);
  EXPECT_NE(picture(), atRest);
  SetCursor(LoadCursorW(nullptr, IDC_ARROW));
  SendMessageW(CloseImageWindow(), WM_SETCURSOR, reinterpret_cast<WPARAM>(CloseImageWindow()),
               MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_HAND));
  SendMessageW(CloseImageWindow(), WM_MOUSELEAVE, 0, 0);
  EXPECT_EQ(picture(), atRest);
  SendMouse(CloseImageWindow(), WM_LBUTTONDOWN, 8, 8, MK_LBUTTON);
  SendMouse(CloseImageWindow(), WM_LBUTTONUP, -3, 8);
  SendMouse(CloseImageWindow(), WM_RBUTTONUP, 8, 8);
  EXPECT_TRUE(note->IsLoaded()) << "only a click inside it closes the note";
}

TEST_F(frmNotesTest, HasAShadowAndTheOddClassStyleAtItsEnd) {
  Prepare(L"a");
  frmNotes other(999'999, log.Pause());
  other.Prepare(L"b", L"c", {});
  const std::wstring windowClass = ClassOf(note->hwnd());
  const ULONG_PTR open = CS_DBLCLKS | CS_DROPSHADOW;
  EXPECT_EQ(GetClassLongPtrW(note->hwnd(), GCL_STYLE), open);
  note->Close();
  WNDCLASSEXW closed = {};
  closed.cbSize = sizeof(closed);
  ASSERT_TRUE(GetClassInfoExW(GetModuleHandleW(nullptr), windowClass.c_str(), &closed));
  // Windows may drop the bits that are no class styles.
  const UINT kept = IsWine() ? ~0U : UINT{CS_DROPSHADOW};
  EXPECT_EQ(closed.style & kept, (CS_DBLCLKS | 0xFFFD'FFFF) & kept);
  EXPECT_EQ(GetClassLongPtrW(other.hwnd(), GCL_STYLE), open) << "of another note";
}

TEST_F(frmNotesTest, TheLeftButtonAloneDragsIt) {
  Show();
  CaughtMessage caught(note->hwnd(), WM_NCLBUTTONDOWN);
  SendMouse(note->hwnd(), WM_RBUTTONDOWN, 50, 50, MK_RBUTTON);
  SendMouse(note->hwnd(), WM_MBUTTONDOWN, 50, 50, MK_MBUTTON);
  EXPECT_THAT(caught.Taken(), IsEmpty());
  SendMouse(note->hwnd(), WM_LBUTTONDOWN, 50, 50, MK_LBUTTON);
  EXPECT_THAT(caught.Taken(), ElementsAre(WPARAM{HTCAPTION}));
}

TEST_F(frmNotesTest, IsPulledBackWhenTheMouseMovesOverIt) {
  Show();
  ExpectPulledInside(note->hwnd(), note->hwnd());
}

TEST_F(frmNotesTest, DoesNotFadeWithoutAnimations) {
  SetUserPreferences({.hasAnimations = [] { return false; }});
  Prepare(L"喝水").ShowNote();
  EXPECT_EQ(OpacityOf(note->hwnd()), 230);
  note->Close();
  EXPECT_FALSE(note->IsLoaded());
  EXPECT_THAT(log.opacities, IsEmpty());
  SetUserPreferences({});
}

TEST_F(frmNotesTest, IsOpaqueUnderHighContrast) {
  Show();
  {
    const ContrastScheme scheme(kBlackScheme, note->hwnd());
    EXPECT_EQ(OpacityOf(note->hwnd()), 255);
  }
  EXPECT_EQ(OpacityOf(note->hwnd()), 230);
}

}  // namespace
}  // namespace tellurvane

#include "ui/clsControl.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "ControlTestSupport.h"
#include "tests/support/FormProbe.h"
#include "ui/ControlKinds.h"
#include "ui/ToolkitFont.h"

namespace tellurvane {
namespace {

// In the parent's client area.
RECT PlaceOf(HWND window) {
  RECT place = {};
  GetWindowRect(window, &place);
  MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
  return place;
}

DWORD StyleOf(HWND window) { return static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)); }

TEST(clsControlTest, HasTheWindowClassAndTheStyleOfItsKind) {
  const struct {
    ControlKind kind;
    int multilin;
    const wchar_t* className;
    DWORD style;
  } rows[] = {
      {ControlKind::kCheckBox, 0, L"BUTTON", 0x3},
      {ControlKind::kPushButton, 0, L"BUTTON", 0x0},
      {ControlKind::kOptionButton, 0, L"BUTTON", 0x9},
      {ControlKind::kLabel, 0, L"STATIC", 0x10C},
      {ControlKind::kEditBox, 0, L"Edit", 0x80},
      {ControlKind::kEditBox, 1, L"Edit", 0x4},
      {ControlKind::kEditableComboBox, 0, L"COMBOBOX", 0x200242},
      {ControlKind::kDropDownList, 0, L"COMBOBOX", 0x200203},
      {ControlKind::kSimpleComboBox, 0, L"COMBOBOX", 0x200201},
      {ControlKind::kListBox, 0, L"LISTBOX", 0x200141},
      {ControlKind::kMultiSelectListBox, 0, L"LISTBOX", 0x200941},
      {ControlKind::kToggleSelectListBox, 0, L"LISTBOX", 0x200149},
      {ControlKind::kRichEditBox, 0, L"RichEdit20W", 0x80},
      {ControlKind::kRichEditBox, 1, L"RichEdit20W", 0x3000C4},
      {ControlKind::kSortedListBox, 0, L"LISTBOX", 0x200142},
  };
  for (const auto& row : rows) {
    const HostedControl hosted(row.kind, row.multilin);
    const ControlLook& look = LookOf(row.kind);
    EXPECT_EQ(row.multilin > 0 ? look.multiLineStyle : look.style, row.style) << NameOf(row.kind);
    // A scroll bar that is not needed removes its bit.
    constexpr DWORD kScrollBars = WS_HSCROLL | WS_VSCROLL;
    const DWORD tabStop = row.kind == ControlKind::kLabel ? 0 : WS_TABSTOP;
    EXPECT_EQ(StyleOf(hosted.control.hwnd()) & ~kScrollBars,
              (row.style & ~kScrollBars) | WS_CHILD | WS_VISIBLE | tabStop)
        << NameOf(row.kind);
    const std::wstring className = ClassOf(hosted.control.hwnd());
    EXPECT_EQ(lstrcmpiW(className.c_str(), row.className), 0) << NameOf(row.kind);
    EXPECT_EQ(GetParent(hosted.control.hwnd()), hosted.host.hwnd());
  }
}

TEST(clsControlTest, FillsItsHostAndFollowsItsSize) {
  for (const ControlKind kind : kEveryKind) {
    HostedControl hosted(kind, 1);
    for (const SIZE& size : {SIZE{150, 90}, SIZE{220, 40}}) {
      hosted.host.Move(0, 0, static_cast<int>(size.cx), static_cast<int>(size.cy));
      const RECT place = PlaceOf(hosted.control.hwnd());
      EXPECT_EQ(place.left, 0) << NameOf(kind);
      EXPECT_EQ(place.top, 0) << NameOf(kind);
      EXPECT_EQ(place.right, size.cx) << NameOf(kind);
      EXPECT_EQ(place.bottom, size.cy) << NameOf(kind);
    }
  }
}

TEST(clsControlTest, ComboBoxIsAsHighAsItsHostAndItsListAsHighAsItsEntries) {
  for (const ControlKind kind : {ControlKind::kEditableComboBox, ControlKind::kDropDownList}) {
    HostedControl hosted(kind);
    for (int i = 0; i < 8; ++i) hosted.control.AddItem(L"entry " + std::to_wstring(i));
    for (const int height : {26, 40, 30, 27}) {
      hosted.host.Move(0, 0, 150, height);
      EXPECT_EQ(PlaceOf(hosted.control.hwnd()).bottom, height) << NameOf(kind);
    }
    hosted.Send(CB_SHOWDROPDOWN, TRUE);
    COMBOBOXINFO info = {};
    info.cbSize = sizeof(info);
    ASSERT_TRUE(GetComboBoxInfo(hosted.control.hwnd(), &info));
    EXPECT_GE(ClientOf(info.hwndList).bottom, 8 * hosted.Send(CB_GETITEMHEIGHT, 0));
    hosted.Send(CB_SHOWDROPDOWN, FALSE);
  }
}

TEST(clsControlTest, HasTheToolkitFont) {
  for (const ControlKind kind : kEveryKind) {
    // A rich edit box does not report its font's handle. Pasting shows its font.
    if (kind == ControlKind::kRichEditBox) continue;
    const HostedControl hosted(kind);
    EXPECT_EQ(reinterpret_cast<HFONT>(hosted.Send(WM_GETFONT)), ToolkitFont()) << NameOf(kind);
  }
}

TEST(clsControlTest, LongTextsAndManyLinesAreKept) {
  const std::wstring texts[] = {std::wstring(40'000, L'x'), L"a\r\n\r\nb"};
  for (const ControlKind kind : {ControlKind::kEditBox, ControlKind::kRichEditBox}) {
    for (int multilin = 0; multilin < 2; ++multilin) {
      HostedControl hosted(kind, multilin);
      hosted.control.text(texts[multilin]);
      hosted.Send(EM_SETSEL, 0, 0);
      hosted.Send(WM_CHAR, L'y', 1);
      EXPECT_TRUE(hosted.control.text() == L"y" + texts[multilin]) << NameOf(kind) << multilin;
    }
  }
}

TEST(clsControlTest, OnlyCheckBoxesAndOptionsCanBeChecked) {
  for (const ControlKind kind : kEveryKind) {
    HostedControl hosted(kind);
    hosted.control.Checked(true);
    EXPECT_EQ(hosted.control.Checked(),
              kind == ControlKind::kCheckBox || kind == ControlKind::kOptionButton)
        << NameOf(kind);
    hosted.control.Checked(false);
    EXPECT_FALSE(hosted.control.Checked()) << NameOf(kind);
  }
}

TEST(clsControlTest, IsEnabledAndVisibleAsItIsSetAndGreyInADisabledHost) {
  for (const ControlKind kind : kEveryKind) {
    HostedControl hosted(kind);
    for (const auto& [own, hosts] : {std::pair{false, true}, {true, false}, {true, true}}) {
      hosted.control.Enabled(own);
      hosted.control.Visible(own);
      hosted.host.Enabled(hosts);
      EXPECT_EQ(hosted.control.Enabled(), own) << NameOf(kind);
      EXPECT_EQ(hosted.control.Visible(), own) << NameOf(kind);
      EXPECT_EQ(IsWindowEnabled(hosted.control.hwnd()) != 0, own && hosts) << NameOf(kind);
      EXPECT_EQ(IsWindowVisible(hosted.control.hwnd()) != 0, own) << NameOf(kind);
    }
  }
}

TEST(clsControlTest, BorderStyleOneAndFourPutAFrameAround) {
  const struct {
    int style;
    bool hasBorder;
  } rows[] = {{1, true}, {0, false}, {4, true}, {2, false}, {1, true}, {-1, false}};
  HostedControl hosted(ControlKind::kEditBox);
  const DWORD others = StyleOf(hosted.control.hwnd());
  for (const auto& row : rows) {
    hosted.control.BorderStyle(row.style);
    EXPECT_EQ(StyleOf(hosted.control.hwnd()), others | (row.hasBorder ? 0x800000U : 0U))
        << row.style;
    EXPECT_EQ(ClientOf(hosted.control.hwnd()).right, row.hasBorder ? 148 : 150) << row.style;
  }
}

TEST(clsControlTest, FontRightLeadingIsTheMarginOfTheText) {
  for (const ControlKind kind : {ControlKind::kEditBox, ControlKind::kEditableComboBox}) {
    HostedControl hosted(kind);
    for (const auto& [leading, margin] : {std::pair{9, 9}, {-4, 0}}) {
      hosted.control.FontRightLeading(leading);
      EXPECT_EQ(hosted.control.FontRightLeading(), margin) << NameOf(kind);
      EXPECT_EQ(SendMessageW(hosted.TypingWindow(), EM_GETMARGINS, 0, 0), MAKELONG(margin, margin))
          << NameOf(kind);
    }
  }
}

// Whether any pixel of the window has the colour.
bool Shows(HWND window, Color color) {
  RedrawWindow(window, nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  Pump();
  const WindowDc context(window);
  const RECT client = ClientOf(window);
  return std::ranges::count(PixelsIn(context.Get(), client), color) > 0;
}

TEST(clsControlTest, LabelHasItsHostsColor) {
  HostedControl hosted(ControlKind::kLabel);
  hosted.control.text(L"專案名稱");
  EXPECT_EQ(hosted.control.BackColor(), kHostColor);
  EXPECT_TRUE(Shows(hosted.control.hwnd(), kHostColor));
  hosted.host.BackColor(Rgb(240, 220, 180));
  EXPECT_TRUE(Shows(hosted.control.hwnd(), Rgb(240, 220, 180)));
  EXPECT_FALSE(Shows(hosted.control.hwnd(), kHostColor));
}

TEST(clsControlTest, SimpleComboBoxShowsItsHostBelowTheLastWholeRow) {
  HostedControl hosted(ControlKind::kSimpleComboBox);
  for (const int height : {90, 95, 83, 79}) {
    hosted.host.Move(10, 10, 150, height);
    Pump();
    COMBOBOXINFO info = {};
    info.cbSize = sizeof(info);
    ASSERT_TRUE(GetComboBoxInfo(hosted.control.hwnd(), &info));
    const LONG end = OnScreen(info.hwndList).bottom - OnScreen(hosted.control.hwnd()).top;
    const WindowDc screen(hosted.control.hwnd());
    for (int y = static_cast<int>(end); y < height; ++y) {
      EXPECT_EQ(PixelOf(screen.Get(), 75, y), kHostColor) << y << " of " << height;
    }
  }
}

TEST(clsControlTest, HasTheColorsItWasGiven) {
  const Color back = Rgb(10, 60, 20);
  const Color fore = Rgb(250, 240, 90);
  // A button is partly drawn by the theme.
  for (const ControlKind kind : {ControlKind::kLabel, ControlKind::kEditBox, ControlKind::kListBox,
                                 ControlKind::kRichEditBox, ControlKind::kSimpleComboBox}) {
    HostedControl hosted(kind);
    hosted.control.BackColor(back);
    hosted.control.ForeColor(fore);
    hosted.control.AddItem(L"█████");
    hosted.control.text(L"█████");
    EXPECT_EQ(hosted.control.BackColor(), back);
    EXPECT_EQ(hosted.control.ForeColor(), fore);
    EXPECT_TRUE(Shows(hosted.control.hwnd(), back)) << NameOf(kind);
    EXPECT_TRUE(Shows(hosted.control.hwnd(), fore)) << NameOf(kind);
  }
}

TEST(clsControlTest, DisabledBoxIsGreyed) {
  for (const ControlKind kind : {ControlKind::kEditBox, ControlKind::kRichEditBox}) {
    HostedControl hosted(kind);
    const Color window = GetSysColor(COLOR_WINDOW);
    const Color face = GetSysColor(COLOR_BTNFACE);
    hosted.control.text(L"█████");
    EXPECT_TRUE(Shows(hosted.control.hwnd(), window)) << NameOf(kind);
    EXPECT_TRUE(Shows(hosted.control.hwnd(), GetSysColor(COLOR_WINDOWTEXT))) << NameOf(kind);
    hosted.control.Enabled(false);
    EXPECT_TRUE(Shows(hosted.control.hwnd(), GetSysColor(COLOR_GRAYTEXT))) << NameOf(kind);
    EXPECT_FALSE(Shows(hosted.control.hwnd(), GetSysColor(COLOR_WINDOWTEXT))) << NameOf(kind);
    EXPECT_TRUE(Shows(hosted.control.hwnd(), face)) << NameOf(kind);
    EXPECT_FALSE(Shows(hosted.control.hwnd(), window)) << NameOf(kind);
  }
}

// SetDefaultDllDirectories, the program's first step, cannot be undone: later tests run with it.
TEST(clsControlTest, LoadsTheRichEditLibraryFromTheSystemFolderAndKeepsIt) {
  ASSERT_TRUE(SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32));
  { const HostedControl hosted(ControlKind::kRichEditBox, 1); }
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(GetModuleHandleW(L"RICHED20.DLL"), path.data(), MAX_PATH));
  std::wstring system(MAX_PATH, L'\0');
  system.resize(GetSystemDirectoryW(system.data(), MAX_PATH));
  EXPECT_EQ(lstrcmpiW(path.substr(0, system.size()).c_str(), system.c_str()), 0);
  WNDCLASSW box = {};
  EXPECT_TRUE(GetClassInfoW(GetModuleHandleW(nullptr), L"RichEdit20W", &box));
}

TEST(clsControlTest, TheListOfAComboBoxIgnoresACloseMessage) {
  HostedControl hosted(ControlKind::kDropDownList);
  for (const wchar_t* const entry : {L"a", L"b"}) hosted.control.AddItem(entry);
  hosted.control.ListIndex(1);
  COMBOBOXINFO info = {};
  info.cbSize = sizeof(info);
  ASSERT_TRUE(GetComboBoxInfo(hosted.control.hwnd(), &info));
  SendMessageW(info.hwndList, WM_CLOSE, 0, 0);
  EXPECT_TRUE(IsWindow(info.hwndList));
  EXPECT_EQ(hosted.control.ListIndex(), 1);
}

TEST(clsControlTest, LeavesItsHostAtItsEnd) {
  const size_t blocks = LiveSubclassBlocks();
  const TestForm form;
  PictureBox host;
  host.Create({.parent = form.hwnd(), .width = 150, .height = 90});
  for (const ControlKind kind : kEveryKind) {
    {
      clsControl control;
      control.TargetPictureBox(host);
      control.Create(kind);
    }
    EXPECT_EQ(GetWindow(host.hwnd(), GW_CHILD), nullptr) << NameOf(kind);
    host.Move(0, 0, 150, 80 + static_cast<int>(kind));
    EXPECT_EQ(LiveSubclassBlocks(), blocks) << NameOf(kind);
  }
}

TEST(clsControlTest, IsEmptyWithoutItsWindow) {
  for (const ControlKind kind : kEveryKind) {
    HostedControl hosted(kind);
    hosted.control.AddItem(L"entry");
    DestroyWindow(hosted.host.hwnd());
    EXPECT_EQ(hosted.control.hwnd(), nullptr) << NameOf(kind);
    hosted.control.text(L"text");
    EXPECT_EQ(hosted.control.text(), L"") << NameOf(kind);
    EXPECT_EQ(hosted.control.ListCount(), 0) << NameOf(kind);
    EXPECT_EQ(hosted.control.ListIndex(), -1) << NameOf(kind);
  }
}

}  // namespace
}  // namespace tellurvane

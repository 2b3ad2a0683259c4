#include <windows.h>

#include <gtest/gtest.h>
#include <richedit.h>

#include "ControlTestSupport.h"

namespace tellurvane {
namespace {

// Whether a pixel of the window shows the colour.
bool Shows(HWND window, Color color) {
  RedrawWindow(window, nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  Pump();
  const WindowDc context(window);
  const RECT client = ClientOf(window);
  for (int y = 0; y < client.bottom; ++y) {
    for (int x = 0; x < client.right; ++x) {
      if (PixelOf(context.Get(), x, y) == color) return true;
    }
  }
  return false;
}

TEST(clsControlColorsTest, LabelStandsOnItsHostsColor) {
  HostedControl hosted(ControlKind::kLabel);
  hosted.control.text(L"專案名稱");
  EXPECT_EQ(hosted.control.BackColor(), kHostColor);
  EXPECT_TRUE(Shows(hosted.control.hwnd(), kHostColor));
  EXPECT_FALSE(Shows(hosted.control.hwnd(), kWhite));
  hosted.host.BackColor(Rgb(240, 220, 180));
  EXPECT_TRUE(Shows(hosted.control.hwnd(), Rgb(240, 220, 180)));
  EXPECT_FALSE(Shows(hosted.control.hwnd(), kHostColor));
}

TEST(clsControlColorsTest, SimpleComboBoxShowsItsHostBelowTheLastWholeRow) {
  HostedControl hosted(ControlKind::kSimpleComboBox);
  for (const Color color : {kHostColor, Rgb(240, 220, 180)}) {
    hosted.host.BackColor(color);
    // A height that the rows of the list do not fill.
    for (const int height : {90, 95, 83, 79}) {
      hosted.host.Move(10, 10, 150, height);
      Pump();
      COMBOBOXINFO info = {};
      info.cbSize = sizeof(info);
      ASSERT_TRUE(GetComboBoxInfo(hosted.control.hwnd(), &info));
      RECT list = {};
      GetWindowRect(info.hwndList, &list);
      MapWindowPoints(nullptr, hosted.control.hwnd(), reinterpret_cast<POINT*>(&list), 2);
      const WindowDc screen(hosted.control.hwnd());
      for (int y = static_cast<int>(list.bottom); y < height; ++y) {
        EXPECT_EQ(PixelOf(screen.Get(), 75, y), color) << y << " of " << height;
      }
    }
  }
}

TEST(clsControlColorsTest, HasTheColorsItWasGiven) {
  const Color back = Rgb(10, 60, 20);
  const Color fore = Rgb(250, 240, 90);
  // What is visible of an empty list or a button is partly the theme's: those are only asked.
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

TEST(clsControlColorsTest, AnswersItsHostsColorMessages) {
  const Color back = Rgb(10, 60, 20);
  const Color fore = Rgb(250, 240, 90);
  for (const UINT message :
       {WM_CTLCOLORBTN, WM_CTLCOLORSTATIC, WM_CTLCOLOREDIT, WM_CTLCOLORLISTBOX}) {
    HostedControl hosted(ControlKind::kCheckBox);
    hosted.control.BackColor(back);
    hosted.control.ForeColor(fore);
    const WindowDc context(hosted.control.hwnd());
    const auto brush = reinterpret_cast<HBRUSH>(
        SendMessageW(hosted.host.hwnd(), message, reinterpret_cast<WPARAM>(context.Get()),
                     reinterpret_cast<LPARAM>(hosted.control.hwnd())));
    LOGBRUSH look = {};
    GetObjectW(brush, sizeof(look), &look);
    EXPECT_EQ(look.lbColor, back);
    EXPECT_EQ(GetBkColor(context.Get()), back);
    EXPECT_EQ(GetTextColor(context.Get()), fore);
  }
}

TEST(clsControlColorsTest, DisabledBoxIsGreyed) {
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

TEST(clsControlColorsTest, RichEditColorsWhatIsThereAndWhatIsTyped) {
  HostedControl hosted(ControlKind::kRichEditBox, 1);
  hosted.control.text(L"there");
  hosted.control.ForeColor(Rgb(1, 2, 3));
  for (const WPARAM range : {SCF_DEFAULT, SCF_SELECTION}) {
    CHARFORMATW format = {};
    format.cbSize = sizeof(format);
    hosted.Send(EM_SETSEL, 0, -1);
    hosted.Send(EM_GETCHARFORMAT, range, reinterpret_cast<LPARAM>(&format));
    EXPECT_EQ(format.crTextColor, Rgb(1, 2, 3)) << range;
  }
  hosted.control.BackColor(Rgb(4, 5, 6));
  EXPECT_EQ(static_cast<Color>(hosted.Send(EM_SETBKGNDCOLOR, 0, 0)), Rgb(4, 5, 6));
}

}  // namespace
}  // namespace tellurvane

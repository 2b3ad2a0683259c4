#include "ui/clsControl.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <richedit.h>

#include "ControlTestSupport.h"
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

std::wstring ClassOf(HWND window) {
  std::wstring name(64, L'\0');
  name.resize(static_cast<size_t>(GetClassNameW(window, name.data(), 64)));
  return name;
}

DWORD StyleOf(HWND window) { return static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)); }

// The style that the first control made during its life was created with. Later a scroll bar that
// is not needed takes its bit away.
class StyleAtCreation {
 public:
  StyleAtCreation() : hook_(SetWindowsHookExW(WH_CBT, Procedure, nullptr, GetCurrentThreadId())) {
    seen = 0;
  }
  StyleAtCreation(const StyleAtCreation&) = delete;
  StyleAtCreation& operator=(const StyleAtCreation&) = delete;
  ~StyleAtCreation() { UnhookWindowsHookEx(hook_); }

  inline static DWORD seen = 0;

 private:
  static LRESULT CALLBACK Procedure(int code, WPARAM window, LPARAM details) {
    if (code == HCBT_CREATEWND) {
      const auto style =
          static_cast<DWORD>(reinterpret_cast<CBT_CREATEWNDW*>(details)->lpcs->style);
      const bool isChild = (style & WS_CHILD) != 0;
      const bool isHost = ClassOf(reinterpret_cast<HWND>(window)) == L"TellurvanePictureBox";
      if (isChild && !isHost && seen == 0) seen = style;
    }
    return CallNextHookEx(nullptr, code, window, details);
  }

  HHOOK hook_;
};

struct KindRow {
  ControlKind kind;
  int multilin;
  const wchar_t* className;
  DWORD style;
};

TEST(clsControlTest, HasTheWindowClassAndTheStyleOfItsKind) {
  const KindRow rows[] = {
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
  for (const KindRow& row : rows) {
    const StyleAtCreation watch;
    const HostedControl hosted(row.kind, row.multilin);
    const DWORD tabStop = row.kind == ControlKind::kLabel ? 0 : WS_TABSTOP;
    EXPECT_EQ(StyleAtCreation::seen, row.style | WS_CHILD | WS_VISIBLE | tabStop)
        << NameOf(row.kind);
    const std::wstring className = ClassOf(hosted.control.hwnd());
    EXPECT_EQ(lstrcmpiW(className.c_str(), row.className), 0) << NameOf(row.kind);
    EXPECT_EQ(GetParent(hosted.control.hwnd()), hosted.host.hwnd());
  }
}

TEST(clsControlTest, FillsItsHost) {
  for (const ControlKind kind : kEveryKind) {
    const HostedControl hosted(kind, 1);
    const RECT place = PlaceOf(hosted.control.hwnd());
    EXPECT_EQ(place.left, 0) << NameOf(kind);
    EXPECT_EQ(place.top, 0) << NameOf(kind);
    EXPECT_EQ(place.right, 150) << NameOf(kind);
    EXPECT_EQ(place.bottom, 90) << NameOf(kind);
  }
}

TEST(clsControlTest, FollowsItsHostsSize) {
  for (const ControlKind kind : kEveryKind) {
    HostedControl hosted(kind, 1);
    hosted.host.Move(0, 0, 220, 40);
    const RECT place = PlaceOf(hosted.control.hwnd());
    EXPECT_EQ(place.right, 220) << NameOf(kind);
    EXPECT_EQ(place.bottom, 40) << NameOf(kind);
  }
}

TEST(clsControlTest, ComboBoxIsAsHighAsItsHost) {
  for (const ControlKind kind : {ControlKind::kEditableComboBox, ControlKind::kDropDownList}) {
    HostedControl hosted(kind);
    for (const int height : {26, 40, 30, 27}) {
      hosted.host.Move(0, 0, 150, height);
      EXPECT_EQ(PlaceOf(hosted.control.hwnd()).bottom, height) << NameOf(kind);
    }
  }
}

TEST(clsControlTest, DropDownListHasRoomForItsEntries) {
  for (const ControlKind kind : {ControlKind::kEditableComboBox, ControlKind::kDropDownList}) {
    HostedControl hosted(kind);
    for (int i = 0; i < 8; ++i) hosted.control.AddItem(L"entry " + std::to_wstring(i));
    hosted.host.Move(0, 0, 150, 28);
    hosted.Send(CB_SHOWDROPDOWN, TRUE);
    COMBOBOXINFO info = {};
    info.cbSize = sizeof(info);
    ASSERT_TRUE(GetComboBoxInfo(hosted.control.hwnd(), &info));
    EXPECT_TRUE(IsWindowVisible(info.hwndList));
    EXPECT_GE(ClientOf(info.hwndList).bottom, 8 * hosted.Send(CB_GETITEMHEIGHT, 0));
    EXPECT_EQ(ClientOf(hosted.control.hwnd()).bottom, 28);
    hosted.Send(CB_SHOWDROPDOWN, FALSE);
  }
}

TEST(clsControlTest, HasTheToolkitFont) {
  for (const ControlKind kind : kEveryKind) {
    // It does not tell the font by its handle, only by what it looks like.
    if (kind == ControlKind::kRichEditBox) continue;
    const HostedControl hosted(kind);
    const auto font = reinterpret_cast<HFONT>(hosted.Send(WM_GETFONT));
    EXPECT_EQ(font, ToolkitFont()) << NameOf(kind);
  }
  LOGFONTW font = {};
  GetObjectW(ToolkitFont(), sizeof(font), &font);
  EXPECT_STREQ(font.lfFaceName, L"Tahoma");
  const WindowDc screen(nullptr);
  EXPECT_EQ(font.lfHeight, -MulDiv(9, GetDeviceCaps(screen.Get(), LOGPIXELSY), 72));

  const HostedControl rich(ControlKind::kRichEditBox);
  CHARFORMATW format = {};
  format.cbSize = sizeof(format);
  rich.Send(EM_GETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&format));
  EXPECT_STREQ(format.szFaceName, L"Tahoma");
  EXPECT_EQ(format.yHeight, 9 * 20);
}

TEST(clsControlTest, TextIsTheWindowText) {
  for (const ControlKind kind :
       {ControlKind::kCheckBox, ControlKind::kPushButton, ControlKind::kOptionButton,
        ControlKind::kLabel, ControlKind::kEditBox, ControlKind::kEditableComboBox,
        ControlKind::kSimpleComboBox, ControlKind::kRichEditBox}) {
    HostedControl hosted(kind);
    EXPECT_EQ(hosted.control.text(), L"") << NameOf(kind);
    hosted.control.text(L"儲存後立即啟動音樂排程");
    EXPECT_EQ(hosted.control.text(), L"儲存後立即啟動音樂排程") << NameOf(kind);
    EXPECT_EQ(WindowText(hosted.control.hwnd()), L"儲存後立即啟動音樂排程") << NameOf(kind);
    hosted.control.text(L"");
    EXPECT_EQ(hosted.control.text(), L"") << NameOf(kind);
  }
}

TEST(clsControlTest, ManyLinesAreKeptAsTheyAre) {
  for (const ControlKind kind : {ControlKind::kEditBox, ControlKind::kRichEditBox}) {
    HostedControl hosted(kind, 1);
    hosted.control.text(L"a\r\nb\r\n\r\nc");
    EXPECT_EQ(hosted.control.text(), L"a\r\nb\r\n\r\nc") << NameOf(kind);
    EXPECT_EQ(hosted.Send(EM_GETLINECOUNT), 4) << NameOf(kind);
  }
}

TEST(clsControlTest, LongTextIsNotCutWhileItIsTyped) {
  for (const ControlKind kind : {ControlKind::kEditBox, ControlKind::kRichEditBox}) {
    HostedControl hosted(kind);
    const std::wstring text(40'000, L'x');
    hosted.control.text(text);
    hosted.Send(EM_SETSEL, 0, 0);
    hosted.Send(WM_CHAR, L'y', 1);
    EXPECT_TRUE(hosted.control.text() == L"y" + text) << NameOf(kind);
  }
}

TEST(clsControlTest, CheckedIsTheButtonsMark) {
  for (const ControlKind kind : {ControlKind::kCheckBox, ControlKind::kOptionButton}) {
    HostedControl hosted(kind);
    EXPECT_FALSE(hosted.control.Checked());
    hosted.control.Checked(true);
    EXPECT_TRUE(hosted.control.Checked());
    EXPECT_EQ(hosted.Send(BM_GETCHECK), BST_CHECKED);
    hosted.control.Checked(false);
    EXPECT_EQ(hosted.Send(BM_GETCHECK), BST_UNCHECKED);
  }
  HostedControl edit(ControlKind::kEditBox);
  edit.control.Checked(true);
  EXPECT_FALSE(edit.control.Checked());
}

TEST(clsControlTest, EnabledAndVisibleAreTheWindows) {
  for (const ControlKind kind : kEveryKind) {
    HostedControl hosted(kind);
    EXPECT_TRUE(hosted.control.Enabled() && hosted.control.Visible()) << NameOf(kind);
    hosted.control.Enabled(false);
    hosted.control.Visible(false);
    EXPECT_FALSE(hosted.control.Enabled() || hosted.control.Visible()) << NameOf(kind);
    EXPECT_FALSE(IsWindowEnabled(hosted.control.hwnd())) << NameOf(kind);
    EXPECT_FALSE(IsWindowVisible(hosted.control.hwnd())) << NameOf(kind);
    hosted.control.Enabled(true);
    hosted.control.Visible(true);
    EXPECT_TRUE(IsWindowEnabled(hosted.control.hwnd())) << NameOf(kind);
    EXPECT_TRUE(IsWindowVisible(hosted.control.hwnd())) << NameOf(kind);
  }
}

TEST(clsControlTest, IsGreyedInADisabledHost) {
  HostedControl hosted(ControlKind::kPushButton);
  hosted.host.Enabled(false);
  EXPECT_FALSE(IsWindowEnabled(hosted.control.hwnd()));
  EXPECT_TRUE(hosted.control.Enabled());
  hosted.host.Enabled(true);
  EXPECT_TRUE(IsWindowEnabled(hosted.control.hwnd()));
  hosted.control.Enabled(false);
  hosted.host.Enabled(false);
  hosted.host.Enabled(true);
  EXPECT_FALSE(IsWindowEnabled(hosted.control.hwnd()));
}

TEST(clsControlTest, BorderStyleOneAndFourPutAFrameAround) {
  struct Row {
    int style;
    bool hasBorder;
  };
  const Row rows[] = {{1, true}, {0, false}, {4, true}, {2, false}, {1, true}, {-1, false}};
  HostedControl hosted(ControlKind::kEditBox);
  EXPECT_EQ(StyleOf(hosted.control.hwnd()) & WS_BORDER, 0U);
  const DWORD others = StyleOf(hosted.control.hwnd());
  for (const Row& row : rows) {
    hosted.control.BorderStyle(row.style);
    EXPECT_EQ(StyleOf(hosted.control.hwnd()), others | (row.hasBorder ? 0x800000U : 0U))
        << row.style;
    EXPECT_EQ(ClientOf(hosted.control.hwnd()).right, row.hasBorder ? 148 : 150) << row.style;
  }
}

TEST(clsControlTest, WhatIsSetBeforeTheCreationHoldsFromTheStart) {
  const TestForm form;
  PictureBox host;
  host.Create({.parent = form.hwnd(), .width = 150, .height = 90});
  clsControl control;
  control.TargetPictureBox(host);
  control.BorderStyle(4);
  control.Enabled(false);
  control.Visible(false);
  control.FontRightLeading(7);
  control.BackColor(Rgb(1, 2, 3));
  control.Create(ControlKind::kEditBox);
  EXPECT_NE(StyleOf(control.hwnd()) & WS_BORDER, 0U);
  EXPECT_FALSE(IsWindowEnabled(control.hwnd()));
  EXPECT_FALSE(IsWindowVisible(control.hwnd()));
  EXPECT_EQ(SendMessageW(control.hwnd(), EM_GETMARGINS, 0, 0), MAKELONG(7, 7));
  EXPECT_EQ(control.BackColor(), Rgb(1, 2, 3));
}

TEST(clsControlTest, FontRightLeadingIsTheMarginOfTheText) {
  HostedControl edit(ControlKind::kEditBox);
  edit.control.FontRightLeading(9);
  EXPECT_EQ(edit.control.FontRightLeading(), 9);
  EXPECT_EQ(edit.Send(EM_GETMARGINS), MAKELONG(9, 9));
  edit.control.FontRightLeading(-4);
  EXPECT_EQ(edit.control.FontRightLeading(), 0);
  EXPECT_EQ(edit.Send(EM_GETMARGINS), 0);

  HostedControl combo(ControlKind::kEditableComboBox);
  combo.control.FontRightLeading(5);
  const HWND box = FindWindowExW(combo.control.hwnd(), nullptr, L"Edit", nullptr);
  EXPECT_EQ(SendMessageW(box, EM_GETMARGINS, 0, 0), MAKELONG(5, 5));

  HostedControl button(ControlKind::kPushButton);
  button.control.FontRightLeading(5);
  EXPECT_EQ(button.control.FontRightLeading(), 5);
}

}  // namespace
}  // namespace tellurvane

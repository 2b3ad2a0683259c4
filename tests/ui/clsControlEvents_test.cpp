#include <gtest/gtest.h>
#include <richedit.h>

#include <vector>

#include "ClipboardSupport.h"
#include "ControlTestSupport.h"
#include "tests/support/FormProbe.h"
#include "ui/BoxedControl.h"

namespace tellurvane {
namespace {

struct EventCounts {
  explicit EventCounts(clsControl& control) {
    control.Click = [this] { ++clicks; };
    control.Change = [this] { ++changes; };
  }

  int clicks = 0;
  int changes = 0;
};

void ClickOn(HWND window, int x, int y) {
  SendMouse(window, WM_LBUTTONDOWN, x, y, MK_LBUTTON);
  SendMouse(window, WM_LBUTTONUP, x, y);
}

TEST(clsControlEventsTest, ButtonsAndLabelsAreClicked) {
  for (const ControlKind kind : {ControlKind::kCheckBox, ControlKind::kPushButton,
                                 ControlKind::kOptionButton, ControlKind::kLabel}) {
    HostedControl hosted(kind);
    int clicks = 0;
    bool wasChecked = false;
    hosted.control.Click = [&] {
      ++clicks;
      wasChecked = hosted.control.Checked();
    };
    ClickOn(hosted.control.hwnd(), 10, 45);
    Pump();
    EXPECT_EQ(clicks, 1) << NameOf(kind);
    EXPECT_EQ(wasChecked, kind == ControlKind::kCheckBox || kind == ControlKind::kOptionButton)
        << NameOf(kind);
  }
}

TEST(clsControlEventsTest, FocusAndArrowsDoNotChooseAnOption) {
  HostedControl first(ControlKind::kOptionButton);
  BoxedControl second;
  second.Create(first.form.hwnd(), ControlKind::kOptionButton, L"");
  second.Move(10, 120, 150, 30);
  const EventCounts events(first.control);
  SetFocus(first.control.hwnd());
  first.Press(VK_DOWN);
  EXPECT_EQ(GetFocus(), first.control.hwnd());
  EXPECT_EQ(events.clicks, 0);
  EXPECT_FALSE(first.control.Checked() || second.control.Checked());
}

TEST(clsControlEventsTest, ListsAreClickedWhenAnEntryIsChosen) {
  const struct {
    ControlKind kind;
    UINT lowerBy;  // the key that chooses the next entry; none for a click
  } cases[] = {{ControlKind::kEditableComboBox, VK_DOWN}, {ControlKind::kDropDownList, VK_DOWN},
               {ControlKind::kSimpleComboBox, VK_DOWN},   {ControlKind::kListBox, 0},
               {ControlKind::kMultiSelectListBox, 0},     {ControlKind::kToggleSelectListBox, 0}};
  for (const auto& [kind, lowerBy] : cases) {
    HostedControl hosted(kind);
    for (const wchar_t* const entry : {L"a", L"b"}) hosted.control.AddItem(entry);
    const EventCounts events(hosted.control);
    if (lowerBy != 0) {
      hosted.Press(lowerBy);
    } else {
      ClickOn(hosted.control.hwnd(), 10, 3);
    }
    EXPECT_EQ(events.clicks, 1) << NameOf(kind);
    EXPECT_EQ(hosted.control.ListIndex(), 0) << NameOf(kind);
  }
}

TEST(clsControlEventsTest, TypingChangesTheText) {
  for (const ControlKind kind : {ControlKind::kEditBox, ControlKind::kRichEditBox,
                                 ControlKind::kEditableComboBox, ControlKind::kSimpleComboBox}) {
    HostedControl hosted(kind);
    const EventCounts events(hosted.control);
    SetFocus(hosted.TypingWindow());
    for (const wchar_t unit : {L'分', L'x'}) SendMessageW(hosted.TypingWindow(), WM_CHAR, unit, 1);
    EXPECT_EQ(events.changes, 2) << NameOf(kind);
    EXPECT_EQ(hosted.control.text(), L"分x") << NameOf(kind);
  }
}

TEST(clsControlEventsTest, SettingPropertiesRaisesNothing) {
  for (const ControlKind kind : kEveryKind) {
    for (const int multilin : {0, 1}) {
      HostedControl hosted(kind, multilin);
      const EventCounts events(hosted.control);
      for (const wchar_t* const entry : {L"a", L"b"}) hosted.control.AddItem(entry);
      hosted.control.text(L"text");
      hosted.control.Checked(true);
      hosted.control.ListIndex(1);
      hosted.control.ForeColor(Rgb(1, 2, 3));
      hosted.control.BackColor(Rgb(4, 5, 6));
      hosted.control.BorderStyle(1);
      hosted.control.Enabled(false);
      Pump();
      EXPECT_EQ(events.clicks, 0) << NameOf(kind);
      EXPECT_EQ(events.changes, 0) << NameOf(kind);
    }
  }
}

TEST(clsControlEventsTest, TakesTheFocusOfItsHostUnlessDisabled) {
  for (const ControlKind kind : kEveryKind) {
    if (kind == ControlKind::kLabel) continue;
    HostedControl hosted(kind);
    const auto hasFocus = [&] {
      return GetFocus() == hosted.control.hwnd() || IsChild(hosted.control.hwnd(), GetFocus());
    };
    hosted.host.SetFocus();
    EXPECT_TRUE(hasFocus()) << NameOf(kind);
    SetFocus(hosted.form.hwnd());
    hosted.control.Enabled(false);
    hosted.host.SetFocus();
    EXPECT_FALSE(hasFocus()) << NameOf(kind);
  }
}

TEST(clsControlEventsTest, KeyOfTheOwnerDoesNotReachTheControl) {
  HostedControl hosted(ControlKind::kRichEditBox, 1);
  SetFocus(hosted.control.hwnd());
  hosted.control.KeyDown = [](UINT key) { return key == VK_RETURN; };
  hosted.Press(VK_RETURN);
  EXPECT_EQ(hosted.control.text(), L"");
  hosted.Press('A');
  EXPECT_EQ(hosted.control.text().size(), 1U);
}

TEST(clsControlEventsTest, EnterIsANewLineInABoxOfManyLinesAndElseTheForms) {
  for (const ControlKind kind : {ControlKind::kEditBox, ControlKind::kRichEditBox}) {
    for (const int multilin : {0, 1}) {
      HostedControl hosted(kind, multilin);
      SetFocus(hosted.control.hwnd());
      hosted.Press('A');
      hosted.Press(VK_RETURN);
      hosted.Press('A');
      EXPECT_EQ(hosted.control.text().size(), multilin > 0 ? 4U : 2U) << NameOf(kind);
      EXPECT_EQ(hosted.control.text().substr(1, 2) == L"\r\n", multilin > 0) << NameOf(kind);
      EXPECT_EQ(hosted.form.enters, multilin > 0 ? 0 : 1) << NameOf(kind);
    }
  }
}

TEST(clsControlEventsTest, EscGoesToTheFormAndClosesNoHost) {
  for (const ControlKind kind : kEveryKind) {
    for (const int multilin : {0, 1}) {
      HostedControl hosted(kind, multilin);
      hosted.host.SetFocus();
      hosted.Press(VK_ESCAPE, hosted.TypingWindow());
      EXPECT_EQ(hosted.form.escapes, 1) << NameOf(kind);
      EXPECT_TRUE(IsWindow(hosted.host.hwnd())) << NameOf(kind);
    }
  }
}

TEST(clsControlEventsTest, EnterPressesAPushButtonOnce) {
  HostedControl hosted(ControlKind::kPushButton);
  const EventCounts events(hosted.control);
  SetFocus(hosted.control.hwnd());
  CaughtMessage characters(hosted.control.hwnd(), WM_CHAR);
  hosted.Press(VK_RETURN);
  EXPECT_EQ(events.clicks, 1);
  EXPECT_EQ(hosted.form.enters, 0);
  EXPECT_TRUE(characters.Taken().empty()) << "a box that the click disables must not get it";
  constexpr LPARAM kRepeated = 1 | (1 << 30);
  PostMessageW(hosted.control.hwnd(), WM_KEYDOWN, VK_RETURN, kRepeated);
  Pump();
  EXPECT_EQ(events.clicks, 1);
}

TEST(clsControlEventsTest, TabGoesFromControlToControlAndPastLabels) {
  HostedControl first(ControlKind::kEditBox, 1);
  BoxedControl others[3];
  const ControlKind kinds[] = {ControlKind::kLabel, ControlKind::kRichEditBox,
                               ControlKind::kDropDownList};
  for (int i = 0; i < 3; ++i) {
    others[i].control.Multilin(1);
    others[i].Create(first.form.hwnd(), kinds[i], L"");
    others[i].Move(200, 30 * i, 90, 24);
  }
  SetFocus(first.control.hwnd());
  for (const HWND next :
       {others[1].control.hwnd(), others[2].control.hwnd(), first.control.hwnd()}) {
    first.Press(VK_TAB, GetFocus());
    EXPECT_EQ(GetFocus(), next);
  }
  EXPECT_EQ(first.control.text(), L"");
}

TEST(clsControlEventsTest, AnyEventMayUnloadTheForm) {
  const struct {
    ControlKind kind;
    UINT message;
    WPARAM wParam;
  } cases[] = {{ControlKind::kPushButton, BM_CLICK, 0},
               {ControlKind::kPushButton, WM_KEYDOWN, VK_RETURN},
               {ControlKind::kEditBox, WM_CHAR, L'x'},
               {ControlKind::kEditBox, WM_KEYDOWN, VK_F5},
               {ControlKind::kDropDownList, WM_KEYDOWN, VK_DOWN}};
  for (const auto& [kind, message, wParam] : cases) {
    HostedControl hosted(kind);
    hosted.control.AddItem(L"a");
    hosted.control.Click = hosted.control.Change = [&] { hosted.form.Unload(); };
    hosted.control.KeyDown = [&](UINT key) { return key == VK_F5 && hosted.form.Unload(); };
    hosted.Send(message, wParam, 1);
    EXPECT_EQ(hosted.control.hwnd(), nullptr) << NameOf(kind);
  }
}

TEST(clsControlEventsTest, PastingReplacesTheSelectionByPlainText) {
  const struct {
    int multilin;
    std::vector<int> held;
    WPARAM key;
    bool isReadOnly;
    int limit;
    const wchar_t* text;
  } cases[] = {{0, {VK_CONTROL}, 'V', false, 1'000, L"a pasted c"},
               {1, {VK_CONTROL}, 'V', false, 10, L"a pasted c"},
               {1, {VK_CONTROL}, 'V', false, 8, L"a past c"},
               {1, {VK_CONTROL}, 'V', false, 3, L"a b c"},
               {1, {VK_SHIFT}, VK_INSERT, false, 1'000, L"a pasted c"},
               {1, {VK_CONTROL}, 'V', true, 1'000, L"a b c"},
               {1, {}, 'V', false, 1'000, L"a b c"}};
  for (const auto& [multilin, held, key, isReadOnly, limit, text] : cases) {
    HostedControl hosted(ControlKind::kRichEditBox, multilin);
    ASSERT_TRUE(PutRtfOnClipboard(hosted.form.hwnd()));
    hosted.control.text(L"a b c");
    hosted.Send(EM_SETREADONLY, isReadOnly);
    hosted.Send(EM_EXLIMITTEXT, 0, limit);
    hosted.Send(EM_SETSEL, 2, 3);
    {
      const HeldKeys keys(held);
      hosted.Send(WM_KEYDOWN, key, 1);
    }
    EXPECT_EQ(hosted.control.text(), text) << key << held.size() << isReadOnly << limit;
    hosted.Send(EM_SETSEL, 2, 3);
    CHARFORMATW format = {};
    format.cbSize = sizeof(format);
    hosted.Send(EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    EXPECT_EQ(format.yHeight, 9 * 20);
    EXPECT_STREQ(format.szFaceName, L"Tahoma");
  }
}

}  // namespace
}  // namespace tellurvane

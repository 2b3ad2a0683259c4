#include <gtest/gtest.h>

#include <memory>

#include "ControlTestSupport.h"
#include "ui/BoxedControl.h"

namespace tellurvane {
namespace {

// Counts every event of a control.
struct EventCounts {
  explicit EventCounts(clsControl& control) {
    control.Click = [this] { ++clicks; };
    control.Change = [this] { ++changes; };
    control.DblClick = [this] { ++doubleClicks; };
    control.GotFocus = [this] { ++gotFocus; };
    control.LostFocus = [this] { ++lostFocus; };
  }

  int clicks = 0, changes = 0, doubleClicks = 0, gotFocus = 0, lostFocus = 0;
};

HWND BoxOf(const clsControl& comboBox) {
  return FindWindowExW(comboBox.hwnd(), nullptr, L"Edit", nullptr);
}

void ClickOn(HWND window, int x, int y) {
  SendMouse(window, WM_LBUTTONDOWN, x, y, MK_LBUTTON);
  SendMouse(window, WM_LBUTTONUP, x, y);
}

TEST(clsControlEventsTest, ButtonsAndLabelsAreClicked) {
  for (const ControlKind kind : {ControlKind::kCheckBox, ControlKind::kPushButton,
                                 ControlKind::kOptionButton, ControlKind::kLabel}) {
    HostedControl hosted(kind);
    const EventCounts events(hosted.control);
    ClickOn(hosted.control.hwnd(), 10, 45);
    Pump();
    EXPECT_EQ(events.clicks, 1) << NameOf(kind);
  }
}

TEST(clsControlEventsTest, ChosenOptionIsMarkedWhenClickComes) {
  for (const ControlKind kind : {ControlKind::kCheckBox, ControlKind::kOptionButton}) {
    HostedControl hosted(kind);
    bool wasChecked = false;
    hosted.control.Click = [&] { wasChecked = hosted.control.Checked(); };
    ClickOn(hosted.control.hwnd(), 10, 45);
    EXPECT_TRUE(wasChecked) << NameOf(kind);
  }
}

// Below the hosted control.
void AddOption(BoxedControl& option, const Form& form) {
  option.Create(form.hwnd(), ControlKind::kOptionButton, L"");
  option.box.Move(10, 120, 150, 30);
}

TEST(clsControlEventsTest, OptionsInHostsOfTheirOwnAreGroupedByTheOwner) {
  HostedControl first(ControlKind::kOptionButton);
  BoxedControl second;
  AddOption(second, first.form);
  first.control.Click = [&] { second.control.Checked(false); };
  second.control.Click = [&] { first.control.Checked(false); };
  ClickOn(first.control.hwnd(), 10, 45);
  EXPECT_TRUE(first.control.Checked());
  ClickOn(second.control.hwnd(), 10, 15);
  EXPECT_FALSE(first.control.Checked());
  EXPECT_TRUE(second.control.Checked());
}

TEST(clsControlEventsTest, ReachingAnOptionByTheKeyboardDoesNotChooseIt) {
  HostedControl hosted(ControlKind::kOptionButton);
  const EventCounts events(hosted.control);
  SetFocus(hosted.control.hwnd());
  Pump();
  EXPECT_EQ(events.gotFocus, 1);
  EXPECT_EQ(events.clicks, 0);
  EXPECT_FALSE(hosted.control.Checked());
}

TEST(clsControlEventsTest, ComboBoxIsClickedWhenAnEntryIsChosen) {
  for (const ControlKind kind :
       {ControlKind::kEditableComboBox, ControlKind::kDropDownList, ControlKind::kSimpleComboBox}) {
    HostedControl hosted(kind);
    for (const wchar_t* const entry : {L"a", L"b", L"c"}) hosted.control.AddItem(entry);
    const EventCounts events(hosted.control);
    hosted.Press(VK_DOWN);
    hosted.Press(VK_DOWN);
    EXPECT_EQ(events.clicks, 2) << NameOf(kind);
    EXPECT_EQ(hosted.control.ListIndex(), 1) << NameOf(kind);
  }
}

TEST(clsControlEventsTest, ListBoxIsClickedWhenAnEntryIsChosen) {
  for (const ControlKind kind : {ControlKind::kListBox, ControlKind::kMultiSelectListBox,
                                 ControlKind::kToggleSelectListBox}) {
    HostedControl hosted(kind);
    for (const wchar_t* const entry : {L"a", L"b", L"c"}) hosted.control.AddItem(entry);
    const EventCounts events(hosted.control);
    ClickOn(hosted.control.hwnd(), 10, static_cast<int>(hosted.Send(LB_GETITEMHEIGHT)) + 3);
    EXPECT_EQ(events.clicks, 1) << NameOf(kind);
    EXPECT_EQ(hosted.control.ListIndex(), 1) << NameOf(kind);
  }
}

TEST(clsControlEventsTest, TypingChangesTheText) {
  for (const ControlKind kind : {ControlKind::kEditBox, ControlKind::kRichEditBox,
                                 ControlKind::kEditableComboBox, ControlKind::kSimpleComboBox}) {
    HostedControl hosted(kind);
    const EventCounts events(hosted.control);
    const HWND box =
        BoxOf(hosted.control) == nullptr ? hosted.control.hwnd() : BoxOf(hosted.control);
    SetFocus(box);
    SendMessageW(box, WM_CHAR, L'分', 1);
    SendMessageW(box, WM_CHAR, L'x', 1);
    EXPECT_EQ(events.changes, 2) << NameOf(kind);
    EXPECT_EQ(hosted.control.text(), L"分x") << NameOf(kind);
  }
}

TEST(clsControlEventsTest, SettingPropertiesRaisesNothing) {
  for (const ControlKind kind : kEveryKind) {
    for (const int multilin : {0, 1}) {
      HostedControl hosted(kind, multilin);
      const EventCounts events(hosted.control);
      hosted.control.AddItem(L"a");
      hosted.control.AddItem(L"b");
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

TEST(clsControlEventsTest, FocusComesAndGoes) {
  for (const ControlKind kind : kEveryKind) {
    if (kind == ControlKind::kLabel) continue;
    HostedControl hosted(kind);
    const EventCounts events(hosted.control);
    hosted.host.SetFocus();
    EXPECT_TRUE(GetFocus() == hosted.control.hwnd() || IsChild(hosted.control.hwnd(), GetFocus()))
        << NameOf(kind);
    EXPECT_EQ(events.gotFocus, 1) << NameOf(kind);
    SetFocus(hosted.form.hwnd());
    EXPECT_EQ(events.gotFocus, 1) << NameOf(kind);
    EXPECT_EQ(events.lostFocus, 1) << NameOf(kind);
  }
}

TEST(clsControlEventsTest, DisabledControlIsNotGivenTheKeyboard) {
  HostedControl hosted(ControlKind::kEditBox);
  hosted.control.Enabled(false);
  hosted.host.SetFocus();
  EXPECT_NE(GetFocus(), hosted.control.hwnd());
}

TEST(clsControlEventsTest, DoubleClickIsTold) {
  for (const ControlKind kind : kEveryKind) {
    HostedControl hosted(kind);
    const EventCounts events(hosted.control);
    hosted.control.AddItem(L"a");
    const HWND box =
        BoxOf(hosted.control) == nullptr ? hosted.control.hwnd() : BoxOf(hosted.control);
    SendMouse(box, WM_LBUTTONDBLCLK, 5, 5, MK_LBUTTON);
    SendMouse(box, WM_LBUTTONUP, 5, 5);
    EXPECT_EQ(events.doubleClicks, 1) << NameOf(kind);
  }
}

TEST(clsControlEventsTest, OwnerSeesKeysFirst) {
  for (const ControlKind kind : kEveryKind) {
    HostedControl hosted(kind);
    UINT seen = 0;
    hosted.control.KeyDown = [&](UINT key) {
      seen = key;
      return false;
    };
    const HWND box =
        BoxOf(hosted.control) == nullptr ? hosted.control.hwnd() : BoxOf(hosted.control);
    SendMessageW(box, WM_KEYDOWN, VK_F5, 1);
    EXPECT_EQ(seen, static_cast<UINT>(VK_F5)) << NameOf(kind);
  }
}

TEST(clsControlEventsTest, KeyForTheOwnerDoesNotReachTheControl) {
  for (const ControlKind kind : {ControlKind::kEditBox, ControlKind::kRichEditBox}) {
    HostedControl hosted(kind, 1);
    SetFocus(hosted.control.hwnd());
    hosted.control.KeyDown = [](UINT key) { return key == VK_RETURN; };
    hosted.Press(VK_RETURN);
    EXPECT_EQ(hosted.control.text(), L"") << NameOf(kind);
    hosted.Press('A');
    EXPECT_EQ(hosted.control.text().size(), 1U) << NameOf(kind);
  }
}

TEST(clsControlEventsTest, EnterMakesANewLineInABoxOfManyLines) {
  for (const ControlKind kind : {ControlKind::kEditBox, ControlKind::kRichEditBox}) {
    HostedControl hosted(kind, 1);
    SetFocus(hosted.control.hwnd());
    hosted.Press('A');
    hosted.Press(VK_RETURN);
    hosted.Press('A');
    EXPECT_EQ(hosted.control.text().substr(1, 2), L"\r\n") << NameOf(kind);
    EXPECT_EQ(hosted.control.text().size(), 4U) << NameOf(kind);
    EXPECT_EQ(hosted.form.enters, 0) << NameOf(kind);
  }
}

TEST(clsControlEventsTest, EnterInABoxOfOneLineIsTheForms) {
  for (const ControlKind kind : {ControlKind::kEditBox, ControlKind::kRichEditBox}) {
    HostedControl hosted(kind);
    SetFocus(hosted.control.hwnd());
    hosted.Press(VK_RETURN);
    EXPECT_EQ(hosted.form.enters, 1) << NameOf(kind);
    EXPECT_EQ(hosted.control.text(), L"") << NameOf(kind);
  }
}

TEST(clsControlEventsTest, EscIsTheFormsAndLeavesTheHostAlone) {
  for (const ControlKind kind : kEveryKind) {
    for (const int multilin : {0, 1}) {
      HostedControl hosted(kind, multilin);
      hosted.host.SetFocus();
      const HWND box =
          BoxOf(hosted.control) == nullptr ? hosted.control.hwnd() : BoxOf(hosted.control);
      hosted.Press(VK_ESCAPE, box);
      EXPECT_EQ(hosted.form.escapes, 1) << NameOf(kind);
      EXPECT_TRUE(IsWindow(hosted.host.hwnd())) << NameOf(kind);
    }
  }
}

TEST(clsControlEventsTest, EnterPressesAPushButtonOnce) {
  HostedControl hosted(ControlKind::kPushButton);
  const EventCounts events(hosted.control);
  SetFocus(hosted.control.hwnd());
  hosted.Press(VK_RETURN);
  EXPECT_EQ(events.clicks, 1);
  EXPECT_EQ(hosted.form.enters, 0);
  // Held down, it comes again and again.
  PostMessageW(hosted.control.hwnd(), WM_KEYDOWN, VK_RETURN, 1 | (1 << 30));
  Pump();
  EXPECT_EQ(events.clicks, 1);
}

TEST(clsControlEventsTest, TabGoesFromControlToControlAndPastLabels) {
  HostedControl first(ControlKind::kEditBox, 1);
  PictureBox hosts[3];
  clsControl controls[3];
  const ControlKind kinds[] = {ControlKind::kLabel, ControlKind::kRichEditBox,
                               ControlKind::kDropDownList};
  for (int i = 0; i < 3; ++i) {
    hosts[i].Create(
        {.parent = first.form.hwnd(), .x = 200, .y = 30 * i, .width = 90, .height = 24});
    controls[i].TargetPictureBox(hosts[i]);
    controls[i].Multilin(1);
    controls[i].Create(kinds[i]);
  }
  SetFocus(first.control.hwnd());
  first.Press(VK_TAB);
  EXPECT_EQ(GetFocus(), controls[1].hwnd());
  first.Press(VK_TAB, controls[1].hwnd());
  EXPECT_EQ(GetFocus(), controls[2].hwnd());
  first.Press(VK_TAB, controls[2].hwnd());
  EXPECT_EQ(GetFocus(), first.control.hwnd());
  EXPECT_EQ(first.control.text(), L"");
}

TEST(clsControlEventsTest, ArrowsOnAnOptionDoNotWander) {
  HostedControl first(ControlKind::kOptionButton);
  BoxedControl second;
  AddOption(second, first.form);
  SetFocus(first.control.hwnd());
  first.Press(VK_DOWN);
  EXPECT_EQ(GetFocus(), first.control.hwnd());
  EXPECT_FALSE(second.control.Checked());
}

TEST(clsControlEventsTest, AnyEventMayDestroyTheControl) {
  const TestForm form;
  const auto run = [&](ControlKind kind, auto wire, auto act) {
    PictureBox host;
    host.Create({.parent = form.hwnd(), .width = 150, .height = 60});
    auto control = std::make_unique<clsControl>();
    control->TargetPictureBox(host);
    control->Create(kind);
    control->AddItem(L"a");
    wire(*control, [&control] { control.reset(); });
    act(control->hwnd());
    Pump();
    EXPECT_EQ(control, nullptr) << NameOf(kind);
  };
  run(
      ControlKind::kPushButton, [](clsControl& c, auto end) { c.Click = end; },
      [](HWND window) { ClickOn(window, 10, 30); });
  run(
      ControlKind::kPushButton, [](clsControl& c, auto end) { c.Click = end; },
      [](HWND window) { SendMessageW(window, WM_KEYDOWN, VK_RETURN, 1); });
  run(
      ControlKind::kEditBox, [](clsControl& c, auto end) { c.Change = end; },
      [](HWND window) { SendMessageW(window, WM_CHAR, L'x', 1); });
  run(
      ControlKind::kListBox, [](clsControl& c, auto end) { c.DblClick = end; },
      [](HWND window) { SendMouse(window, WM_LBUTTONDBLCLK, 5, 5, MK_LBUTTON); });
  run(
      ControlKind::kEditBox,
      [](clsControl& c, auto end) {
        c.KeyDown = [end](UINT) {
          end();
          return true;
        };
      },
      [](HWND window) { SendMessageW(window, WM_KEYDOWN, 'A', 1); });
  run(
      ControlKind::kDropDownList, [](clsControl& c, auto end) { c.GotFocus = end; },
      [](HWND window) { SetFocus(window); });
}

}  // namespace
}  // namespace tellurvane

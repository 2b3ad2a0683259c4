#include "ui/Form.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "ClipboardSupport.h"
#include "tests/support/FormProbe.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/Density.h"
#include "ui/MessageLoop.h"
#include "ui/PictureBox.h"
#include "ui/Timer.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;

class RecordingForm : public Form {
 public:
  explicit RecordingForm(FormBorder border = FormBorder::kFixedSingle, HWND owner = nullptr) {
    Load({.caption = L"名稱",
          .border = border,
          .widthTwips = 3'000,
          .heightTwips = 1'500,
          .owner = owner});
  }

  using Form::FirstFocus;

  std::vector<std::string> events;
  std::vector<KeyEvent> keys;
  bool takesKeys = false;
  bool mayUnload = true;

 protected:
  void Form_Load() override { events.emplace_back("load"); }
  void Form_Resize() override { events.emplace_back("resize"); }
  bool Form_Unload() override {
    events.emplace_back("unload");
    return mayUnload;
  }
  bool Form_KeyDown(const KeyEvent& event) override {
    keys.push_back(event);
    return takesKeys;
  }
  void Form_Enter() override { events.emplace_back("enter"); }
  void Form_Escape() override { events.emplace_back("escape"); }
};

HWND CreateEdit(HWND parent, DWORD style = 0) {
  return CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 0, 0, 50, 20,
                         parent, nullptr, nullptr, nullptr);
}

TEST(FormTest, IsLoadedHiddenWithCaptionAndSizeInTwips) {
  RecordingForm form;
  EXPECT_TRUE(form.IsLoaded() && !form.Visible());
  EXPECT_EQ(WindowText(form.hwnd()), L"名稱");
  EXPECT_EQ(form.Width(), 3'000);
  EXPECT_EQ(form.Height(), 1'500);
  EXPECT_THAT(form.events, ElementsAre("load"));
  form.Move(0, 0, 3'300, 1'500);
  EXPECT_THAT(form.events, ElementsAre("load", "resize"));
}

TEST(FormTest, TheCloseBoxUnloadsUnlessTheFormWaitsOrRefuses) {
  RecordingForm form;
  form.events.clear();
  form.Enabled(false);
  SendMessageW(form.hwnd(), WM_CLOSE, 0, 0);
  EXPECT_THAT(form.events, ElementsAre());
  form.Enabled(true);
  form.mayUnload = false;
  SendMessageW(form.hwnd(), WM_CLOSE, 0, 0);
  EXPECT_TRUE(form.IsLoaded());
  form.mayUnload = true;
  SendMessageW(form.hwnd(), WM_CLOSE, 0, 0);
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_THAT(form.events, ElementsAre("unload", "unload"));
  EXPECT_TRUE(form.Unload()) << "it is unloaded already";
  EXPECT_EQ(form.events.size(), 2U);
  form.Load({});
  EXPECT_TRUE(form.IsLoaded());
}

TEST(FormTest, ItsKeysAreHandledAsLongAsItsWindowLives) {
  const RecordingForm owner;
  for (const char* const end : {"unload", "delete", "destroy", "destroy the owner"}) {
    auto form = std::make_unique<RecordingForm>(FormBorder::kFixedDialog, owner.hwnd());
    const HWND window = form->hwnd();
    EXPECT_TRUE(IsKeyboardForm(window));
    const std::string way = end;
    if (way == "unload") form->Unload();
    if (way == "delete") form.reset();
    if (way == "destroy") DestroyWindow(window);
    if (way == "destroy the owner") DestroyWindow(owner.hwnd());
    EXPECT_FALSE(IsWindow(window)) << way;
    EXPECT_FALSE(IsKeyboardForm(window)) << way;
    EXPECT_TRUE(!form || form->hwnd() == nullptr) << way;
  }
}

// The system sends them to top-level windows only.
TEST(FormTest, PassesNewColoursAndSettingsOnToEachControlOnce) {
  const RecordingForm form;
  PictureBox outer;
  outer.Create({.parent = form.hwnd(), .width = 90, .height = 50});
  PictureBox inner;
  inner.Create({.parent = outer.hwnd(), .width = 50, .height = 20});
  for (const HWND parent : {form.hwnd(), outer.hwnd(), inner.hwnd()}) {
    const HWND edit = CreateEdit(parent);
    for (const UINT message : {WM_SYSCOLORCHANGE, WM_SETTINGCHANGE}) {
      CaughtMessage caught(edit, message);
      SendMessageW(form.hwnd(), message, 5, 0);
      EXPECT_THAT(caught.Taken(), ElementsAre(WPARAM{5})) << message;
    }
  }
}

TEST(FormTest, EnterAndEscapeReachTheFormFromAControl) {
  RecordingForm form;
  const HWND edit = CreateEdit(form.hwnd());
  form.Show();
  form.events.clear();
  ::SetFocus(edit);
  PostMessageW(edit, WM_KEYDOWN, VK_RETURN, 0);
  PostMessageW(edit, WM_KEYDOWN, VK_ESCAPE, 0);
  EXPECT_TRUE(PumpUntil([&] { return form.events.size() >= 2; }));
  EXPECT_THAT(form.events, ElementsAre("enter", "escape"));
}

// The key that opened the form may still be down.
TEST(FormTest, EnterAndEscapeActOnceWhileTheyAreHeldDown) {
  RecordingForm form;
  form.Show();
  form.events.clear();
  const auto press = [](HWND control, UINT key, LPARAM lParam) {
    ::SetFocus(control);
    PostMessageW(control, WM_KEYDOWN, key, lParam);
    Pump();
  };
  const HWND line = CreateEdit(form.hwnd());
  // The loop remembers the last press, and a test before may have made it in another form.
  press(line, VK_F24, 1);
  for (const UINT key : {VK_RETURN, VK_ESCAPE}) {
    press(line, key, 0x4000'0001);
    EXPECT_THAT(form.events, ElementsAre()) << key;
  }
  press(line, VK_RETURN, 1);
  EXPECT_THAT(form.events, ElementsAre("enter"));
  const HWND lines = CreateEdit(form.hwnd(), ES_MULTILINE | ES_WANTRETURN);
  CaughtMessage caught(lines, WM_KEYDOWN);
  press(lines, VK_RETURN, 1);
  press(lines, VK_RETURN, 0x4000'0001);
  EXPECT_THAT(caught.Taken(), ElementsAre(WPARAM{VK_RETURN}, WPARAM{VK_RETURN})) << "its own keys";
  EXPECT_THAT(form.events, ElementsAre("enter"));
}

// Space on a button may open a form whose first field has selected text.
TEST(FormTest, AKeyHeldFromAnotherWindowIsLost) {
  const RecordingForm before;
  RecordingForm form;
  const HWND edit = CreateEdit(form.hwnd());
  form.Show();
  ::SetFocus(edit);
  CaughtMessage down(edit, WM_KEYDOWN);
  const auto press = [](HWND window, UINT key, LPARAM lParam) {
    PostMessageW(window, WM_KEYDOWN, key, lParam);
    Pump();
  };
  press(before.hwnd(), VK_SPACE, 1);
  press(edit, VK_SPACE, 0x4000'0001);
  EXPECT_THAT(form.keys, ElementsAre());
  EXPECT_THAT(down.Taken(), ElementsAre());
  EXPECT_EQ(GetWindowTextLengthW(edit), 0);
  press(edit, 'A', 0x4000'0001);
  EXPECT_THAT(down.Taken(), ElementsAre(WPARAM{'A'})) << "perhaps pressed in a menu";
  press(edit, VK_SPACE, 1);
  press(edit, VK_SPACE, 0x4000'0001);
  EXPECT_THAT(down.Taken(), ElementsAre(WPARAM{VK_SPACE}, WPARAM{VK_SPACE}));
  // An input method may take it over: it is known by its place on the keyboard.
  press(before.hwnd(), VK_SPACE, 0x0039'0001);
  press(edit, VK_PROCESSKEY, 0x4039'0001);
  EXPECT_THAT(down.Taken(), ElementsAre());
  press(edit, VK_PROCESSKEY, 0x401E'0001);
  EXPECT_THAT(down.Taken(), ElementsAre(WPARAM{VK_PROCESSKEY})) << "another key";
}

// A message box may have been open, which has a loop of its own.
TEST(FormTest, AKeyHeldSinceTheFormWasInactiveIsLost) {
  RecordingForm form;
  const HWND edit = CreateEdit(form.hwnd());
  form.Show();
  ::SetFocus(edit);
  CaughtMessage down(edit, WM_KEYDOWN);
  const auto press = [&](UINT key, LPARAM lParam) {
    PostMessageW(edit, WM_KEYDOWN, key, lParam);
    Pump();
  };
  press(VK_RETURN, 1);
  SendMessageW(form.hwnd(), WM_ACTIVATE, WA_INACTIVE, 0);
  SendMessageW(form.hwnd(), WM_ACTIVATE, WA_ACTIVE, 0);
  form.keys.clear();
  down.Taken();
  for (const UINT key : {VK_RETURN, VK_SPACE}) press(key, 0x4000'0001);
  EXPECT_THAT(form.keys, ElementsAre());
  EXPECT_THAT(down.Taken(), ElementsAre());
  press(VK_SPACE, 1);
  press(VK_SPACE, 0x4000'0001);
  EXPECT_THAT(down.Taken(), ElementsAre(WPARAM{VK_SPACE}, WPARAM{VK_SPACE}));
}

TEST(FormTest, AKeyHeldFromAnyOtherWindowIsLostInAFormOnly) {
  RecordingForm form;
  const HWND popup =
      CreateWindowExW(0, WC_EDITW, L"", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, nullptr, nullptr);
  const auto press = [](HWND window, UINT message, LPARAM lParam) {
    PostMessageW(window, message, 'A', lParam);
    Pump();
  };
  for (const UINT message : {WM_KEYDOWN, WM_SYSKEYDOWN}) {
    CaughtMessage inForm(form.hwnd(), message);
    CaughtMessage inPopup(popup, message);
    press(form.hwnd(), message, 1);
    press(popup, message, 0x4000'0001);
    EXPECT_THAT(inPopup.Taken(), ElementsAre(WPARAM{'A'})) << message;
    press(popup, message, 1);
    press(form.hwnd(), message, 0x4000'0001);
    EXPECT_THAT(inForm.Taken(), ElementsAre(WPARAM{'A'})) << message << ", its own one";
  }
  DestroyWindow(popup);
}

TEST(FormTest, AKeyReachesTheFormBeforeTheControl) {
  RecordingForm form;
  const HWND edit = CreateEdit(form.hwnd());
  form.Show();
  ::SetFocus(edit);
  const auto press = [&](UINT message, UINT key, LPARAM lParam, bool takesKeys) {
    form.keys.clear();
    form.takesKeys = takesKeys;
    const HeldKeys held({VK_SHIFT, VK_CONTROL});
    PostMessageW(edit, message, key, lParam);
    Pump();
    EXPECT_EQ(form.keys.size(), 1U);
    return form.keys.at(0);
  };
  CaughtMessage caught(edit, WM_KEYDOWN);
  const KeyEvent first = press(WM_KEYDOWN, 'A', 1, false);
  EXPECT_EQ(first.key, UINT{'A'});
  EXPECT_EQ(first.shift, kShiftKey | kControlKey);
  EXPECT_FALSE(first.isRepeated);
  EXPECT_TRUE(press(WM_KEYDOWN, 'A', 0x4000'0001, true).isRepeated);
  EXPECT_EQ(press(WM_SYSKEYDOWN, VK_F10, 1, true).key, UINT{VK_F10});
  EXPECT_THAT(caught.Taken(), ElementsAre(WPARAM{'A'})) << "only what the form did not take";
  PostMessageW(edit, WM_KEYUP, 'A', 1);
  Pump();
  EXPECT_EQ(form.keys.size(), 1U);
}

TEST(FormTest, TheKeyboardIsAtTheFirstControlAndComesBackToTheLast) {
  RecordingForm form;
  const HWND label = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20,
                                     form.hwnd(), nullptr, nullptr, nullptr);
  const HWND first = CreateEdit(form.hwnd());
  const HWND second = CreateEdit(form.hwnd());
  const HWND third = CreateEdit(form.hwnd());
  const auto activate = [&] {
    SendMessageW(form.hwnd(), WM_ACTIVATE, WA_INACTIVE, 0);
    ::SetFocus(nullptr);
    SendMessageW(form.hwnd(), WM_ACTIVATE, WA_ACTIVE, 0);
    return GetFocus();
  };
  form.Show();
  EXPECT_EQ(GetFocus(), first) << "the first of the Tab order";
  EXPECT_NE(GetFocus(), label);
  ::SetFocus(third);
  form.FirstFocus(second);
  EXPECT_EQ(activate(), third);
  EnableWindow(third, FALSE);
  EXPECT_EQ(activate(), second) << "the last one cannot take it";
  ::SetFocus(form.hwnd());
  DestroyWindow(second);
  EXPECT_EQ(activate(), first);
}

TEST(FormTest, TheFocusIsShownBeforeTheFirstTab) {
  RecordingForm form;
  EXPECT_EQ(SendMessageW(form.hwnd(), WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS, 0);
}

TEST(FormTest, AModalFormDisablesItsOwnerUntilItIsUnloaded) {
  RecordingForm owner;
  owner.Show();
  RecordingForm dialog(FormBorder::kFixedDialog, owner.hwnd());
  bool wasOwnerEnabled = true;
  Timer closer;
  closer.Interval(10);
  closer.Tick = [&] {
    if (!dialog.Visible()) return;
    wasOwnerEnabled = owner.Enabled();
    closer.Enabled(false);
    dialog.Unload();
  };
  closer.Enabled(true);
  dialog.ShowModal();
  EXPECT_FALSE(wasOwnerEnabled);
  EXPECT_TRUE(owner.Enabled());
  EXPECT_FALSE(dialog.IsLoaded());
}

TEST(FormTest, AQuitMessageEndsAModalFormsLoopAndIsLeftForTheOuterOne) {
  RecordingForm dialog(FormBorder::kFixedDialog);
  PostQuitMessage(7);
  dialog.ShowModal();
  MSG message = {};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7U);
}

TEST(FormTest, IsCentredOnItsOwnerAndKeptOnTheScreen) {
  SKIP_UNLESS_ONE_SCREEN();
  RecordingForm owner;
  owner.Move(3'000, 3'000);
  owner.Show();
  RecordingForm dialog(FormBorder::kFixedDialog, owner.hwnd());
  dialog.ResizeInside(100, 50);
  EXPECT_EQ(dialog.ScaleWidth(), 100);
  EXPECT_EQ(dialog.ScaleHeight(), 50);
  dialog.Center();
  const int tolerance = TwipsFromPixels(1);
  EXPECT_NEAR(dialog.Left() + dialog.Width() / 2, owner.Left() + owner.Width() / 2, tolerance);
  EXPECT_NEAR(dialog.Top() + dialog.Height() / 2, owner.Top() + owner.Height() / 2, tolerance);
  owner.Move(-2'900, 0);
  dialog.Center();
  EXPECT_GE(dialog.Left(), 0);
}

TEST(FormTest, IsPulledInsideWhenTheScreensChange) {
  SKIP_UNLESS_ONE_SCREEN();
  RecordingForm form(FormBorder::kNone);
  for (const bool isShown : {false, true}) {
    if (isShown) form.ShowWithoutFocus();
    form.Move(-900, TwipsFromPixels(GetSystemMetrics(SM_CYSCREEN) - 10));
    SendMessageW(form.hwnd(), WM_DISPLAYCHANGE, 32, 0);
    EXPECT_EQ(form.Left(), 0);
    EXPECT_EQ(form.Top() + form.Height(), TwipsFromPixels(GetSystemMetrics(SM_CYSCREEN)));
  }
}

TEST(FormTest, AMinimisedFormIsPulledInsideWhenItIsRestored) {
  RecordingForm form;
  form.Show();
  for (const bool haveScreensChanged : {true, false}) {
    form.Move(-900, 3'000);
    ShowWindow(form.hwnd(), SW_MINIMIZE);
    ASSERT_TRUE(IsIconic(form.hwnd()));
    if (haveScreensChanged) SendMessageW(form.hwnd(), WM_DISPLAYCHANGE, 32, 0);
    ShowWindow(form.hwnd(), SW_RESTORE);
    EXPECT_EQ(form.Left() == 0, haveScreensChanged) << form.Left();
  }
}

TEST(FormTest, ABorderlessFormHasItsOpacityAndNoTaskbarButton) {
  RecordingForm form(FormBorder::kNone);
  form.Opacity(210);
  EXPECT_EQ(OpacityOf(form.hwnd()), 210);
  const LONG_PTR style = GetWindowLongPtrW(form.hwnd(), GWL_EXSTYLE);
  EXPECT_NE(style & WS_EX_TOOLWINDOW, 0);
  EXPECT_EQ(style & WS_EX_APPWINDOW, 0);
}

TEST(FormTest, LeavesNothingBehind) {
  EXPECT_EQ(LeakedBy([] { RecordingForm().Show(); }), ResourceCounts());
}

}  // namespace
}  // namespace tellurvane

#include "ui/Form.h"

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tests/support/WindowTestSupport.h"
#include "ui/Density.h"
#include "ui/MessageLoop.h"
#include "ui/PictureBox.h"
#include "ui/Timer.h"

namespace tellurvane {
namespace {

// A form that writes down what happens to it.
class RecordingForm : public Form {
 public:
  std::vector<std::string> events;
  bool mayUnload = true;

  using Form::Load;
  void LoadPlain(FormBorder border = FormBorder::kFixedSingle, HWND owner = nullptr) {
    FormArgs args;
    args.caption = L"名稱";
    args.border = border;
    args.widthTwips = 3000;
    args.heightTwips = 1500;
    args.owner = owner;
    Load(args);
  }

 protected:
  void Form_Load() override { events.emplace_back("load"); }
  bool Form_Unload() override {
    events.emplace_back("unload");
    return mayUnload;
  }
  void Form_Enter() override { events.emplace_back("enter"); }
  void Form_Escape() override { events.emplace_back("escape"); }
};

TEST(FormTest, IsLoadedHiddenWithCaptionAndSizeInTwips) {
  RecordingForm form;
  EXPECT_FALSE(form.IsLoaded());
  form.LoadPlain();
  EXPECT_TRUE(form.IsLoaded());
  EXPECT_FALSE(form.Visible());
  EXPECT_EQ(WindowText(form.hwnd()), L"名稱");
  EXPECT_EQ(form.Width(), 3000);
  EXPECT_EQ(form.Height(), 1500);
  EXPECT_EQ(form.events, std::vector<std::string>{"load"});
}

TEST(FormTest, TheCloseBoxUnloadsUnlessTheFormRefuses) {
  RecordingForm form;
  form.LoadPlain();
  form.mayUnload = false;
  SendMessageW(form.hwnd(), WM_CLOSE, 0, 0);
  EXPECT_TRUE(form.IsLoaded());
  form.mayUnload = true;
  SendMessageW(form.hwnd(), WM_CLOSE, 0, 0);
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_EQ(form.events, (std::vector<std::string>{"load", "unload", "unload"}));
}

TEST(FormTest, ACloseMessageDoesNotReachAFormThatWaitsForItsDialog) {
  RecordingForm form;
  form.LoadPlain();
  EnableWindow(form.hwnd(), FALSE);
  SendMessageW(form.hwnd(), WM_CLOSE, 0, 0);
  EXPECT_TRUE(form.IsLoaded());
  EXPECT_EQ(form.events, std::vector<std::string>{"load"});
}

TEST(FormTest, UnloadingWhatIsNotLoadedDoesNothing) {
  RecordingForm form;
  EXPECT_TRUE(form.Unload());
  EXPECT_TRUE(form.events.empty());
}

TEST(FormTest, CanBeLoadedAgainAfterItsEnd) {
  RecordingForm form;
  form.LoadPlain();
  form.Unload();
  form.LoadPlain();
  EXPECT_TRUE(form.IsLoaded());
}

TEST(FormTest, LetsGoWhenItsWindowIsDestroyedByOthers) {
  RecordingForm form;
  form.LoadPlain();
  DestroyWindow(form.hwnd());
  EXPECT_EQ(form.hwnd(), nullptr);
}

TEST(FormTest, HasItsKeysHandledForAsLongAsItsWindowLives) {
  RecordingForm owner;
  owner.LoadPlain();
  auto form = std::make_unique<RecordingForm>();
  const auto load = [&] {
    form->LoadPlain(FormBorder::kFixedDialog, owner.hwnd());
    EXPECT_TRUE(IsKeyboardForm(form->hwnd()));
    return form->hwnd();
  };
  HWND window = load();
  form->Unload();
  EXPECT_FALSE(IsKeyboardForm(window)) << "unloaded";
  window = load();
  form.reset();
  EXPECT_FALSE(IsKeyboardForm(window)) << "ended with its object";
  form = std::make_unique<RecordingForm>();
  window = load();
  DestroyWindow(owner.hwnd());
  EXPECT_FALSE(IsWindow(window));
  EXPECT_FALSE(IsKeyboardForm(window)) << "destroyed by its owner";
}

// Writes down the texts of the settings that a window is told of, and how often of the colours.
struct Told {
  std::vector<std::wstring> settings;
  int colors = 0;

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR, DWORD_PTR object) {
    auto& self = *reinterpret_cast<Told*>(object);
    if (message == WM_SYSCOLORCHANGE) ++self.colors;
    if (message == WM_SETTINGCHANGE) {
      self.settings.emplace_back(reinterpret_cast<const wchar_t*>(lParam));
    }
    return DefSubclassProc(window, message, wParam, lParam);
  }
};

// The system tells top-level windows only.
TEST(FormTest, PassesNewColoursAndSettingsOnToEachControlOnce) {
  RecordingForm form;
  form.LoadPlain();
  PictureBox outer;
  outer.Create({.parent = form.hwnd(), .width = 90, .height = 50});
  PictureBox inner;
  inner.Create({.parent = outer.hwnd(), .width = 50, .height = 20});
  Told told[3];
  const HWND parents[] = {form.hwnd(), outer.hwnd(), inner.hwnd()};
  for (size_t i = 0; i < std::size(told); ++i) {
    const HWND edit = CreateWindowExW(0, L"EDIT", L"", WS_CHILD, 0, 0, 50, 20, parents[i], nullptr,
                                      nullptr, nullptr);
    ASSERT_TRUE(SetWindowSubclass(edit, Told::Procedure, 1, reinterpret_cast<DWORD_PTR>(&told[i])));
  }
  SendMessageW(form.hwnd(), WM_SYSCOLORCHANGE, 0, 0);
  SendMessageW(form.hwnd(), WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"intl"));
  for (const Told& each : told) {
    EXPECT_EQ(each.colors, 1);
    EXPECT_EQ(each.settings, std::vector<std::wstring>{L"intl"});
  }
}

TEST(FormTest, TheDestructorEndsTheWindow) {
  auto form = std::make_unique<RecordingForm>();
  form->LoadPlain();
  const HWND window = form->hwnd();
  form.reset();
  EXPECT_FALSE(IsWindow(window));
}

TEST(FormTest, EnterAndEscapeReachTheFormFromAControl) {
  RecordingForm form;
  form.LoadPlain();
  const HWND edit = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 50,
                                    20, form.hwnd(), nullptr, nullptr, nullptr);
  form.Show();
  ::SetFocus(edit);
  PostMessageW(edit, WM_KEYDOWN, VK_RETURN, 0);
  PostMessageW(edit, WM_KEYDOWN, VK_ESCAPE, 0);
  EXPECT_TRUE(PumpUntil([&] { return form.events.size() >= 3; }));
  EXPECT_EQ(form.events, (std::vector<std::string>{"load", "enter", "escape"}));
}

TEST(FormTest, TabWalksThroughTheControlsInsideTheBoxes) {
  RecordingForm form;
  form.LoadPlain();
  PictureBox first;
  PictureBox second;
  HWND edits[2] = {};
  PictureBox* const boxes[] = {&first, &second};
  for (size_t i = 0; i < 2; ++i) {
    boxes[i]->Create({.parent = form.hwnd(), .width = 50, .height = 20});
    edits[i] = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 50, 20,
                               boxes[i]->hwnd(), nullptr, nullptr, nullptr);
  }
  form.Show();
  ::SetFocus(edits[0]);
  PostMessageW(edits[0], WM_KEYDOWN, VK_TAB, 0);
  EXPECT_TRUE(PumpUntil([&] { return GetFocus() == edits[1]; }));
}

TEST(FormTest, AModalFormHoldsItsOwnerUntilItIsUnloaded) {
  RecordingForm owner;
  owner.LoadPlain();
  owner.Show();
  RecordingForm dialog;
  dialog.LoadPlain(FormBorder::kFixedDialog, owner.hwnd());
  bool wasOwnerEnabled = true;
  Timer closer;
  closer.Interval(10);
  closer.Tick = [&] {
    if (!dialog.Visible()) return;
    wasOwnerEnabled = IsWindowEnabled(owner.hwnd()) != 0;
    closer.Enabled(false);
    dialog.Unload();
  };
  closer.Enabled(true);
  dialog.ShowModal();
  EXPECT_FALSE(wasOwnerEnabled);
  EXPECT_TRUE(IsWindowEnabled(owner.hwnd()));
  EXPECT_FALSE(dialog.IsLoaded());
}

TEST(FormTest, AQuitMessageEndsAModalFormsLoopAndStaysForTheOuterOne) {
  RecordingForm dialog;
  dialog.LoadPlain(FormBorder::kFixedDialog);
  PostQuitMessage(7);
  dialog.ShowModal();
  MSG message = {};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7U);
}

TEST(FormTest, IsCentredOnItsOwnerAndKeptOnTheScreen) {
  RecordingForm owner;
  owner.LoadPlain();
  owner.Move(3000, 3000);
  owner.Show();
  RecordingForm dialog;
  dialog.LoadPlain(FormBorder::kFixedDialog, owner.hwnd());
  dialog.ResizeInside(100, 50);
  dialog.Center();
  const int tolerance = TwipsFromPixels(1);
  EXPECT_NEAR(dialog.Left() + dialog.Width() / 2, owner.Left() + owner.Width() / 2, tolerance);
  EXPECT_NEAR(dialog.Top() + dialog.Height() / 2, owner.Top() + owner.Height() / 2, tolerance);
  owner.Move(-2900, 0);
  dialog.Center();
  EXPECT_GE(dialog.Left(), 0);
}

TEST(FormTest, IsPulledInsideWhenTheScreensChange) {
  RecordingForm form;
  form.LoadPlain(FormBorder::kNone);
  for (const bool isShown : {false, true}) {
    if (isShown) form.ShowWithoutFocus();
    form.Move(-900, TwipsFromPixels(GetSystemMetrics(SM_CYSCREEN) - 10));
    SendMessageW(form.hwnd(), WM_DISPLAYCHANGE, 32, 0);
    EXPECT_EQ(form.Left(), 0);
    EXPECT_EQ(form.Top() + form.Height(), TwipsFromPixels(GetSystemMetrics(SM_CYSCREEN)));
  }
}

TEST(FormTest, AMinimisedOneIsPulledInsideWhenItIsRestored) {
  RecordingForm form;
  form.LoadPlain();
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

TEST(FormTest, ResizesItsInsideToPixels) {
  RecordingForm form;
  form.LoadPlain();
  form.ResizeInside(321, 123);
  EXPECT_EQ(form.ScaleWidth(), 321);
  EXPECT_EQ(form.ScaleHeight(), 123);
}

TEST(FormTest, HasTheOpacityThatWasSet) {
  RecordingForm form;
  form.LoadPlain(FormBorder::kNone);
  form.Opacity(210);
  BYTE opacity = 0;
  DWORD flags = 0;
  ASSERT_TRUE(GetLayeredWindowAttributes(form.hwnd(), nullptr, &opacity, &flags));
  EXPECT_EQ(opacity, 210);
  EXPECT_EQ(flags, static_cast<DWORD>(LWA_ALPHA));
}

TEST(FormTest, ABorderlessOneHasNoTaskbarButton) {
  RecordingForm form;
  form.LoadPlain(FormBorder::kNone);
  const LONG_PTR style = GetWindowLongPtrW(form.hwnd(), GWL_EXSTYLE);
  EXPECT_NE(style & WS_EX_TOOLWINDOW, 0);
  EXPECT_EQ(style & WS_EX_APPWINDOW, 0);
}

TEST(FormTest, LeavesNothingBehind) {
  EXPECT_EQ(LeakedBy([] {
              RecordingForm form;
              form.LoadPlain();
              form.Show();
            }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane

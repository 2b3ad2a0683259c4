// Windows, files and timers that the system fails to give: the toolkit works without them, or
// throws.
#include <windows.h>

#include <gtest/gtest.h>

#include <new>
#include <string>

#include "ClipboardSupport.h"
#include "ControlTestSupport.h"
#include "SubclassTestSupport.h"
#include "base/FatalError.h"
#include "tests/support/EachCallFails.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/FailingImport.h"
#include "tests/support/SourceTree.h"
#include "ui/ClsDate.h"
#include "ui/ClsIcon.h"
#include "ui/GXMSubclass.h"
#include "ui/Timer.h"
#include "ui/clsLictView.h"
#include "ui/clsNotifyIcon.h"
#include "ui/clsProgress.h"
#include "ui/clsToolbar.h"

namespace tellurvane {
namespace {

void CreateHost(PictureBox& host, const TestForm& form) {
  host.Create({.parent = form.hwnd(), .width = 150, .height = 60, .backColor = kHostColor});
}

void UseSliderListAndToolbar() {
  TestForm form;
  PictureBox sliderHost;
  CreateHost(sliderHost, form);
  clsProgress slider;
  slider.TargetPictureBox(sliderHost);
  slider.PostRender = [&](bool) { slider.PrintText(L"50 %", Rgb(151, 151, 151)); };
  slider.Create();
  slider.FontSize(8);
  slider.text(L"文字");
  slider.Value(37);
  PictureBox listHost;
  CreateHost(listHost, form);
  clsLictView list;
  list.Create(listHost);
  list.ColumnAdd(L"專案名稱", 120);
  list.OnData = [&](int, int, LVITEMW& cell) { list.GiveText(cell, L"文字"); };
  for (int i = 0; i < 2; ++i) list.ImageList(16, 16);
  list.RowHeight(30);
  list.ListCount(3);
  list.SetSelectList(1);
  PictureBox toolbarHost;
  CreateHost(toolbarHost, form);
  clsToolbar toolbar;
  toolbar.TargetPictureBox(toolbarHost);
  toolbar.Create(16);
  toolbar.AddBitmap(UniqueBitmap(CreateBitmap(32, 16, 1, 32, nullptr)).Get(), kWhite);
  toolbar.AddButton(0, L"新增", L"新增");
  Pump();
}

void UseControls() {
  TestForm form;
  for (const ControlKind kind : kEveryKind) {
    PictureBox host;
    CreateHost(host, form);
    clsControl control;
    control.TargetPictureBox(host);
    control.Create(kind);
    control.BorderStyle(1);
    control.BackColor(Rgb(1, 2, 3));
    control.text(L"文字");
    const std::wstring text = control.text();
    EXPECT_TRUE(text.empty() || text == L"文字") << "not a part of it";
    control.AddItem(L"項目");
    if (kind == ControlKind::kRichEditBox) {
      (void)PutRtfOnClipboard(form.hwnd());
      const HeldKeys keys({VK_CONTROL});
      SendMessageW(control.hwnd(), WM_KEYDOWN, 'V', 1);
    }
    host.Move(0, 0, 120, 70);
    Pump();
  }
}

void UsePickers() {
  TestForm form;
  for (const bool isDate : {true, false}) {
    ClsDate picker;
    picker.Create(form.hwnd(), 10, 10, 150, 25, isDate);
    picker.Value(40'588.5);
    EXPECT_EQ(picker.Value(), 40'588.5);
  }
}

void UseTrayIcon() {
  TestForm form;
  clsNotifyIcon icon;
  icon.IconInit(form);
  icon.IconTip(L"提示");
  icon.IconAdd();
  icon.IconTip(L"另一個");
  icon.IconDelete();
}

void LoadIconFile() {
  static const std::wstring path = SourceFile("resources/icon101.ico").wstring();
  ClsIcon icon;
  (void)icon.LoadFromFile(path);
}

TEST(FailingCallsTest, TheToolkitWorksOnOrThrows) {
  const Scenario scenarios[] = {
      {"slider, list, toolbar", UseSliderListAndToolbar, {"CreateWindowExW"}},
      {"controls", UseControls, {"CreateWindowExW", "OpenClipboard"}},
      {"pickers", UsePickers, {"CreateWindowExW"}},
      {"tray icon", UseTrayIcon, {"CreateWindowExW", "Shell_NotifyIconW"}},
      {"icon file", LoadIconFile, {"CreateFileW", "GetFileSizeEx", "ReadFile"}},
  };
  for (const Scenario& scenario : scenarios) FailEachCall(scenario);
}

TEST(FailingCallsTest, AWindowIsSubclassedWhollyOrNotAtAll) {
  bool isDone = false;
  for (int granted = 0; !isDone; ++granted) {
    ASSERT_LT(granted, 20) << "it always fails";
    const size_t blocks = LiveSubclassBlocks();
    const TargetWindow target;
    RecordingOwner owner;
    GXMSubclass engine;
    try {
      const FailingAllocation memory(granted, 1);
      isDone = engine.Subclass(target.hwnd(), owner, 0);
    } catch (const std::bad_alloc&) {
      isDone = false;
    }
    EXPECT_EQ(LiveSubclassBlocks(), blocks + (isDone ? 1 : 0));
    EXPECT_EQ(ProcedureOf(target.hwnd()) == TargetWindow::Procedure, !isDone);
    if (!isDone) engine.Subclass(target.hwnd(), owner, 0);
    engine.AddMessage(target.hwnd(), kPing, kBeforePrevious);
    target.Send(kPing);
    EXPECT_EQ(owner.calls, 1);
  }
}

TEST(FailingCallsTest, ATimerThatCannotBeSetThrowsAndDoesNotRun) {
  Timer timer;
  timer.Interval(10);
  {
    FailingImport call({"SetTimer"});
    call.Fail(1);
    EXPECT_THROW(timer.Enabled(true), FatalError);
  }
  {
    const FailingAllocation memory(0, 1);
    EXPECT_THROW(timer.Enabled(true), std::bad_alloc);
  }
  EXPECT_FALSE(timer.Enabled());
  bool hasTicked = false;
  timer.Tick = [&] { hasTicked = true; };
  timer.Enabled(true);
  EXPECT_TRUE(PumpUntil([&] { return hasTicked; }));
}

}  // namespace
}  // namespace tellurvane

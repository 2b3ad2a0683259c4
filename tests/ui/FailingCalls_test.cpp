// The toolkit where the platform refuses: it goes on without what it did not get, or says that it
// cannot go on.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <new>
#include <string>

#include "ClipboardSupport.h"
#include "ControlTestSupport.h"
#include "tests/support/ActingForm.h"
#include "tests/support/EachCallFails.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/GdiPlusSession.h"
#include "ui/ClsDate.h"
#include "ui/ClsIcon.h"
#include "ui/GXMSubclass.h"
#include "ui/MemoryContext.h"
#include "ui/ModTheme.h"
#include "ui/Timer.h"
#include "ui/clsLictView.h"
#include "ui/clsNotifyIcon.h"
#include "ui/clsPopupMenu.h"
#include "ui/clsProgress.h"
#include "ui/clsToolbar.h"

namespace tellurvane {
namespace {

constexpr RECT kPlace = {10, 10, 210, 90};

// A form with one box on it, for a control to stand in.
struct Stage {
  Stage() {
    host.Create({.parent = form.hwnd(),
                 .x = static_cast<int>(kPlace.left),
                 .y = static_cast<int>(kPlace.top),
                 .width = static_cast<int>(kPlace.right - kPlace.left),
                 .height = static_cast<int>(kPlace.bottom - kPlace.top),
                 .backColor = kHostColor,
                 .isTabStop = true});
  }

  TestForm form;
  PictureBox host;
};

void Repaint(HWND window) {
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
  Pump();
}

void UseSlider() {
  Stage stage;
  clsProgress slider;
  slider.TargetPictureBox(stage.host);
  slider.PostRender = [&](bool) { slider.PrintText(L"37 %", kBlack); };
  slider.Create();
  slider.Max(100);
  slider.Value(37);
  slider.FontSize(12);
  slider.text(L"音量");
  slider.TextWidth(L"音量");
  slider.Enabled(false);
  slider.Enabled(true);
  const RECT place = OnScreen(stage.host.hwnd());
  SetCursorPos(place.left + 5, place.top + 5);
  SendMouse(stage.host.hwnd(), WM_LBUTTONDOWN, 30, 5, MK_LBUTTON);
  SendMouse(stage.host.hwnd(), WM_MOUSEMOVE, 60, 5, MK_LBUTTON);
  SendMouse(stage.host.hwnd(), WM_LBUTTONUP, 60, 5);
  Repaint(stage.form.hwnd());
}

// As the program's own lists do it.
LRESULT DrawRow(const NMLVCUSTOMDRAW& draw) {
  if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  const auto picture = MemoryContext::Create(100, 40);
  if (!picture) return CDRF_DODEFAULT;
  ModTheme::SolidFill(picture->Dc(), 0, 0, 100, 40, kWhite);
  ModTheme::RichHighlight(picture->Dc(), 0, 0, 100, 40, kWhite, kHostColor);
  ModTheme::Text(picture->Dc(), L"列", 2, 2, {}, {});
  BitBlt(draw.nmcd.hdc, 0, 0, 100, 40, picture->Dc(), 0, 0, SRCCOPY);
  return CDRF_SKIPDEFAULT;
}

void UseList() {
  const GdiPlusSession gdiPlus;
  Stage stage;
  clsLictView list;
  list.OnData = [&](int, int, LVITEMW& cell) {
    if ((cell.mask & LVIF_TEXT) != 0) list.GiveText(cell, L"列");
  };
  list.CustomDraw = [](NMLVCUSTOMDRAW& draw, LRESULT& result) { result = DrawRow(draw); };
  list.Create(stage.host);
  list.RowHeight(42);
  list.ImageList(16, 16);
  const UniqueBitmap image(CreateBitmap(16, 16, 1, 32, nullptr));
  list.AddBitmap(image.Get(), kWhite);
  list.ColumnAdd(L"專案名稱", 120);
  list.AutoDraw(true);
  list.EmptyText(L"空");
  Repaint(stage.form.hwnd());
  list.ListCount(3);
  list.SetSelectList(1);
  list.Checked(2, true);
  list.RedrawVisibleItems();
  Repaint(stage.form.hwnd());
}

void UseToolbar() {
  Stage stage;
  clsToolbar toolbar;
  toolbar.TargetPictureBox(stage.host);
  toolbar.Create(16);
  const UniqueBitmap images(CreateBitmap(32, 16, 1, 32, nullptr));
  toolbar.AddBitmap(images.Get(), kWhite);
  toolbar.AddButton(0, L"新增", L"新增");
  toolbar.AddButton(1, L"播放");
  toolbar.Enabled(2, false);
  NMTTDISPINFOA tip = {};
  tip.hdr.code = TTN_GETDISPINFOA;
  tip.hdr.idFrom = 1;
  SendMessageW(stage.host.hwnd(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&tip));
  stage.host.Move(0, 0, 150, 30);
  Repaint(stage.form.hwnd());
}

void UseControls() {
  TestForm form;
  for (const ControlKind kind : kEveryKind) {
    PictureBox host;
    host.Create({.parent = form.hwnd(), .width = 150, .height = 60, .backColor = kHostColor});
    clsControl control;
    control.TargetPictureBox(host);
    control.Create(kind);
    control.BorderStyle(1);
    control.FontRightLeading(3);
    control.text(L"文字");
    const std::wstring text = control.text();
    EXPECT_TRUE(text.empty() || text == L"文字") << "not a part of it";
    control.AddItem(L"項目");
    control.ListIndex(0);
    if (kind == ControlKind::kRichEditBox) {
      (void)PutRtfOnClipboard(form.hwnd());
      const HeldKeys keys({VK_CONTROL});
      SendMessageW(control.hwnd(), WM_KEYDOWN, 'V', 1);
    }
    control.ForeColor(kHostColor);
    control.Enabled(false);
    host.Move(0, 0, 120, 70);
    Repaint(form.hwnd());
  }
}

void UsePickers() {
  TestForm form;
  for (const bool isDate : {true, false}) {
    ClsDate picker;
    picker.Create(form.hwnd(), 10, 10, 150, 25, isDate);
    picker.Enabled(true);
    picker.Value(40'588.5);
    EXPECT_EQ(picker.Value(), 40'588.5);
    Repaint(form.hwnd());
  }
}

constexpr UINT kProbeMessage = WM_APP + 7;

struct EngineProbe : GXISubclass {
  void WndProc(bool /*before*/, bool& /*handled*/, LRESULT& /*result*/, HWND /*window*/,
               UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/,
               LONG_PTR& /*userParam*/) override {
    ++heard;
  }

  GXMSubclass engine;
  int heard = 0;
};

void UseTrayIcon() {
  TestForm form;
  clsNotifyIcon icon;
  icon.IconInit(form);
  icon.IconTip(L"提示");
  icon.IconAdd();
  icon.IconTip(L"另一個");
  icon.IconDelete();
}

TEST(FailingCallsTest, TheToolkitGoesOnOrSaysThatItCannot) {
  const Scenario scenarios[] = {
      {"slider", UseSlider},
      {"list", UseList},
      {"toolbar", UseToolbar},
      {"controls", UseControls, {"CreateWindowExW", "OpenClipboard"}},
      {"pickers", UsePickers, {"CreateWindowExW"}},
      {"tray icon", UseTrayIcon, {"CreateWindowExW", "Shell_NotifyIconW"}},
  };
  for (const Scenario& scenario : scenarios) FailEachCall(scenario);
}

// Its own procedure is still there, and hears of the window's end.
TEST(FailingCallsTest, AWindowIsSubclassedWholeOrNotAtAll) {
  bool isDone = false;
  for (int granted = 0; !isDone; ++granted) {
    ASSERT_LT(granted, 20) << "it always fails";
    const size_t blocks = LiveSubclassBlocks();
    TestForm form;
    const auto procedure = GetWindowLongPtrW(form.hwnd(), GWLP_WNDPROC);
    {
      EngineProbe probe;
      {
        const FailingAllocation memory(granted, 1);
        try {
          probe.engine.Subclass(form.hwnd(), probe, 0);
          isDone = true;
        } catch (const std::bad_alloc&) {
          isDone = false;
        }
      }
      EXPECT_EQ(LiveSubclassBlocks(), blocks + (isDone ? 1 : 0));
      EXPECT_EQ(GetWindowLongPtrW(form.hwnd(), GWLP_WNDPROC) == procedure, !isDone);
      if (!isDone) probe.engine.Subclass(form.hwnd(), probe, 0);
      probe.engine.AddMessage(form.hwnd(), kProbeMessage, kBeforePrevious);
      SendMessageW(form.hwnd(), kProbeMessage, 0, 0);
      EXPECT_EQ(probe.heard, 1);
    }
    form.Unload();
    EXPECT_EQ(form.hwnd(), nullptr);
    EXPECT_EQ(LiveSubclassBlocks(), blocks);
  }
}

TEST(FailingCallsTest, ATimerThatHasNoPlaceDoesNotRun) {
  Timer timer;
  timer.Interval(10);
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

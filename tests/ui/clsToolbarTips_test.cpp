#include <gtest/gtest.h>

#include "SubclassTestSupport.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/clsToolbar.h"

namespace tellurvane {
namespace {

// Wine's toolbar makes its tips when the pointer comes. Others may make them with the toolbar,
// which asks its host for the format of notifications then.
TEST(ToolbarTipsTest, CannotBeClosedIfTheyAreMadeWithTheToolbar) {
  const TestForm form;
  PictureBox host;
  host.Create({.parent = form.hwnd(), .width = 330, .height = 26});
  const TargetWindow tips;
  RecordingOwner toolbarOfWindows;
  toolbarOfWindows.onCall = [&](const SubclassCall& call) {
    NMTOOLTIPSCREATED made = {};
    made.hdr = {reinterpret_cast<HWND>(call.wParam), 0, static_cast<UINT>(NM_TOOLTIPSCREATED)};
    made.hwndToolTips = tips.hwnd();
    SendMessageW(host.hwnd(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&made));
  };
  GXMSubclass engine;
  engine.Subclass(host.hwnd(), toolbarOfWindows, 0);
  engine.AddMessage(host.hwnd(), WM_NOTIFYFORMAT, kAfterPrevious);
  clsToolbar toolbar;
  toolbar.TargetPictureBox(host);
  toolbar.Create(16);
  tips.Send(WM_CLOSE);
  EXPECT_TRUE(IsWindow(tips.hwnd()));
}

}  // namespace
}  // namespace tellurvane

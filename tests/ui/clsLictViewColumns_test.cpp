// Who may change the width of the list's columns.
#include "ListTestSupport.h"
#include "ui/clsLictView.h"

namespace tellurvane {
namespace {

TEST_F(ListTest, LockColumnRefusesToTrackTheHeader) {
  const auto ask = [&](UINT code) {
    HDITEMW item = {};
    NMHEADERW track = {};
    track.hdr.hwndFrom = list().HeaderhWnd();
    track.hdr.code = code;
    track.pitem = &item;
    return SendMessageW(list().hwnd(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&track));
  };
  EXPECT_EQ(ask(HDN_BEGINTRACKW), 0);
  EXPECT_FALSE(list().LockColumn());
  list().LockColumn(true);
  for (const UINT code : {HDN_BEGINTRACKW, HDN_BEGINTRACKA, HDN_DIVIDERDBLCLICKW}) {
    EXPECT_EQ(ask(code), TRUE) << code;
  }
  list().LockColumn(false);
  EXPECT_EQ(ask(HDN_BEGINTRACKW), 0);
}

TEST_F(ListTest, LockedColumnKeepsItsWidthUnderTheMouse) {
  const auto drag = [&] {
    const HWND header = list().HeaderhWnd();
    RECT column = {};
    SendMessageW(header, HDM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&column));
    const int edge = static_cast<int>(column.right) - 1;
    SendMouse(header, WM_LBUTTONDOWN, edge, 8, MK_LBUTTON);
    SendMouse(header, WM_MOUSEMOVE, edge + 30, 8, MK_LBUTTON);
    SendMouse(header, WM_LBUTTONUP, edge + 30, 8);
    return list().ColumnWidth(0);
  };
  list().LockColumn(true);
  EXPECT_EQ(drag(), 120);
  list().ColumnWidth(0, 100);  // the owner may
  EXPECT_EQ(list().ColumnWidth(0), 100);
  list().LockColumn(false);
  EXPECT_NE(drag(), 100);
}

}  // namespace
}  // namespace tellurvane

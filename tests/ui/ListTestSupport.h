// A list on a form. The text of each cell names its row and column.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "ControlTestSupport.h"
#include "ui/clsLictView.h"

namespace tellurvane {

struct HostedList {
  HostedList() {
    host.Create({.parent = form.hwnd(), .x = 10, .y = 10, .width = 300, .height = 200});
    list.Create(host);
    list.RowHeight(30);
    list.ColumnAdd(L"專案名稱", 120);
    list.ColumnAdd(L"類型", 80, ColumnAlignment::kCenter);
    list.OnData = [this](int row, int column, LVITEMW& cell) {
      ++asked;
      if ((cell.mask & LVIF_TEXT) == 0) return;
      list.GiveText(cell, L"列" + std::to_wstring(row) + L"欄" + std::to_wstring(column));
    };
  }

  HWND Container() { return GetParent(list.hwnd()); }
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendMessageW(list.hwnd(), message, wParam, lParam);
  }

  void Paint() {
    InvalidateRect(list.hwnd(), nullptr, FALSE);
    UpdateWindow(list.hwnd());
  }

  // Sends a notification as the native list does.
  template <typename Record>
  LRESULT Notify(UINT code, Record& record) {
    auto& header = reinterpret_cast<NMHDR&>(record);
    header.hwndFrom = list.hwnd();
    header.code = code;
    return SendMessageW(Container(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&record));
  }

  // The middle of a row's first cell.
  POINT Middle(int row) { return {60, list.GetItemTop(row) + list.GetItemHeight() / 2}; }
  void ClickAt(const POINT& point, bool isLeft = true) {
    PostMouse(isLeft ? WM_LBUTTONDOWN : WM_RBUTTONDOWN, point, isLeft ? MK_LBUTTON : MK_RBUTTON);
    PostMouse(isLeft ? WM_LBUTTONUP : WM_RBUTTONUP, point);
    Pump();
  }
  // Posted: after a press the native list reads the queue to see whether a drag begins.
  void PostMouse(UINT message, const POINT& point, WPARAM keys = 0) {
    PostMessageW(list.hwnd(), message, keys, MAKELPARAM(point.x, point.y));
  }
  void Key(UINT key) {
    Send(WM_KEYDOWN, key);
    Send(WM_KEYUP, key);
  }

  KeyForm form;
  PictureBox host;
  clsLictView list;
  int asked = 0;  // cells
};

class ListTest : public testing::Test, protected HostedList {};

}  // namespace tellurvane

// A list on a form, whose texts name their cells.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/support/WindowTestSupport.h"
#include "ui/clsLictView.h"

namespace tellurvane {

// Counts the Enter keys that reach the form.
class EnterForm : public TestForm {
 public:
  int enters = 0;

 private:
  void Form_Enter() override { ++enters; }
};

class ListTest : public testing::Test {
 protected:
  ListTest() {
    PictureBoxArgs args;
    args.parent = form.hwnd();
    args.x = 10;
    args.y = 10;
    args.width = 300;
    args.height = 200;
    host.Create(args);
    Make();
  }

  void Make() {
    made = std::make_unique<clsLictView>();
    made->Create(host);
    made->ColumnAdd(L"專案名稱", 120);
    made->ColumnAdd(L"類型", 80, ColumnAlignment::kCenter);
    made->OnData = [this](int row, int column, LVITEMW& cell) {
      ++asked;
      if ((cell.mask & LVIF_TEXT) != 0) made->GiveText(cell, TextOf(row, column));
    };
  }

  static std::wstring TextOf(int row, int column) {
    return L"列" + std::to_wstring(row) + L"欄" + std::to_wstring(column);
  }

  clsLictView& list() { return *made; }
  HWND container() { return GetParent(list().hwnd()); }

  // Paints everything now; returns how many cells were asked for.
  int CellsAskedByPainting() {
    Pump();
    asked = 0;
    InvalidateRect(list().hwnd(), nullptr, FALSE);
    UpdateWindow(list().hwnd());
    return asked;
  }

  // A notification as the native list sends it.
  template <typename Record>
  LRESULT Notify(UINT code, Record& record) {
    auto& header = reinterpret_cast<NMHDR&>(record);
    header.hwndFrom = list().hwnd();
    header.code = code;
    return SendMessageW(container(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&record));
  }

  // The middle of a row's first cell.
  POINT Middle(int row) { return {60, list().GetItemTop(row) + list().GetItemHeight() / 2}; }
  void ClickAt(const POINT& point, bool isLeft = true) {
    PostMouse(isLeft ? WM_LBUTTONDOWN : WM_RBUTTONDOWN, point, isLeft ? MK_LBUTTON : MK_RBUTTON);
    PostMouse(isLeft ? WM_LBUTTONUP : WM_RBUTTONUP, point);
    Pump();
  }
  // Posted, as the system does: pressed, the native list fetches messages itself until it sees
  // whether a drag begins.
  void PostMouse(UINT message, const POINT& point, WPARAM keys = 0) {
    PostMessageW(list().hwnd(), message, keys, MAKELPARAM(point.x, point.y));
  }
  void Key(UINT key) {
    SendMessageW(list().hwnd(), WM_KEYDOWN, key, 0);
    SendMessageW(list().hwnd(), WM_KEYUP, key, 0);
  }

  EnterForm form;
  PictureBox host;
  std::unique_ptr<clsLictView> made;
  int asked = 0;
};

}  // namespace tellurvane

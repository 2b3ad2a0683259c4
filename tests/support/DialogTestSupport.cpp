#include "tests/support/DialogTestSupport.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include "tests/support/FormProbe.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {

std::string UsableAmong(const std::vector<NamedControl>& controls, HWND window) {
  std::string names;
  for (const NamedControl& each : controls) {
    bool isUsable = true;
    for (HWND up = each.control; up != window; up = GetParent(up)) {
      isUsable = isUsable && IsWindowEnabled(up) && IsWindowVisible(up);
    }
    if (isUsable) (names += names.empty() ? "" : " ") += each.name;
  }
  return names;
}

std::string FocusedAmong(const std::vector<NamedControl>& controls) {
  const HWND focus = GetFocus();
  for (const NamedControl& each : controls) {
    if (focus == each.control) return each.name;
  }
  return focus == nullptr ? "nothing" : "something else";
}

void ClickButton(HWND button) {
  ASSERT_TRUE(IsWindowEnabled(button));
  SetFocus(button);
  SendMessageW(button, BM_CLICK, 0, 0);
  Pump();
}

void PressKey(HWND window, UINT key) {
  const HWND focus = GetFocus();
  const HWND target = focus == nullptr ? window : focus;
  PostMessageW(target, WM_KEYDOWN, key, 1);
  PostMessageW(target, WM_KEYUP, key, static_cast<LPARAM>(0xC000'0001U));
  Pump();
}

void ChooseEntry(HWND comboBox, int entry) {
  ASSERT_TRUE(IsWindowEnabled(comboBox));
  SetFocus(comboBox);
  PressKey(comboBox, VK_HOME);
  for (int i = 0; i < entry; ++i) PressKey(comboBox, VK_DOWN);
  ASSERT_EQ(ChosenEntry(comboBox), entry);
}

std::vector<std::wstring> EntriesOf(HWND comboBox) {
  std::vector<std::wstring> entries;
  const auto count = static_cast<int>(SendMessageW(comboBox, CB_GETCOUNT, 0, 0));
  for (int i = 0; i < count; ++i) {
    wchar_t text[64] = {};
    SendMessageW(comboBox, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
    entries.emplace_back(text);
  }
  return entries;
}

std::vector<HWND> LabelsOf(HWND window) {
  auto labels = InsideOf(window, L"Static");
  std::erase_if(labels, [](HWND label) { return GetWindow(label, GW_CHILD) != nullptr; });
  return labels;
}

int ListRowCount(HWND list) { return static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0)); }

std::wstring ListCell(HWND list, int row, int column) {
  wchar_t text[256] = {};
  LVITEMW item = {};
  item.iSubItem = column;
  item.pszText = text;
  item.cchTextMax = static_cast<int>(std::size(text));
  SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  return text;
}

void SelectListRow(HWND list, int row) {
  LVITEMW item = {};
  item.stateMask = item.state = LVIS_SELECTED | LVIS_FOCUSED;
  SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  Pump();
}

void ExpectBoxesApart(HWND window, size_t count) {
  const std::vector<HWND> boxes = InsideOf(window, L"TellurvanePictureBox");
  EXPECT_EQ(boxes.size(), count);
  RECT inside = {};
  GetClientRect(window, &inside);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&inside), 2);
  for (size_t i = 0; i < boxes.size(); ++i) {
    const RECT place = OnScreen(boxes[i]);
    RECT common = {};
    IntersectRect(&common, &place, &inside);
    EXPECT_TRUE(EqualRect(&common, &place)) << i;
    for (size_t other = 0; other < i; ++other) {
      const RECT otherPlace = OnScreen(boxes[other]);
      EXPECT_FALSE(IntersectRect(&common, &place, &otherPlace)) << i << " and " << other;
    }
  }
}

}  // namespace tellurvane

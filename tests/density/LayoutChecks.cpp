#include "tests/density/LayoutChecks.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "base/CodePage.h"
#include "tests/support/DialogTestSupport.h"
#include "tests/support/FormProbe.h"
#include "tests/support/WindowTestSupport.h"
#include "ui/Density.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

std::string NameOf(HWND window) {
  const RECT place = OnScreen(window);
  return Utf8(ClassOf(window)) + " \"" + Utf8(WindowText(window)) + "\" at " +
         std::to_string(place.left) + ", " + std::to_string(place.top) + ", " +
         std::to_string(place.right - place.left) + " x " +
         std::to_string(place.bottom - place.top);
}

std::vector<HWND> VisibleChildren(HWND parent) {
  std::vector<HWND> children;
  for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    const RECT place = OnScreen(child);
    if (IsWindowVisible(child) && !IsRectEmpty(&place)) children.push_back(child);
  }
  return children;
}

RECT InsideOnScreen(HWND window) {
  RECT inside = {};
  GetClientRect(window, &inside);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&inside), 2);
  return inside;
}

bool LiesIn(const RECT& inner, const RECT& outer) {
  RECT common = {};
  return IntersectRect(&common, &inner, &outer) && EqualRect(&common, &inner);
}

SIZE ExtentOf(HWND control, const std::wstring& text) {
  const WindowDc context(control);
  const SelectedObject font(context.Get(),
                            reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
  SIZE size = {};
  GetTextExtentPoint32W(context.Get(), text.c_str(), static_cast<int>(text.size()), &size);
  return size;
}

// The width beside the text: the frame and margin of a push button, the box of an option.
int ChromeOf(HWND control) {
  if (ClassOf(control) != WC_BUTTONW) return 0;
  const auto kind = GetWindowLongPtrW(control, GWL_STYLE) & BS_TYPEMASK;
  const bool isPushButton = kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON;
  return isPushButton ? Scaled(8) : Scaled(17);
}

void ExpectWithin(HWND control, const std::wstring& text, int width) {
  EXPECT_LE(ExtentOf(control, text).cx, width) << Utf8(text) << " in " << NameOf(control);
}

void ExpectEntriesFit(HWND comboBox) {
  COMBOBOXINFO info = {};
  info.cbSize = sizeof(info);
  ASSERT_TRUE(GetComboBoxInfo(comboBox, &info));
  for (const std::wstring& entry : EntriesOf(comboBox)) {
    ExpectWithin(comboBox, entry, static_cast<int>(info.rcItem.right - info.rcItem.left));
  }
}

void ExpectToolbarFits(HWND toolbar) {
  RECT inside = {};
  GetClientRect(toolbar, &inside);
  const auto count = SendMessageW(toolbar, TB_BUTTONCOUNT, 0, 0);
  ASSERT_GT(count, 0);
  for (LRESULT i = 0; i < count; ++i) {
    RECT button = {};
    SendMessageW(toolbar, TB_GETITEMRECT, static_cast<WPARAM>(i),
                 reinterpret_cast<LPARAM>(&button));
    EXPECT_TRUE(LiesIn(button, inside)) << "button " << i << " of " << NameOf(toolbar);
  }
}

void ExpectColumnTitlesFit(HWND header) {
  const auto count = SendMessageW(header, HDM_GETITEMCOUNT, 0, 0);
  for (LRESULT i = 0; i < count; ++i) {
    wchar_t title[100] = {};
    HDITEMW item = {};
    item.mask = HDI_TEXT | HDI_WIDTH;
    item.pszText = title;
    item.cchTextMax = static_cast<int>(std::size(title));
    SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    ExpectWithin(header, title, item.cxy - Scaled(12));
  }
  RECT inside = {};
  GetClientRect(header, &inside);
  EXPECT_LE(ExtentOf(header, L"專案").cy, inside.bottom) << NameOf(header);
}

void ExpectCaptionFits(HWND control) {
  const std::wstring kind = ClassOf(control);
  if (kind == WC_BUTTONW || kind == WC_STATICW) ExpectTextFits(control);
  if (kind == WC_COMBOBOXW) ExpectEntriesFit(control);
  if (kind == TOOLBARCLASSNAMEW) ExpectToolbarFits(control);
  if (kind == WC_HEADERW) ExpectColumnTitlesFit(control);
  if (kind == WC_EDITW) {
    RECT inside = {};
    GetClientRect(control, &inside);
    EXPECT_LE(ExtentOf(control, L"專案").cy, inside.bottom) << NameOf(control);
  }
}

void ExpectApart(const std::vector<HWND>& siblings) {
  for (size_t i = 0; i < siblings.size(); ++i) {
    for (size_t j = i + 1; j < siblings.size(); ++j) {
      const RECT first = OnScreen(siblings[i]);
      const RECT second = OnScreen(siblings[j]);
      RECT common = {};
      EXPECT_FALSE(IntersectRect(&common, &first, &second))
          << NameOf(siblings[i]) << " and " << NameOf(siblings[j]);
    }
  }
}

}  // namespace

void ExpectTextFits(HWND control) {
  const std::wstring text = WindowText(control);
  RECT inside = {};
  GetClientRect(control, &inside);
  ExpectWithin(control, text, static_cast<int>(inside.right) - ChromeOf(control));
  EXPECT_LE(ExtentOf(control, text).cy, inside.bottom) << NameOf(control);
}

void ExpectGoodLayout(HWND window) {
  // The system arranges the inside of its own pickers.
  if (ClassOf(window) == DATETIMEPICK_CLASSW) return;
  const std::vector<HWND> children = VisibleChildren(window);
  ExpectApart(children);
  for (const HWND child : children) {
    EXPECT_TRUE(LiesIn(OnScreen(child), InsideOnScreen(window)))
        << NameOf(child) << " leaves " << NameOf(window);
    ExpectCaptionFits(child);
    ExpectGoodLayout(child);
  }
}

}  // namespace tellurvane

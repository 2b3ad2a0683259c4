#include <gtest/gtest.h>

#include "ControlTestSupport.h"
#include "ui/GXMSubclass.h"

namespace tellurvane {
namespace {

// SetDefaultDllDirectories, the program's first step, cannot be undone: later tests run with it.
TEST(clsControlLifeTest, LoadsTheRichEditLibraryFromTheSystemFolderAndKeepsIt) {
  ASSERT_TRUE(SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32));
  { const HostedControl hosted(ControlKind::kRichEditBox, 1); }
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(GetModuleHandleW(L"RICHED20.DLL"), path.data(), MAX_PATH));
  std::wstring system(MAX_PATH, L'\0');
  system.resize(GetSystemDirectoryW(system.data(), MAX_PATH));
  EXPECT_EQ(lstrcmpiW(path.substr(0, system.size()).c_str(), system.c_str()), 0);
  WNDCLASSW box = {};
  EXPECT_TRUE(GetClassInfoW(GetModuleHandleW(nullptr), L"RichEdit20W", &box));
}

TEST(clsControlLifeTest, TheListOfAComboBoxIgnoresACloseMessage) {
  HostedControl hosted(ControlKind::kDropDownList);
  for (const wchar_t* const entry : {L"a", L"b"}) hosted.control.AddItem(entry);
  hosted.control.ListIndex(1);
  COMBOBOXINFO info = {};
  info.cbSize = sizeof(info);
  ASSERT_TRUE(GetComboBoxInfo(hosted.control.hwnd(), &info));
  SendMessageW(info.hwndList, WM_CLOSE, 0, 0);
  EXPECT_TRUE(IsWindow(info.hwndList));
  EXPECT_EQ(hosted.control.ListIndex(), 1);
}

void ExpectEmpty(clsControl& control) {
  control.text(L"text");
  control.Checked(true);
  control.AddItem(L"entry");
  control.Enabled(false);
  control.BackColor(kBlack);
  control.Clear();
  EXPECT_EQ(control.hwnd(), nullptr);
  EXPECT_EQ(control.text(), L"");
  EXPECT_FALSE(control.Checked());
  EXPECT_EQ(control.ListCount(), 0);
  EXPECT_EQ(control.ListIndex(), -1);
  EXPECT_EQ(control.NewIndex(), -1);
}

TEST(clsControlLifeTest, IsEmptyWithoutAWindow) {
  clsControl neverCreated;
  ExpectEmpty(neverCreated);
  for (const ControlKind kind : kEveryKind) {
    SCOPED_TRACE(NameOf(kind));
    HostedControl hosted(kind);
    hosted.control.AddItem(L"entry");
    DestroyWindow(hosted.host.hwnd());
    ExpectEmpty(hosted.control);
  }
}

}  // namespace
}  // namespace tellurvane

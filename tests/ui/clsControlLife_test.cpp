#include <gtest/gtest.h>

#include <memory>

#include "ControlTestSupport.h"
#include "ui/GXMSubclass.h"

namespace tellurvane {
namespace {

// What it has left with the system may call it after the last box is gone.
TEST(clsControlLifeTest, TheRichEditLibraryIsNeverUnloaded) {
  const auto canBeMade = [] {
    const HWND made = CreateWindowExW(0, L"RichEdit20W", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr,
                                      GetModuleHandleW(nullptr), nullptr);
    if (made != nullptr) DestroyWindow(made);
    return made != nullptr;
  };
  { const clsControl one; }
  EXPECT_NE(GetModuleHandleW(L"RICHED20.DLL"), nullptr);
  EXPECT_TRUE(canBeMade());
}

// As the program's first step does. It cannot be taken back: the tests behind this one run so too.
TEST(clsControlLifeTest, FindsTheRichEditLibraryInTheSystemFolder) {
  ASSERT_TRUE(SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32));
  const HostedControl hosted(ControlKind::kRichEditBox, 1);
  EXPECT_NE(hosted.control.hwnd(), nullptr);
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(GetModuleHandleW(L"RICHED20.DLL"), path.data(), MAX_PATH));
  std::wstring system(MAX_PATH, L'\0');
  system.resize(GetSystemDirectoryW(system.data(), MAX_PATH));
  EXPECT_EQ(lstrcmpiW(path.substr(0, system.size()).c_str(), system.c_str()), 0);
}

TEST(clsControlLifeTest, TheListOfAComboBoxOutlivesACloseMessageToEveryWindow) {
  for (const ControlKind kind : {ControlKind::kDropDownList, ControlKind::kEditableComboBox}) {
    HostedControl hosted(kind);
    hosted.control.AddItem(L"one");
    hosted.control.AddItem(L"two");
    hosted.control.ListIndex(1);
    COMBOBOXINFO info = {};
    info.cbSize = sizeof(info);
    ASSERT_TRUE(GetComboBoxInfo(hosted.control.hwnd(), &info));
    SendMessageW(info.hwndList, WM_CLOSE, 0, 0);
    EXPECT_TRUE(IsWindow(info.hwndList));
    EXPECT_EQ(hosted.control.ListIndex(), 1);
  }
}

TEST(clsControlLifeTest, MayBeAskedWithoutAWindow) {
  clsControl control;
  EXPECT_EQ(control.hwnd(), nullptr);
  EXPECT_EQ(control.text(), L"");
  EXPECT_FALSE(control.Checked());
  EXPECT_EQ(control.ListCount(), 0);
  EXPECT_EQ(control.ListIndex(), -1);
  control.text(L"text");
  control.Checked(true);
  control.AddItem(L"entry");
  control.Clear();
  EXPECT_EQ(control.NewIndex(), -1);
}

TEST(clsControlLifeTest, SecondCreationReplacesTheFirst) {
  HostedControl hosted(ControlKind::kListBox);
  hosted.control.AddItem(L"entry");
  const HWND first = hosted.control.hwnd();
  hosted.control.Create(ControlKind::kEditBox);
  EXPECT_FALSE(IsWindow(first));
  EXPECT_EQ(GetWindow(hosted.host.hwnd(), GW_CHILD), hosted.control.hwnd());
  EXPECT_EQ(hosted.control.ListCount(), 0);
  EXPECT_EQ(hosted.control.NewIndex(), -1);
}

TEST(clsControlLifeTest, SurvivesItsHost) {
  for (const ControlKind kind : kEveryKind) {
    const TestForm form;
    auto host = std::make_unique<PictureBox>();
    host->Create({.parent = form.hwnd(), .width = 100, .height = 50});
    clsControl control;
    control.TargetPictureBox(*host);
    control.Create(kind);
    host.reset();
    EXPECT_EQ(control.hwnd(), nullptr) << NameOf(kind);
    control.Enabled(false);
    control.BackColor(kBlack);
    EXPECT_EQ(control.text(), L"") << NameOf(kind);
  }
}

TEST(clsControlLifeTest, MayBeCreatedAgainOnceTheFormIsLoadedAnew) {
  TestForm form;
  PictureBox host;
  clsControl control;
  control.TargetPictureBox(host);
  for (int round = 0; round < 3; ++round) {
    if (!form.IsLoaded()) form.Load(FormArgs());
    host.Create({.parent = form.hwnd(), .width = 100, .height = 50});
    control.Create(ControlKind::kDropDownList);
    control.AddItem(L"entry");
    EXPECT_EQ(control.ListCount(), 1);
    form.Unload();
    EXPECT_EQ(control.hwnd(), nullptr);
  }
}

class clsControlLeakTest : public testing::TestWithParam<ControlKind> {};

TEST_P(clsControlLeakTest, LeavesNothingBehind) {
  const TestForm form;
  PictureBox host;
  host.Create({.parent = form.hwnd(), .width = 100, .height = 50});
  int width = 100;
  const auto use = [&] {
    clsControl control;
    control.TargetPictureBox(host);
    control.Create(GetParam());
    control.BackColor(Rgb(1, 2, 3));
    control.text(L"text");
    control.AddItem(L"entry");
    control.BorderStyle(1);
    width = 180 - width;
    host.Move(0, 0, width, 40);
  };
  EXPECT_EQ(LeakedBy(use), ResourceCounts());
  EXPECT_EQ(LiveSubclassBlocks(), 0U);
}

INSTANTIATE_TEST_SUITE_P(EveryKind, clsControlLeakTest, testing::ValuesIn(kEveryKind),
                         [](const auto& row) {
                           return "Kind" + std::to_string(static_cast<int>(row.param));
                         });

}  // namespace
}  // namespace tellurvane

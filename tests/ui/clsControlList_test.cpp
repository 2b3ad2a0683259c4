#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "ControlTestSupport.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;

constexpr std::array kListKinds = {
    ControlKind::kEditableComboBox,   ControlKind::kDropDownList,
    ControlKind::kSimpleComboBox,     ControlKind::kListBox,
    ControlKind::kMultiSelectListBox, ControlKind::kToggleSelectListBox,
    ControlKind::kSortedListBox,
};

std::vector<std::wstring> EntriesOf(const clsControl& control) {
  std::vector<std::wstring> entries;
  for (int i = 0; i < control.ListCount(); ++i) entries.push_back(control.List(i));
  return entries;
}

TEST(clsControlListTest, AddsEntriesAndSaysWhere) {
  for (const ControlKind kind : kListKinds) {
    HostedControl hosted(kind);
    clsControl& list = hosted.control;
    EXPECT_EQ(list.NewIndex(), -1) << NameOf(kind);
    list.AddItem(L"a");
    EXPECT_EQ(list.NewIndex(), 0) << NameOf(kind);
    list.AddItem(L"網路電台");
    EXPECT_EQ(list.NewIndex(), 1) << NameOf(kind);
    EXPECT_EQ(list.ListCount(), 2) << NameOf(kind);
    EXPECT_THAT(EntriesOf(list), ElementsAre(L"a", L"網路電台")) << NameOf(kind);
  }
}

TEST(clsControlListTest, SortedListPutsAnEntryWhereItBelongs) {
  HostedControl hosted(ControlKind::kSortedListBox);
  for (const wchar_t* const entry : {L"m", L"z", L"a"}) hosted.control.AddItem(entry);
  EXPECT_THAT(EntriesOf(hosted.control), ElementsAre(L"a", L"m", L"z"));
  EXPECT_EQ(hosted.control.NewIndex(), 0);
}

TEST(clsControlListTest, KeepsEqualAndEmptyEntries) {
  HostedControl hosted(ControlKind::kDropDownList);
  for (const wchar_t* const entry : {L"", L"same", L"same"}) hosted.control.AddItem(entry);
  EXPECT_THAT(EntriesOf(hosted.control), ElementsAre(L"", L"same", L"same"));
}

TEST(clsControlListTest, RemovesEntries) {
  for (const ControlKind kind : kListKinds) {
    HostedControl hosted(kind);
    for (const wchar_t* const entry : {L"a", L"b", L"c"}) hosted.control.AddItem(entry);
    hosted.control.RemoveItem(1);
    EXPECT_THAT(EntriesOf(hosted.control), ElementsAre(L"a", L"c")) << NameOf(kind);
    EXPECT_EQ(hosted.control.NewIndex(), -1) << NameOf(kind);
    hosted.control.RemoveItem(2);
    hosted.control.RemoveItem(-1);
    EXPECT_EQ(hosted.control.ListCount(), 2) << NameOf(kind);
    hosted.control.Clear();
    EXPECT_EQ(hosted.control.ListCount(), 0) << NameOf(kind);
  }
}

TEST(clsControlListTest, KeepsAValueWithEachEntry) {
  for (const ControlKind kind : kListKinds) {
    HostedControl hosted(kind);
    hosted.control.AddItem(L"a");
    hosted.control.AddItem(L"b");
    hosted.control.ItemData(0, -7);
    hosted.control.ItemData(1, 0x123456789);
    EXPECT_EQ(hosted.control.ItemData(0), -7) << NameOf(kind);
    EXPECT_EQ(hosted.control.ItemData(1), 0x123456789) << NameOf(kind);
    EXPECT_EQ(hosted.control.ItemData(2), 0) << NameOf(kind);
    EXPECT_EQ(hosted.control.ItemData(-1), 0) << NameOf(kind);
  }
}

TEST(clsControlListTest, SelectsAnEntry) {
  for (const ControlKind kind :
       {ControlKind::kEditableComboBox, ControlKind::kDropDownList, ControlKind::kSimpleComboBox,
        ControlKind::kListBox, ControlKind::kSortedListBox}) {
    HostedControl hosted(kind);
    for (const wchar_t* const entry : {L"a", L"b", L"c"}) hosted.control.AddItem(entry);
    EXPECT_EQ(hosted.control.ListIndex(), -1) << NameOf(kind);
    hosted.control.ListIndex(2);
    EXPECT_EQ(hosted.control.ListIndex(), 2) << NameOf(kind);
    hosted.control.ListIndex(9);
    EXPECT_EQ(hosted.control.ListIndex(), -1) << NameOf(kind);
    hosted.control.ListIndex(1);
    hosted.control.ListIndex(-1);
    EXPECT_EQ(hosted.control.ListIndex(), -1) << NameOf(kind);
  }
}

TEST(clsControlListTest, ComboBoxShowsTheSelectedEntry) {
  for (const ControlKind kind :
       {ControlKind::kEditableComboBox, ControlKind::kDropDownList, ControlKind::kSimpleComboBox}) {
    HostedControl hosted(kind);
    hosted.control.AddItem(L"日本 LiveDoor");
    hosted.control.ListIndex(0);
    EXPECT_EQ(hosted.control.text(), L"日本 LiveDoor") << NameOf(kind);
  }
}

TEST(clsControlListTest, SelectsOneOfMany) {
  for (const ControlKind kind :
       {ControlKind::kMultiSelectListBox, ControlKind::kToggleSelectListBox}) {
    HostedControl hosted(kind);
    for (const wchar_t* const entry : {L"a", L"b", L"c"}) hosted.control.AddItem(entry);
    hosted.control.ListIndex(1);
    hosted.control.ListIndex(2);
    EXPECT_EQ(hosted.control.ListIndex(), 2) << NameOf(kind);
    EXPECT_EQ(hosted.Send(LB_GETSELCOUNT), 2) << NameOf(kind);
    EXPECT_GT(hosted.Send(LB_GETSEL, 1), 0) << NameOf(kind);
    hosted.control.ListIndex(-1);
    EXPECT_EQ(hosted.Send(LB_GETSELCOUNT), 0) << NameOf(kind);
  }
}

TEST(clsControlListTest, ReplacesAnEntrysTextAndKeepsTheRest) {
  for (const ControlKind kind : kListKinds) {
    HostedControl hosted(kind);
    for (const wchar_t* const entry : {L"a", L"b", L"c"}) hosted.control.AddItem(entry);
    hosted.control.ItemData(1, 42);
    hosted.control.ListIndex(1);
    hosted.control.List(1, L"zz");
    EXPECT_THAT(EntriesOf(hosted.control), ElementsAre(L"a", L"zz", L"c")) << NameOf(kind);
    EXPECT_EQ(hosted.control.ItemData(1), 42) << NameOf(kind);
    EXPECT_EQ(hosted.control.ListIndex(), 1) << NameOf(kind);
    hosted.control.List(0, L"y");
    EXPECT_EQ(hosted.control.ListIndex(), 1) << NameOf(kind);
    hosted.control.List(3, L"new");
    EXPECT_EQ(hosted.control.ListCount(), 3) << NameOf(kind);
    EXPECT_EQ(hosted.control.List(3), L"") << NameOf(kind);
  }
}

TEST(clsControlListTest, OtherKindsHaveNoEntries) {
  for (const ControlKind kind :
       {ControlKind::kCheckBox, ControlKind::kPushButton, ControlKind::kOptionButton,
        ControlKind::kLabel, ControlKind::kEditBox, ControlKind::kRichEditBox}) {
    HostedControl hosted(kind);
    hosted.control.AddItem(L"a");
    hosted.control.List(0, L"b");
    hosted.control.ListIndex(0);
    hosted.control.ItemData(0, 1);
    hosted.control.RemoveItem(0);
    hosted.control.Clear();
    EXPECT_EQ(hosted.control.ListCount(), 0) << NameOf(kind);
    EXPECT_EQ(hosted.control.ListIndex(), -1) << NameOf(kind);
    EXPECT_EQ(hosted.control.NewIndex(), -1) << NameOf(kind);
    EXPECT_EQ(hosted.control.ItemData(0), 0) << NameOf(kind);
    EXPECT_EQ(hosted.control.List(0), L"") << NameOf(kind);
  }
}

}  // namespace
}  // namespace tellurvane

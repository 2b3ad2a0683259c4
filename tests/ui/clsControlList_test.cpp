#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
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

// A control with the entries "a", "b" and "c".
struct ThreeEntries : HostedControl {
  explicit ThreeEntries(ControlKind kind) : HostedControl(kind) {
    for (const wchar_t* const entry : {L"a", L"b", L"c"}) control.AddItem(entry);
  }
};

TEST(clsControlListTest, AddsAndRemovesEntries) {
  for (const ControlKind kind : kListKinds) {
    HostedControl hosted(kind);
    clsControl& list = hosted.control;
    EXPECT_EQ(list.NewIndex(), -1) << NameOf(kind);
    for (const wchar_t* const entry : {L"", L"same", L"same", L"網路電台"}) list.AddItem(entry);
    EXPECT_EQ(list.NewIndex(), 3) << NameOf(kind);
    EXPECT_THAT(EntriesOf(list), ElementsAre(L"", L"same", L"same", L"網路電台")) << NameOf(kind);
    for (const int index : {1, 3, -1}) list.RemoveItem(index);
    EXPECT_THAT(EntriesOf(list), ElementsAre(L"", L"same", L"網路電台")) << NameOf(kind);
    EXPECT_EQ(list.NewIndex(), -1) << NameOf(kind);
    list.Clear();
    EXPECT_EQ(list.ListCount(), 0) << NameOf(kind);
  }
}

TEST(clsControlListTest, SortedListAddsAnEntryInOrder) {
  HostedControl hosted(ControlKind::kSortedListBox);
  for (const wchar_t* const entry : {L"m", L"z", L"a"}) hosted.control.AddItem(entry);
  EXPECT_THAT(EntriesOf(hosted.control), ElementsAre(L"a", L"m", L"z"));
  EXPECT_EQ(hosted.control.NewIndex(), 0);
}

TEST(clsControlListTest, SelectsAnEntry) {
  for (const ControlKind kind :
       {ControlKind::kEditableComboBox, ControlKind::kDropDownList, ControlKind::kSimpleComboBox,
        ControlKind::kListBox, ControlKind::kSortedListBox}) {
    ThreeEntries hosted(kind);
    EXPECT_EQ(hosted.control.ListIndex(), -1) << NameOf(kind);
    for (const auto& [index, selected] : {std::pair{2, 2}, {9, -1}, {1, 1}, {-1, -1}}) {
      hosted.control.ListIndex(index);
      EXPECT_EQ(hosted.control.ListIndex(), selected) << NameOf(kind);
    }
  }
}

TEST(clsControlListTest, SelectsOneOfMany) {
  for (const ControlKind kind :
       {ControlKind::kMultiSelectListBox, ControlKind::kToggleSelectListBox}) {
    ThreeEntries hosted(kind);
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
    ThreeEntries hosted(kind);
    hosted.control.ItemData(1, 0x123456789);
    hosted.control.ListIndex(1);
    hosted.control.List(1, L"zz");
    EXPECT_THAT(EntriesOf(hosted.control), ElementsAre(L"a", L"zz", L"c")) << NameOf(kind);
    EXPECT_EQ(hosted.control.ItemData(1), 0x123456789) << NameOf(kind);
    EXPECT_EQ(hosted.control.ListIndex(), 1) << NameOf(kind);
    hosted.control.List(0, L"y");
    EXPECT_EQ(hosted.control.ListIndex(), 1) << NameOf(kind);
    hosted.control.List(3, L"new");
    EXPECT_EQ(hosted.control.ListCount(), 3) << NameOf(kind);
    EXPECT_EQ(hosted.control.List(3), L"") << NameOf(kind);
    EXPECT_EQ(hosted.control.ItemData(3), 0) << NameOf(kind);
  }
}

}  // namespace
}  // namespace tellurvane

// What a letter that is typed in the list finds.
#include "ListTestSupport.h"
#include "ui/clsLictView.h"

namespace tellurvane {
namespace {

class ListTypingTest : public ListTest {
 protected:
  ListTypingTest() {
    list().OnData = [this](int row, int column, LVITEMW& cell) {
      if ((cell.mask & LVIF_TEXT) == 0) return;
      list().GiveText(cell, column == 0 ? names.at(static_cast<size_t>(row)) : L"b");
    };
    list().ListCount(static_cast<int>(names.size()));
  }

  void Type(const std::wstring& text) {
    for (const wchar_t unit : text) SendMessageW(list().hwnd(), WM_CHAR, unit, 1);
  }
  int Found(UINT flags, const wchar_t* text, int start) {
    NMLVFINDITEMW search = {};
    search.iStart = start;
    search.lvfi.flags = flags;
    search.lvfi.psz = text;
    return static_cast<int>(Notify(static_cast<UINT>(-179), search));
  }

  const std::vector<std::wstring> names = {L"alpha", L"Beta", L"音樂", L"beta 2", L"Été", L"c"};
};

TEST_F(ListTypingTest, ALetterGoesToTheNextNameThatBeginsWithIt) {
  list().SetSelectList(0);
  Type(L"b");
  EXPECT_EQ(list().Selected(), 1);
}

TEST_F(ListTypingTest, ALetterGoesOnFromTheSelectedRowAndThenFromTheTop) {
  list().SetSelectList(1);
  Type(L"b");
  EXPECT_EQ(list().Selected(), 3);
}

TEST_F(ListTypingTest, ALetterThatNoNameBeginsWithChangesNothing) {
  list().SetSelectList(3);
  Type(L"x");
  EXPECT_EQ(list().Selected(), 3);
}

TEST_F(ListTypingTest, FindsNamesAsTheNativeListAsksForThem) {
  constexpr UINT kBegins = LVFI_PARTIAL;
  constexpr UINT kSubstring = 0x0004;  // LVFI_SUBSTRING, which means the same
  constexpr UINT kTyped = LVFI_STRING | LVFI_PARTIAL | LVFI_WRAP;
  const struct {
    UINT flags;
    const wchar_t* text;
    int start;
    int row;
  } rows[] = {
      {kTyped, L"b", 0, 1},
      {kTyped, L"b", 2, 3},
      {kTyped, L"B", 4, 1},
      {kTyped, L"beta 2", 0, 3},
      {kTyped, L"音", 0, 2},
      {kTyped, L"é", 0, 4},
      {kTyped, L"x", 0, -1},
      {kTyped, L"b", 6, 1},
      {kTyped, L"b", -1, 1},
      {kBegins, L"b", 4, -1},
      {kBegins, L"c", 4, 5},
      {LVFI_STRING, L"bet", 0, -1},
      {LVFI_STRING, L"BETA 2", 0, 3},
      {LVFI_PARAM, L"b", 0, -1},
      {0, L"b", 0, -1},
      {kTyped, nullptr, 0, -1},
      {kSubstring, L"b", 0, 1},
      {LVFI_STRING | kSubstring | LVFI_WRAP, L"B", 2, 3},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Found(row.flags, row.text, row.start), row.row) << "row " << &row - rows;
  }
  list().ListCount(0);
  EXPECT_EQ(Found(kTyped, L"b", 0), -1);
}

}  // namespace
}  // namespace tellurvane

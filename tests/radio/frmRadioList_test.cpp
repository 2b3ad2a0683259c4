// The dialog's controls, which of them can be used, its keys, its settings, and what it returns.
#include "radio/frmRadioList.h"

#include <commctrl.h>

#include "tests/radio/RadioFixture.h"
#include "tests/support/FormProbe.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr const char* kByGenre = "source byGenre genre byWord search list add close";
constexpr const char* kByKeyword = "source byGenre byWord keyword search list add close";
constexpr const char* kNoSearch = "source search list add close";

class frmRadioListTest : public RadioFixture {
 protected:
  static bool IsMarked(HWND option) { return SendMessageW(option, BM_GETCHECK, 0, 0) != 0; }
};

TEST_F(frmRadioListTest, ShowsSourcesGenresAndColumns) {
  Play([this] {
    EXPECT_EQ(WindowText(window), L"Radio List");
    EXPECT_FALSE(owner.Enabled()) << "it is modal";
    EXPECT_THAT(EntriesOf(cboSource),
                ElementsAre(L"SHOUTcast", L"Icecast", L"日本 LiveDoor", L"國內電台",
                            L"Radio Browser", L"Radio Browser 台灣電台"));
    EXPECT_EQ(ChosenEntry(cboSource), 4);
    const Texts genres = EntriesOf(cboGenre);
    ASSERT_EQ(genres.size(), kGenres.size());
    for (size_t i = 0; i < genres.size(); ++i) EXPECT_EQ(genres[i], kGenres[i].label);
    const struct {
      const wchar_t* title;
      int format;
    } columns[] = {
        {L"電台名稱", LVCFMT_LEFT}, {L"類型", LVCFMT_CENTER}, {L"壓縮頻率", LVCFMT_RIGHT}};
    int width = 0;
    for (int i = 0; i < 3; ++i) {
      wchar_t title[64] = {};
      LVCOLUMNW column = {};
      column.mask = LVCF_TEXT | LVCF_FMT | LVCF_WIDTH;
      column.pszText = title;
      column.cchTextMax = static_cast<int>(std::size(title));
      ListView_GetColumn(list, i, &column);
      EXPECT_STREQ(title, columns[i].title);
      EXPECT_EQ(column.fmt & LVCFMT_JUSTIFYMASK, columns[i].format);
      width += column.cx;
    }
    const int space = static_cast<int>(OnScreen(list).right - OnScreen(list).left) -
                      GetSystemMetrics(SM_CXVSCROLL);
    EXPECT_LE(width, space);
    EXPECT_GE(width, space - 8);
    ExpectBoxesApart(window, 10);
  });
}

TEST_F(frmRadioListTest, EnterTakesTheFramedStationAndTheButtonOnlyASelectedOne) {
  const auto choose = [this](const std::function<void()>& act) {
    return Play([&, act] {
      SearchHinet();
      SetFocus(list);
      act();
      EXPECT_FALSE(IsOpen());
    });
  };
  EXPECT_EQ(choose([this] { Press(VK_RETURN); }), L"mms://host/0");
  EXPECT_EQ(choose([this] { Click(cmdOk); }), std::nullopt);
}

TEST_F(frmRadioListTest, SourceAndModeDecideWhatCanBeUsed) {
  Play([this] {
    EXPECT_EQ(Usable(), kByGenre);
    Click(optKeyword);
    EXPECT_EQ(Usable(), kByKeyword);
    EXPECT_TRUE(!IsMarked(optGenre) && IsMarked(optKeyword));
    for (const int source : {2, 3, 5}) {
      Choose(cboSource, source);
      EXPECT_EQ(Usable(), kNoSearch) << source;
    }
    for (const int source : {0, 1, 4}) {
      Choose(cboSource, source);
      EXPECT_EQ(Usable(), kByKeyword) << source;
    }
    Click(optGenre);
    EXPECT_EQ(Usable(), kByGenre);
    EXPECT_TRUE(IsMarked(optGenre) && !IsMarked(optKeyword));
  });
}

TEST_F(frmRadioListTest, StartsWithTheSettingsAndAcceptsAnyValue) {
  const struct {
    const wchar_t* genre;
    const wchar_t* name;
    const wchar_t* type;
    int entry;
    const char* usable;
  } rows[] = {{L"7", L"台北", L"1", 7, kByKeyword},
              {L"27", L"", L"0", 27, kByGenre},
              {L"", L" a ", L"", 0, kByGenre},
              {L"abc", L"x", L"abc", 0, kByGenre},
              {L"28", L"x", L"2", -1, kByGenre},
              {L"-1", L"x", L"-1", -1, kByGenre},
              {L"99999999999", L"x", L"99999999999", 0, kByGenre}};
  for (const auto& row : rows) {
    settings = {{L"Genre", row.genre}, {L"SearchName", row.name}, {L"SearchType", row.type}};
    Play([&] {
      EXPECT_EQ(ChosenEntry(cboGenre), row.entry) << row.genre;
      EXPECT_EQ(WindowText(txtKeyword), row.name);
      EXPECT_EQ(Usable(), row.usable) << row.type;
      EXPECT_EQ(IsMarked(optGenre), row.usable == kByGenre);
      EXPECT_EQ(IsMarked(optKeyword), row.usable == kByKeyword);
    });
  }
}

TEST_F(frmRadioListTest, WritesTheModeWhenItIsChosenAndTheRestWhenItCloses) {
  const std::function<void()> ends[] = {[this] { Click(cmdCancel); }, [this] { Click(cmdOk); },
                                        [this] { DestroyWindow(window); }};
  for (const auto& end : ends) {
    written.clear();
    Play([&] {
      Choose(cboGenre, 18);
      Click(optKeyword);
      Click(optGenre);
      Click(optGenre);
      EXPECT_THAT(written, ElementsAre(Pair(L"SearchType", L"1"), Pair(L"SearchType", L"0"),
                                       Pair(L"SearchType", L"0")));
      Type(L" R&B ");
      written.clear();
      end();
    });
    EXPECT_THAT(written, ElementsAre(Pair(L"Genre", L"18"), Pair(L"SearchName", L" R&B ")));
  }
}

TEST_F(frmRadioListTest, ReturnsNothingWithoutAStationOrItsAddress) {
  hinetUrl.clear();
  fetch = [](const std::wstring&) { return L"<item id=\"\" myTitle=\"x\"/>"; };
  for (const bool selects : {false, true}) {
    EXPECT_EQ(Play([&] {
                SearchHinet();
                if (selects) SelectRow(0);
                Click(cmdOk);
                EXPECT_FALSE(IsOpen());
              }),
              std::nullopt);
  }
}

TEST_F(frmRadioListTest, OnlyALeftDoubleClickOnARowConfirms) {
  const struct {
    UINT code;
    int row;
    bool confirms;
  } clicks[] = {{NM_RDBLCLK, 0, false}, {NM_DBLCLK, -1, false}, {NM_DBLCLK, 0, true}};
  Play([&] {
    SearchHinet();
    SelectRow(0);
    for (const auto& [code, row, confirms] : clicks) {
      NMITEMACTIVATE click = {};
      click.hdr.hwndFrom = list;
      click.hdr.code = code;
      click.iItem = row;
      SendMessageW(GetParent(list), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&click));
      EXPECT_NE(IsOpen(), confirms) << code << " on " << row;
    }
  });
}

TEST_F(frmRadioListTest, LeaksNothing) {
  EXPECT_EQ(LeakedBy([this] {
              Play([this] {
                SearchHinet();
                SelectRow(1);
                UpdateWindow(list);
                Click(cmdOk);
              });
            }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane

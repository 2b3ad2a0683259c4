// What stands on the dialog, which of it can be used, its keys, its settings, and what it returns.
#include "radio/frmRadioList.h"

#include <commctrl.h>

#include "tests/radio/RadioRig.h"
#include "tests/support/DialogTestSupport.h"
#include "tests/support/FormProbe.h"

namespace tellurvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr const char* kByGenre = "source byGenre genre byWord search list add close";
constexpr const char* kByKeyword = "source byGenre byWord keyword search list add close";
constexpr const char* kNoSearch = "source search list add close";

class frmRadioListTest : public RadioTest {
 protected:
  void SetUp() override {
    fetch = [](const std::wstring&) { return HinetPage({L"甲", L"乙", L"丙"}); };
  }
  // A search that finds the three.
  void SearchHinet() const {
    ChooseHinet();
    Search();
    ASSERT_EQ(RowCount(), 3);
  }
  std::wstring ColumnTitle(int column, int& format) const {
    wchar_t title[64] = {};
    LVCOLUMNW native = {};
    native.mask = LVCF_TEXT | LVCF_FMT;
    native.pszText = title;
    native.cchTextMax = static_cast<int>(std::size(title));
    SendMessageW(list, LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&native));
    format = native.fmt & LVCFMT_JUSTIFYMASK;
    return title;
  }
};

TEST_F(frmRadioListTest, HoldsSourcesGenresButtonsAndColumns) {
  Play([this] {
    EXPECT_EQ(WindowText(window), L"Radio List");
    EXPECT_THAT(Entries(cboSource),
                ElementsAre(L"SHOUTcast", L"Icecast", L"日本 LiveDoor", L"國內電台"));
    EXPECT_EQ(Entry(cboSource), 0);
    const Texts genres = Entries(cboGenre);
    ASSERT_EQ(genres.size(), 28U);
    EXPECT_EQ(genres.front(), L"Top 精選 (Top Streams)");
    EXPECT_EQ(genres[7], L"新世紀音樂 (New Age)");
    EXPECT_EQ(genres.back(), L"遊戲音樂 (Game)");
    EXPECT_EQ(WindowText(cmdSearch), L"搜 尋");
    EXPECT_EQ(WindowText(cmdOk), L"新 增");
    EXPECT_EQ(WindowText(cmdCancel), L"關 閉");
    EXPECT_EQ(Status(), L"");
    int format = -1;
    EXPECT_EQ(ColumnTitle(0, format), L"電台名稱");
    EXPECT_EQ(format, LVCFMT_LEFT);
    EXPECT_EQ(ColumnTitle(1, format), L"類型");
    EXPECT_EQ(format, LVCFMT_CENTER);
    EXPECT_EQ(ColumnTitle(2, format), L"壓縮頻率");
    EXPECT_EQ(format, LVCFMT_RIGHT);
    EXPECT_EQ(ColumnTitle(3, format), L"") << "the others are hidden";
    EXPECT_FALSE(owner.Enabled()) << "it is modal";
  });
}

TEST_F(frmRadioListTest, NothingInItIsCutOffOrCoversAnother) {
  Play([this] { ExpectBoxesApart(window, 10); });
}

TEST_F(frmRadioListTest, ColumnsFillTheListAndLeaveRoomForTheScrollBar) {
  Play([this] {
    SearchHinet();
    int width = 0;
    for (WPARAM column = 0; column < 3; ++column) {
      width += static_cast<int>(SendMessageW(list, LVM_GETCOLUMNWIDTH, column, 0));
    }
    const int room = static_cast<int>(OnScreen(list).right - OnScreen(list).left) -
                     GetSystemMetrics(SM_CXVSCROLL);
    EXPECT_LE(width, room);
    EXPECT_GE(width, room - 8);
    EXPECT_EQ(GetWindowLongPtrW(list, GWL_STYLE) & WS_HSCROLL, 0);
  });
}

TEST_F(frmRadioListTest, SourceAndModeDecideWhatCanBeUsed) {
  Play([this] {
    EXPECT_EQ(Usable(), kByGenre);
    Click(optKeyword);
    EXPECT_EQ(Usable(), kByKeyword);
    for (const int source : {2, 3}) {
      Choose(cboSource, source);
      EXPECT_EQ(Usable(), kNoSearch) << source;
    }
    Choose(cboSource, 1);
    EXPECT_EQ(Usable(), kByKeyword);
    Click(optGenre);
    EXPECT_EQ(Usable(), kByGenre);
    Choose(cboSource, 2);
    Choose(cboSource, 0);
    EXPECT_EQ(Usable(), kByGenre);
  });
}

TEST_F(frmRadioListTest, TheTwoOptionsAreAPair) {
  const auto isMarked = [](HWND option) { return SendMessageW(option, BM_GETCHECK, 0, 0) != 0; };
  Play([&] {
    EXPECT_TRUE(isMarked(optGenre));
    EXPECT_FALSE(isMarked(optKeyword));
    Click(optKeyword);
    EXPECT_FALSE(isMarked(optGenre));
    EXPECT_TRUE(isMarked(optKeyword));
    Click(optGenre);
    EXPECT_TRUE(isMarked(optGenre));
    EXPECT_FALSE(isMarked(optKeyword));
  });
}

TEST_F(frmRadioListTest, BeginsWithTheSettingsHoweverOddTheyAre) {
  struct Row {
    const wchar_t* genre;
    const wchar_t* name;
    const wchar_t* type;
    int entry;
    const char* usable;
  };
  for (const Row& row :
       {Row{L"7", L"台北", L"1", 7, kByKeyword}, Row{L"27", L"", L"0", 27, kByGenre},
        Row{L"", L" a ", L"", 0, kByGenre}, Row{L"abc", L"x", L"abc", 0, kByGenre},
        Row{L"28", L"x", L"2", -1, kByGenre}, Row{L"-1", L"x", L"-1", -1, kByGenre},
        Row{L"99999999999", L"x", L"99999999999", 0, kByGenre}}) {
    settings = {{L"Genre", row.genre}, {L"SearchName", row.name}, {L"SearchType", row.type}};
    Play([&] {
      EXPECT_EQ(Entry(cboGenre), row.entry) << row.genre;
      EXPECT_EQ(WindowText(txtKeyword), row.name);
      EXPECT_EQ(Usable(), row.usable) << row.type;
    });
  }
}

TEST_F(frmRadioListTest, WritesTheModeWhenItIsChosenAndTheRestAtTheEnd) {
  const std::function<void()> ends[] = {
      [this] { Click(cmdCancel); }, [this] { Click(cmdOk); }, [this] { Press(VK_ESCAPE); },
      [this] { SendMessageW(window, WM_CLOSE, 0, 0); }, [this] { DestroyWindow(window); }};
  for (const auto& end : ends) {
    written.clear();
    settings.clear();
    Play([&] {
      Choose(cboGenre, 18);
      Click(optKeyword);
      EXPECT_THAT(written, ElementsAre(Pair(L"SearchType", L"1")));
      Click(optGenre);
      EXPECT_THAT(written, ElementsAre(Pair(L"SearchType", L"1"), Pair(L"SearchType", L"0")));
      Type(L" R&B ");
      written.clear();
      end();
    });
    EXPECT_THAT(written, ElementsAre(Pair(L"Genre", L"18"), Pair(L"SearchName", L" R&B ")));
  }
}

TEST_F(frmRadioListTest, EnterSearchesFromTheKeywordAndAddsFromTheList) {
  const auto chosen = Play([this] {
    Click(optKeyword);
    Type(L"jazz");
    SetFocus(txtKeyword);
    Press(VK_RETURN);
    EXPECT_THAT(fetched, ElementsAre(L"http://www.shoutcast.com/embed_module"
                                     L"?reqType=KEYWORD_SEARCH&cnt=999&s=jazz"));
    EXPECT_TRUE(IsOpen());
    SearchHinet();
    SelectRow(1);
    SetFocus(list);
    Press(VK_RETURN);
    EXPECT_FALSE(IsOpen());
  });
  EXPECT_EQ(chosen, L"mms://host/1");
  EXPECT_EQ(fetched.size(), 2U);
}

TEST_F(frmRadioListTest, EscClosesFromEverywhere) {
  const std::function<HWND()> places[] = {
      [this] { return cboSource; }, [this] { return optGenre; },  [this] { return cboGenre; },
      [this] { return cmdSearch; }, [this] { return list; },      [this] { return cmdOk; },
      [this] { return cmdCancel; }, [this] { return txtKeyword; }};
  for (const auto& place : places) {
    EXPECT_EQ(Play([&] {
                if (place() == txtKeyword) Click(optKeyword);
                SearchHinet();
                Choose(cboSource, 0);
                SelectRow(0);
                SetFocus(place());
                ASSERT_EQ(GetFocus(), place());
                Press(VK_ESCAPE);
                EXPECT_FALSE(IsOpen());
              }),
              std::nullopt);
  }
}

TEST_F(frmRadioListTest, ReturnsTheChosenStationsAddress) {
  const auto doubleClick = [this] {
    NMITEMACTIVATE click = {};
    click.hdr.hwndFrom = list;
    click.hdr.code = static_cast<UINT>(NM_DBLCLK);
    click.iItem = 2;
    SendMessageW(GetParent(list), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&click));
  };
  const std::function<void()> ways[] = {[this] { Click(cmdOk); }, doubleClick,
                                        [this] {
                                          SetFocus(list);
                                          Press(VK_RETURN);
                                        }};
  for (const auto& way : ways) {
    EXPECT_EQ(Play([&] {
                SearchHinet();
                SelectRow(2);
                way();
                EXPECT_FALSE(IsOpen());
              }),
              L"mms://host/2");
  }
}

TEST_F(frmRadioListTest, ReturnsNothingWithoutAStationOrItsAddress) {
  EXPECT_EQ(Play([this] { Click(cmdOk); }), std::nullopt) << "no rows";
  EXPECT_EQ(Play([this] {
              SearchHinet();
              Click(cmdOk);
              EXPECT_FALSE(IsOpen());
            }),
            std::nullopt)
      << "no row is selected";
  EXPECT_EQ(Play([this] {
              SearchHinet();
              SelectRow(1);
              Click(cmdCancel);
            }),
            std::nullopt);
  hinetUrl.clear();
  fetch = [](const std::wstring&) { return L"<item id=\"\" myTitle=\"x\"/>"; };
  EXPECT_EQ(Play([this] {
              ChooseHinet();
              Search();
              SelectRow(0);
              Click(cmdOk);
              EXPECT_FALSE(IsOpen());
            }),
            std::nullopt)
      << "the address is empty";
}

TEST_F(frmRadioListTest, TheListHoldsAllTextsOfARow) {
  Play([this] {
    SearchHinet();
    const wchar_t* const texts[] = {L"乙", L"WMA", L"48 kbps", L"mms://host/1", L"收聽人數：未知",
                                    L""};
    for (int column = 0; column < 6; ++column) EXPECT_EQ(Cell(1, column), texts[column]) << column;
    EXPECT_EQ(Cell(3, 0), L"") << "a row that is not there";
  });
}

TEST_F(frmRadioListTest, LeavesNothingBehind) {
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

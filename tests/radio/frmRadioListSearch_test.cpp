// What a search fetches, the dialog while it runs, and how it ends.
#include <windows.h>

#include <commctrl.h>

#include <new>

#include "radio/BrowserStation.h"
#include "radio/DirectoryError.h"
#include "radio/HttpGetText.h"
#include "tests/radio/RadioFixture.h"
#include "tests/ui/ControlTestSupport.h"
#include "ui/Handle.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const wchar_t* kShoutcast =
    L"{\"id\":\"7\",\"mt\":\"audio/mpeg\",\"name\":\"n\",\"lc\":1,\"br\":64,}";
constexpr int kMarkX = 300;
constexpr int kMarkY = 100;
constexpr Color kMark = Rgb(1, 2, 3);

class RadioSearchTest : public RadioFixture {
 protected:
  // Paints over a part of the list. The list repaints it at once unless redrawing is suspended.
  void Mark() const {
    {
      const WindowDc context(list);
      SetPixel(context.Get(), kMarkX, kMarkY, kMark);
    }
    InvalidateRect(list, nullptr, TRUE);
    UpdateWindow(list);
  }
  std::optional<std::wstring> PlayWithShoutcast(const std::function<void()>& user) {
    return Play([&] {
      Choose(cboSource, 0);
      user();
    });
  }
  bool HasMark() const {
    UpdateWindow(list);
    const WindowDc context(list);
    return PixelOf(context.Get(), kMarkX, kMarkY) == kMark;
  }
};

TEST_F(RadioSearchTest, AsksForAnEmptyTermWithoutAGenreAndForTheKeywordWithItsBlanks) {
  settings = {{L"Genre", L"-1"}};
  PlayWithShoutcast([this] { Search(); });
  settings = {{L"SearchType", L"1"}, {L"SearchName", L" a "}};
  PlayWithShoutcast([this] { Search(); });
  const std::wstring address = L"http://www.shoutcast.com/embed_module?reqType=";
  EXPECT_THAT(fetched, ElementsAre(address + L"GENRE_SEARCH&cnt=999&s=",
                                   address + L"KEYWORD_SEARCH&cnt=999&s= a "));
}

TEST_F(RadioSearchTest, LocksTheDialogWhileThePageLoads) {
  const HCURSOR wait = LoadCursorW(nullptr, IDC_WAIT);
  HWND unpainted = nullptr;
  fetch = [&](const std::wstring&) {
    EXPECT_EQ(Usable(), "close");
    EXPECT_EQ(Status(), L"搜尋中…");
    for (const HWND each : {lblStatus, list, cboSource, optGenre, cboGenre, cmdSearch, cmdOk}) {
      if (GetUpdateRect(each, nullptr, FALSE) != 0) unpainted = each;
    }
    EXPECT_EQ(GetCursor(), wait);
    // As after a move of the mouse.
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    SendMessageW(cmdCancel, WM_SETCURSOR, reinterpret_cast<WPARAM>(cmdCancel),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(GetCursor(), wait) << "kept";
    EXPECT_EQ(RowCount(), 0) << "the old rows are gone";
    Mark();
    EXPECT_TRUE(HasMark()) << "redrawing is suspended";
    return kShoutcast;
  };
  PlayWithShoutcast([&] {
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    const std::string before = Usable();
    for (int round = 0; round < 2; ++round) {
      Search();
      EXPECT_EQ(unpainted, nullptr) << "the locked controls are painted before the fetch";
      EXPECT_EQ(Usable(), before);
      EXPECT_EQ(Focused(), "search");
      EXPECT_NE(GetCursor(), wait);
      EXPECT_EQ(RowCount(), 1);
      EXPECT_FALSE(HasMark()) << "redrawing goes on";
      EXPECT_EQ(Status(), L"找到 1 個電台");
    }
  });
  EXPECT_THAT(fetched, SizeIs(2));
}

TEST_F(RadioSearchTest, EnterSearchesAndTheKeyboardReturnsToWhereItWas) {
  PlayWithShoutcast([this] {
    Click(optKeyword);
    SetFocus(txtKeyword);
    Press(VK_RETURN);
    EXPECT_EQ(Focused(), "keyword");
    const auto leaveAndComeBack = [this] {
      SendMessageW(window, WM_ACTIVATE, WA_INACTIVE, 0);
      SetFocus(nullptr);
      SendMessageW(window, WM_ACTIVATE, WA_ACTIVE, 0);
    };
    fetch = [&](const std::wstring&) {
      leaveAndComeBack();
      return L"";
    };
    Press(VK_RETURN);
    EXPECT_EQ(Focused(), "keyword");
    fetch = [&](const std::wstring&) {
      SetFocus(cmdCancel);
      leaveAndComeBack();
      return L"";
    };
    Press(VK_RETURN);
    EXPECT_EQ(Focused(), "close") << "the user moved it there";
    Press(VK_ESCAPE);
    EXPECT_FALSE(IsOpen());
  });
  EXPECT_THAT(fetched, SizeIs(3));
}

TEST_F(RadioSearchTest, ReportsWhatWasFoundOrWhyNothingWas) {
  const struct {
    std::function<std::wstring(const std::wstring&)> fetch;
    int rows;
    const wchar_t* status;
  } answers[] = {
      {[](const auto&) { return L"<html>404</html>"; }, 0, L"沒有找到電台"},
      {[](const auto&) {
         return HinetPage({L"甲", L"大愛", L"乙"});
       },
       2, L"找到 2 個電台"},
      {[](const auto&) -> std::wstring { throw FetchError(static_cast<HRESULT>(0x800C0005U)); }, 0,
       L"無法連線到電台目錄，請稍後再試一次。（錯誤 0x800C0005）"},
      {[](const auto&) { return HinetPage({L"甲"}) + L"<item id=\"2"; }, 1,
       L"找到 1 個電台，電台目錄的資料不完整"},
      {[](const auto&) { return L"<item id=\"2\" myTitle=\""; }, 0,
       L"沒有找到電台，電台目錄的資料不完整"},
      {[](const auto&) -> std::wstring { throw std::bad_alloc(); }, 0,
       L"電台目錄的資料過大，無法讀取。"},
      {[](const auto&) { return HinetPage({L"甲"}); }, 1, L"找到 1 個電台"}};
  Play([&] {
    Choose(cboSource, 3);
    const std::string before = Usable();
    for (const auto& answer : answers) {
      fetch = [&](const std::wstring& url) {
        Mark();
        return answer.fetch(url);
      };
      Search();
      EXPECT_EQ(Status(), answer.status);
      EXPECT_EQ(RowCount(), answer.rows);
      EXPECT_EQ(Usable(), before);
      EXPECT_EQ(Focused(), "search");
      EXPECT_FALSE(HasMark()) << "redrawing goes on";
    }
  });
}

TEST_F(RadioSearchTest, AsksRadioBrowserForAGenreAKeywordOrTaiwan) {
  settings = {{L"Genre", L"18"}, {L"SearchName", L" 台北 "}};
  const struct {
    std::function<void()> act;
    DirectoryQuery query;
    const char* usable;
  } rows[] = {
      {[] {},
       {DirectorySource::kRadioBrowser, SearchMode::kGenre, L"R&B"},
       "source byGenre genre byWord search list add close"},
      {[this] { Click(optKeyword); },
       {DirectorySource::kRadioBrowser, SearchMode::kKeyword, L" 台北 "},
       "source byGenre byWord keyword search list add close"},
      {[this] { Choose(cboSource, 5); },
       {DirectorySource::kRadioBrowserTaiwan, SearchMode::kKeyword, L" 台北 "},
       "source search list add close"},
  };
  Play([&] {
    for (const auto& row : rows) {
      row.act();
      Search();
      EXPECT_EQ(asked.back().source, row.query.source);
      EXPECT_EQ(asked.back().mode, row.query.mode);
      EXPECT_EQ(asked.back().term, row.query.term);
      EXPECT_EQ(Usable(), row.usable);
    }
  });
  EXPECT_THAT(asked, SizeIs(3));
  EXPECT_THAT(fetched, IsEmpty());
}

TEST_F(RadioSearchTest, ListsTheStationsOfRadioBrowserOrSaysWhyThereAreNone) {
  const auto stations = [](const DirectoryQuery&) {
    return StationSearch{RowsOf({{.name = L"甲", .url = L"http://1"},
                                 {.name = L"乙", .url = L"http://2", .resolvedUrl = L"mms://3"}},
                                [](const std::wstring&) { return true; }),
                         true};
  };
  EXPECT_EQ(Play([&] {
              searchRadioBrowser = stations;
              Search();
              EXPECT_EQ(Status(), L"找到 2 個電台");
              searchRadioBrowser = [](const DirectoryQuery&) -> StationSearch {
                throw DirectoryError(L"甲、乙");
              };
              const std::string before = Usable();
              Search();
              EXPECT_EQ(Status(), L"甲、乙");
              EXPECT_EQ(RowCount(), 0);
              EXPECT_EQ(Usable(), before);
              EXPECT_EQ(Focused(), "search");
              searchRadioBrowser = stations;
              Search();
              EXPECT_EQ(RowCount(), 2);
              SelectRow(1);
              Click(cmdOk);
            }),
            L"mms://3");
}

TEST_F(RadioSearchTest, ReturnsNoStationWhenItIsClosedWhileThePageLoads) {
  const std::function<std::wstring()> answers[] = {
      [] { return std::wstring(kShoutcast); }, []() -> std::wstring { throw FetchError(E_FAIL); },
      []() -> std::wstring { throw std::bad_alloc(); }};
  for (const auto& answer : answers) {
    fetch = [&](const std::wstring&) {
      Press(VK_ESCAPE);
      EXPECT_FALSE(IsOpen());
      return answer();
    };
    EXPECT_EQ(PlayWithShoutcast([this] { Search(); }), std::nullopt);
  }
  searchRadioBrowser = [&](const DirectoryQuery&) -> StationSearch {
    Press(VK_ESCAPE);
    throw DirectoryError(L"甲");
  };
  EXPECT_EQ(Play([this] { Search(); }), std::nullopt);
}

TEST_F(RadioSearchTest, FetchesNothingWhenAMessageInTheQueueClosesIt) {
  PlayWithShoutcast([this] {
    PostMessageW(window, WM_CLOSE, 0, 0);
    SendMessageW(cmdSearch, BM_CLICK, 0, 0);
    EXPECT_FALSE(IsOpen());
  });
  EXPECT_THAT(fetched, IsEmpty());
}

TEST_F(RadioSearchTest, LeavesTheEndOfTheProgramToTheOuterLoop) {
  constexpr WPARAM kExitCode = 7;
  fetch = [](const std::wstring&) {
    PostQuitMessage(kExitCode);
    return kShoutcast;
  };
  EXPECT_EQ(PlayWithShoutcast([this] { Search(); }), std::nullopt);
  MSG message = {};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, kExitCode);
}

TEST_F(RadioSearchTest, StartsNoSecondSearchMeanwhile) {
  fetch = [this](const std::wstring&) {
    if (fetched.size() > 1) return kShoutcast;
    SendMessageW(cmdSearch, BM_CLICK, 0, 0);
    SendMessageW(window, WM_COMMAND, IDOK, 0);
    // Handled when the page is there.
    PostMessageW(window, WM_COMMAND, IDOK, 0);
    PostMessageW(window, WM_KEYDOWN, VK_RETURN, 1);
    return kShoutcast;
  };
  PlayWithShoutcast([this] {
    Search();
    EXPECT_EQ(RowCount(), 1);
    EXPECT_TRUE(IsOpen());
  });
  EXPECT_THAT(fetched, SizeIs(1));
}

TEST_F(RadioSearchTest, PaintsTheRowsItself) {
  Play([this] {
    SearchHinet();
    // Beside the texts.
    const auto colorOf = [this](int row) {
      UpdateWindow(list);
      RECT bounds = {LVIR_BOUNDS, 0, 0, 0};
      SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row),
                   reinterpret_cast<LPARAM>(&bounds));
      const WindowDc context(list);
      return PixelOf(context.Get(), static_cast<int>(ClientOf(list).right) - 4,
                     static_cast<int>(bounds.top + bounds.bottom) / 2);
    };
    SelectRow(1);
    EXPECT_EQ(colorOf(0), 0xF7F7F7U);
    EXPECT_NE(colorOf(1), 0xF3F3F3U) << "the selection";
    SelectRow(2);
    EXPECT_EQ(colorOf(1), 0xF3F3F3U);
    EXPECT_NE(colorOf(2), 0xF7F7F7U);
  });
}

}  // namespace
}  // namespace tellurvane

// What a search asks for, what the dialog is while it runs, and how it ends.
#include <windows.h>

#include <commctrl.h>

#include <new>

#include "base/PlatformText.h"
#include "radio/HttpGetText.h"
#include "tests/radio/RadioRig.h"
#include "tests/support/FormProbe.h"
#include "tests/ui/ControlTestSupport.h"
#include "ui/Handle.h"
#include "ui/Timer.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const wchar_t* kShoutcast =
    L"{\"id\":\"7\",\"mt\":\"audio/mpeg\",\"name\":\"n\",\"lc\":1,\"br\":64,}";
constexpr int kOwnExitCode = 7;
constexpr int kMarkX = 300;
constexpr int kMarkY = 100;
constexpr Color kMark = Rgb(1, 2, 3);

class RadioSearchTest : public RadioTest {
 protected:
  // Paints over a part of the list that it would at once paint anew.
  void Mark() const {
    {
      const WindowDc context(list);
      SetPixel(context.Get(), kMarkX, kMarkY, kMark);
    }
    InvalidateRect(list, nullptr, TRUE);
    UpdateWindow(list);
  }
  bool HasMark() const {
    UpdateWindow(list);
    const WindowDc context(list);
    return PixelOf(context.Get(), kMarkX, kMarkY) == kMark;
  }
};

TEST_F(RadioSearchTest, AsksForTheSourceTheModeAndTheTermAsItStands) {
  struct Row {
    int source;
    bool byKeyword;
    const wchar_t* keyword;
    const wchar_t* url;
  };
  settings = {{L"Genre", L"7"}};
  for (const Row& row :
       {Row{0, false, L"x",
            L"http://www.shoutcast.com/embed_module?reqType=GENRE_SEARCH&cnt=999&s=new age"},
        Row{0, true, L" 台北 R&B? ",
            L"http://www.shoutcast.com/embed_module?reqType=KEYWORD_SEARCH&cnt=999&s= 台北 R&B? "},
        Row{0, true, L"",
            L"http://www.shoutcast.com/embed_module?reqType=KEYWORD_SEARCH&cnt=999&s="},
        Row{1, false, L"x", L"http://dir.xiph.org/search?search=new age"},
        Row{1, true, L"new age", L"http://dir.xiph.org/search?search=new age"},
        Row{2, true, L"x", L"http://live.ladio.livedoor.com/list/a"},
        Row{3, false, L"x", L"http://hichannel.hinet.net/xml/radioList.jsp"}}) {
    fetched.clear();
    Play([&] {
      Click(row.byKeyword ? optKeyword : optGenre);
      Type(row.keyword);
      Choose(cboSource, row.source);
      Search();
    });
    EXPECT_THAT(fetched, ElementsAre(row.url));
  }
}

TEST_F(RadioSearchTest, WithoutAGenreTheTermIsEmpty) {
  settings = {{L"Genre", L"-1"}};
  Play([this] { Search(); });
  EXPECT_THAT(fetched, ElementsAre(L"http://www.shoutcast.com/embed_module"
                                   L"?reqType=GENRE_SEARCH&cnt=999&s="));
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
    // What a move of the mouse brings about.
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    SendMessageW(cmdCancel, WM_SETCURSOR, reinterpret_cast<WPARAM>(cmdCancel),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(GetCursor(), wait) << "kept";
    EXPECT_EQ(RowCount(), 0) << "the old rows are gone";
    Mark();
    EXPECT_TRUE(HasMark()) << "redrawing is suspended";
    return kShoutcast;
  };
  Play([&] {
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    const std::string before = Usable();
    for (int round = 0; round < 2; ++round) {
      Search();
      EXPECT_EQ(unpainted, nullptr) << "what is locked shows it";
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

TEST_F(RadioSearchTest, TheKeyboardComesBackToWhereItWas) {
  Play([this] {
    Click(optKeyword);
    SetFocus(txtKeyword);
    Press(VK_RETURN);
    EXPECT_EQ(Focused(), "keyword");
    Choose(cboSource, 3);
    Press(VK_RETURN);
    EXPECT_EQ(Focused(), "source");
    // As when the user goes to another program and comes back meanwhile.
    fetch = [](const std::wstring&) {
      SetFocus(nullptr);
      return L"";
    };
    Press(VK_RETURN);
    EXPECT_EQ(Focused(), "source");
    fetch = [this](const std::wstring&) {
      SetFocus(cmdCancel);
      return L"";
    };
    Press(VK_RETURN);
    EXPECT_EQ(Focused(), "close") << "where the user has taken it";
    Press(VK_ESCAPE);
    EXPECT_FALSE(IsOpen());
  });
  EXPECT_THAT(fetched, SizeIs(4));
}

TEST_F(RadioSearchTest, SaysWhatWasFound) {
  struct Row {
    std::wstring page;
    int rows;
    const wchar_t* status;
  };
  for (const Row& row :
       {Row{L"", 0, L"沒有找到電台"}, Row{L"<html>404</html>", 0, L"沒有找到電台"},
        Row{HinetPage({L"甲"}), 1, L"找到 1 個電台"},
        Row{HinetPage({L"甲", L"大愛", L"乙"}), 2, L"找到 2 個電台"},
        Row{HinetPage({L"甲"}) + L"<item id=\"2", 1, L"找到 1 個電台，電台目錄的資料不完整"},
        Row{L"<item id=\"2\" myTitle=\"", 0, L"沒有找到電台，電台目錄的資料不完整"}}) {
    fetch = [&](const std::wstring&) { return row.page; };
    Play([&] {
      ChooseHinet();
      Search();
      EXPECT_EQ(Status(), row.status);
      EXPECT_EQ(RowCount(), row.rows);
    });
  }
}

TEST_F(RadioSearchTest, AFailureIsReportedAndTheNextSearchWorks) {
  const std::wstring unreachable = L"無法連線到電台目錄，請稍後再試一次。";
  Play([&] {
    ChooseHinet();
    const std::string before = Usable();
    fetch = [](const std::wstring&) { return HinetPage({L"甲", L"乙"}); };
    Search();
    EXPECT_EQ(RowCount(), 2);
    fetch = [this](const std::wstring&) -> std::wstring {
      Mark();
      throw FetchError(static_cast<HRESULT>(0x800C0005U));
    };
    Search();
    EXPECT_EQ(Status(), unreachable + L"（錯誤 0x800C0005）");
    EXPECT_EQ(RowCount(), 0);
    EXPECT_EQ(Usable(), before);
    EXPECT_EQ(Focused(), "search");
    EXPECT_FALSE(HasMark());
    fetch = [](const std::wstring&) -> std::wstring { throw std::bad_alloc(); };
    Search();
    EXPECT_EQ(Status(), L"電台目錄的資料過大，無法讀取。");
    EXPECT_EQ(Usable(), before);
    fetch = [](const std::wstring&) { return HinetPage({L"甲", L"乙"}); };
    Search();
    EXPECT_EQ(Status(), L"找到 2 個電台");
    EXPECT_EQ(Cell(1, 0), L"乙");
  });
}

TEST_F(RadioSearchTest, ClosedWhileThePageLoadsItEndsWithoutAStation) {
  const std::function<std::wstring()> answers[] = {
      [] { return std::wstring(kShoutcast); }, []() -> std::wstring { throw FetchError(E_FAIL); },
      []() -> std::wstring { throw std::bad_alloc(); }};
  const std::function<void()> ends[] = {
      [this] { Press(VK_ESCAPE); }, [this] { SendMessageW(cmdCancel, BM_CLICK, 0, 0); },
      [this] { DestroyWindow(window); }, [this] { SendMessageW(window, WM_CLOSE, 0, 0); }};
  for (const auto& answer : answers) {
    for (const auto& end : ends) {
      fetch = [&](const std::wstring&) {
        end();
        EXPECT_FALSE(IsOpen());
        return answer();
      };
      EXPECT_EQ(Play([this] { Search(); }), std::nullopt);
    }
  }
}

TEST_F(RadioSearchTest, ClosedByWhatWasWaitingItDoesNotAskAtAll) {
  EXPECT_EQ(Play([this] {
              PostMessageW(window, WM_CLOSE, 0, 0);
              SendMessageW(cmdSearch, BM_CLICK, 0, 0);
              EXPECT_FALSE(IsOpen());
            }),
            std::nullopt);
  EXPECT_THAT(fetched, IsEmpty());
}

TEST_F(RadioSearchTest, TheEndOfTheProgramWhileThePageLoadsIsLeftToTheOuterLoop) {
  fetch = [](const std::wstring&) {
    PostQuitMessage(kOwnExitCode);
    return kShoutcast;
  };
  frmRadioList* left = nullptr;
  {
    frmRadioList made({.readSetting = [](const std::wstring&) { return L""; },
                       .writeSetting = [](const std::wstring&, const std::wstring&) {},
                       .directories = {fetch, Capitals, L""}});
    left = &made;
    Timer user;
    user.Interval(10);
    user.Tick = [&] {
      if (!left->Visible()) return;
      user.Enabled(false);
      SendMessageW(InsideOf(left->hwnd(), L"Button").at(2), BM_CLICK, 0, 0);
    };
    Timer guard;
    guard.Interval(10'000);
    guard.Tick = [&] {
      ADD_FAILURE() << "the dialog goes on";
      left->Unload();
    };
    user.Enabled(true);
    guard.Enabled(true);
    EXPECT_EQ(made.Open(owner.hwnd()), std::nullopt);
  }
  MSG message = {};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, static_cast<WPARAM>(kOwnExitCode));
}

TEST_F(RadioSearchTest, WhatIsPressedMeanwhileBeginsNoSecondSearch) {
  fetch = [this](const std::wstring&) {
    if (fetched.size() > 1) return kShoutcast;
    SendMessageW(cmdSearch, BM_CLICK, 0, 0);
    SendMessageW(window, WM_COMMAND, IDOK, 0);
    // These come when the page is there.
    PostMessageW(window, WM_COMMAND, IDOK, 0);
    PostMessageW(window, WM_KEYDOWN, VK_RETURN, 1);
    return kShoutcast;
  };
  Play([this] {
    Search();
    EXPECT_EQ(RowCount(), 1);
    EXPECT_TRUE(IsOpen());
  });
  EXPECT_THAT(fetched, SizeIs(1));
}

TEST_F(RadioSearchTest, ShowsTheFirstRowsAgainAfterALongListWasScrolled) {
  Play([this] {
    ChooseHinet();
    fetch = [](const std::wstring&) { return HinetPage(Texts(500, L"長")); };
    Search();
    SelectRow(400);
    SendMessageW(list, LVM_ENSUREVISIBLE, 499, FALSE);
    fetch = [](const std::wstring&) { return HinetPage(Texts(300, L"短")); };
    Search();
    EXPECT_EQ(RowCount(), 300);
    EXPECT_EQ(SendMessageW(list, LVM_GETTOPINDEX, 0, 0), 0);
    EXPECT_EQ(SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED), -1);
  });
}

TEST_F(RadioSearchTest, PaintsTheRowsItself) {
  Play([this] {
    ChooseHinet();
    fetch = [](const std::wstring&) { return HinetPage({L"甲", L"乙", L"丙"}); };
    Search();
    SelectRow(1);
    UpdateWindow(list);
    const int edge = static_cast<int>(ClientOf(list).right) - 1;
    const auto colorOf = [this, edge](int row) {
      RECT bounds = {LVIR_BOUNDS, 0, 0, 0};
      SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row),
                   reinterpret_cast<LPARAM>(&bounds));
      const WindowDc context(list);
      const int middle = static_cast<int>(bounds.top + bounds.bottom) / 2;
      const Color color = PixelOf(context.Get(), edge - 3, middle);
      EXPECT_EQ(PixelOf(context.Get(), 300, middle), color) << "from edge to edge";
      return color;
    };
    EXPECT_EQ(colorOf(0), 0xF7F7F7U);
    EXPECT_EQ(colorOf(2), 0xF7F7F7U);
    EXPECT_NE(colorOf(1), 0xF3F3F3U) << "the selection";
    SelectRow(2);
    UpdateWindow(list);
    EXPECT_EQ(colorOf(1), 0xF3F3F3U);
    EXPECT_NE(colorOf(2), 0xF7F7F7U);
  });
}

}  // namespace
}  // namespace tellurvane

// The list's events, raised by messages and by the native list's notifications, and typed letters.
#include "ClipboardSupport.h"
#include "ListTestSupport.h"
#include "tests/support/FormProbe.h"
#include "ui/clsLictView.h"

namespace tellurvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class ListEventTest : public ListTest {
 protected:
  ListEventTest() {
    list.ListCount(5);
    const auto note = [this](const std::string& event) { raised.push_back(event); };
    const auto number = [](auto value) { return " " + std::to_string(value); };
    const auto side = [](bool isLeft) { return std::string(isLeft ? " left" : " right"); };
    list.Click = [=](bool isLeft, int row, int column) {
      note("Click" + side(isLeft) + number(row) + number(column));
    };
    list.DblClick = [=](bool isLeft, int row, int column) {
      note("DblClick" + side(isLeft) + number(row) + number(column));
    };
    list.ColumnClick = [=](int column) { note("ColumnClick" + number(column)); };
    list.ItemActivate = [=](int row) { note("ItemActivate" + number(row)); };
    list.DragBegin = [=](bool isLeft, int row) { note("DragBegin" + side(isLeft) + number(row)); };
    list.LostFocus = [=] { note("LostFocus"); };
    list.KeyDown = [=](UINT key, int shift) { note("KeyDown" + number(key) + number(shift)); };
    list.KeyUp = [=](UINT key, int shift) { note("KeyUp" + number(key) + number(shift)); };
  }

  void ListenToTheMouseOnly() {
    const auto noteAs = [this](const char* name) {
      return [this, name](const MouseEvent& event) {
        raised.push_back(std::string(name) + " " + std::to_string(event.button) + " at " +
                         std::to_string(event.x) + "," + std::to_string(event.y));
      };
    };
    list.Click = nullptr;
    list.DblClick = nullptr;
    list.ItemActivate = nullptr;
    list.MouseDown = noteAs("down");
    list.MouseMove = noteAs("move");
    list.MouseUp = noteAs("up");
  }

  std::vector<std::string> Raised() { return std::exchange(raised, {}); }

  std::vector<std::string> raised;
};

TEST_F(ListEventTest, ForwardsNewColoursAndSettingsToTheNativeList) {
  for (const UINT message : {WM_SYSCOLORCHANGE, WM_SETTINGCHANGE}) {
    CaughtMessage caught(list.hwnd(), message);
    SendMessageW(form.hwnd(), message, 5, 0);
    EXPECT_THAT(caught.Taken(), ElementsAre(WPARAM{5}));
  }
}

TEST_F(ListEventTest, ClicksSelectTheRowAndNameSideRowAndColumn) {
  const struct {
    POINT place;
    bool isLeft;
    const char* event;
    int selected;
  } cases[] = {
      {Middle(2), true, "Click left 2 0", 2},
      {{150, Middle(1).y}, true, "Click left 1 1", 1},
      {Middle(3), false, "Click right 3 0", 3},
      {{60, 195}, true, "Click left -1 0", -1},
  };
  for (const auto& [place, isLeft, event, selected] : cases) {
    ClickAt(place, isLeft);
    EXPECT_THAT(Raised(), ElementsAre(event));
    EXPECT_EQ(list.Selected(), selected) << event;
  }
  ClickAt(Middle(2));
  PostMouse(WM_LBUTTONDBLCLK, Middle(2), MK_LBUTTON);
  PostMouse(WM_LBUTTONUP, Middle(2));
  Pump();
  EXPECT_THAT(raised, Contains("DblClick left 2 0"));
  EXPECT_THAT(raised, Contains("ItemActivate 2"));
}

TEST_F(ListEventTest, EachNotificationRaisesItsEvent) {
  list.SetSelectList(3);
  const struct {
    int code;
    const char* event;
  } cases[] = {
      {-109, "DragBegin left 3"}, {-111, "DragBegin right 3"}, {-108, "ColumnClick 1"},
      {-114, "ItemActivate 3"},   {-2, "Click left 3 1"},      {-5, "Click right 3 1"},
      {-3, "DblClick left 3 1"},  {-6, "DblClick right 3 1"},  {-8, "LostFocus"},
  };
  for (const auto& [code, event] : cases) {
    NMITEMACTIVATE record = {};
    record.iItem = 3;
    record.iSubItem = 1;
    EXPECT_EQ(Notify(static_cast<UINT>(code), record), 0) << code;
    EXPECT_THAT(Raised(), ElementsAre(event)) << code;
  }
  NMHDR other = {};
  Notify(static_cast<UINT>(-7), other);
  NMITEMACTIVATE foreign = {};
  foreign.hdr.hwndFrom = form.hwnd();
  foreign.hdr.code = NM_CLICK;
  SendMessageW(Container(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&foreign));
  EXPECT_THAT(Raised(), IsEmpty());
}

TEST_F(ListEventTest, OnDataFillsACopyThatIsWrittenBack) {
  wchar_t own[] = L"自己的";
  wchar_t buffer[10] = L"rest";
  NMLVDISPINFOW info = {};
  info.item.mask = LVIF_TEXT | LVIF_IMAGE;
  info.item.iItem = 3;
  info.item.iSubItem = 1;
  info.item.pszText = buffer;
  info.item.cchTextMax = 10;
  list.OnData = [&](int row, int column, LVITEMW& cell) {
    EXPECT_EQ(row, 3);
    EXPECT_EQ(column, 1);
    EXPECT_NE(&cell, &info.item);
    EXPECT_STREQ(cell.pszText, L"") << "unless the owner fills it in";
    EXPECT_EQ(cell.iImage, I_IMAGENONE);
    cell.pszText = own;
    cell.iImage = 6;
  };
  EXPECT_EQ(Notify(static_cast<UINT>(-177), info), 0);
  EXPECT_EQ(info.item.pszText, own);
  EXPECT_EQ(info.item.iImage, 6);
}

TEST_F(ListEventTest, ItemChangedReportsTheRowAndItsStates) {
  std::vector<std::string> changes;
  list.ItemChanged = [&](int row, UINT oldState, UINT newState) {
    changes.push_back(std::to_string(row) + ": " + std::to_string(oldState & LVIS_SELECTED) +
                      " to " + std::to_string(newState & LVIS_SELECTED));
  };
  list.SetSelectList(2);
  EXPECT_THAT(std::exchange(changes, {}), Contains("2: 0 to 2"));
  list.SetSelectList(-1);
  EXPECT_THAT(changes, Contains("2: 2 to 0"));
}

TEST_F(ListEventTest, TakesTheKeyboardByTabAndReportsItsLoss) {
  PictureBox before;
  before.Create({.parent = form.hwnd(), .y = 220, .width = 20, .height = 20, .isTabStop = true});
  before.SetFocus();
  PostMessageW(before.hwnd(), WM_KEYDOWN, VK_TAB, 1);
  Pump();
  EXPECT_EQ(GetFocus(), list.hwnd());
  before.SetFocus();
  EXPECT_THAT(Raised(), ElementsAre("LostFocus"));
}

TEST_F(ListEventTest, KeysRaiseEventsAndReachTheNativeList) {
  list.SetSelectList(2);
  Key(VK_DOWN);
  EXPECT_THAT(Raised(), ElementsAre("KeyDown 40 0", "KeyUp 40 0"));
  EXPECT_EQ(list.Selected(), 3);
  const HeldKeys keys({VK_SHIFT, VK_CONTROL});
  Send(WM_KEYUP, 'A');
  EXPECT_THAT(Raised(), ElementsAre("KeyUp 65 3"));
}

TEST_F(ListEventTest, EnterActivatesTheSelectedRowOrGoesToTheForm) {
  list.KeyDown = nullptr;
  const auto press = [&] {
    list.SetFocus();
    PostMessageW(list.hwnd(), WM_KEYDOWN, VK_RETURN, 1);
    Pump();
  };
  press();
  EXPECT_THAT(Raised(), IsEmpty());
  EXPECT_EQ(form.enters, 1);
  list.SetSelectList(2);
  press();
  EXPECT_THAT(Raised(), ElementsAre("ItemActivate 2"));
  EXPECT_EQ(form.enters, 1);
  list.ItemActivate = nullptr;
  press();
  EXPECT_EQ(form.enters, 2);
}

TEST_F(ListEventTest, MouseEventsHaveButtonAndPositionAndOneUpForEachDown) {
  SetCursorPos(700, 700);  // the real pointer would move over the list
  Pump();
  ListenToTheMouseOnly();
  PostMouse(WM_MOUSEMOVE, {60, 190}, MK_LBUTTON | MK_MBUTTON);
  PostMouse(WM_LBUTTONDOWN, {61, 191}, MK_LBUTTON);
  PostMouse(WM_LBUTTONUP, {62, 192});
  PostMouse(WM_LBUTTONDBLCLK, {63, 193}, MK_LBUTTON);
  PostMouse(WM_LBUTTONUP, {64, 194});
  PostMouse(WM_RBUTTONDOWN, {61, 191}, MK_RBUTTON);
  PostMouse(WM_RBUTTONUP, {61, 191});
  PostMouse(WM_MBUTTONDOWN, {63, 193}, MK_MBUTTON);
  PostMouse(WM_MBUTTONUP, {-4, -5});
  PostMouse(WM_RBUTTONDBLCLK, {61, 191}, MK_RBUTTON);
  PostMouse(WM_RBUTTONUP, {61, 191});
  PostMouse(WM_MBUTTONDBLCLK, {63, 193}, MK_MBUTTON);
  PostMouse(WM_MBUTTONUP, {63, 193});
  Pump();
  EXPECT_THAT(Raised(),
              ElementsAre("move 5 at 60,190", "down 1 at 61,191", "up 1 at 62,192",
                          "down 1 at 63,193", "up 1 at 64,194", "down 2 at 61,191",
                          "up 2 at 61,191", "down 4 at 63,193", "up 4 at -4,-5", "down 2 at 61,191",
                          "up 2 at 61,191", "down 4 at 63,193", "up 4 at 63,193"));
  int shift = 0;
  list.MouseMove = [&](const MouseEvent& event) { shift = event.shift; };
  const HeldKeys keys({VK_SHIFT, VK_CONTROL});
  Send(WM_MOUSEMOVE, 0, MAKELPARAM(60, 190));
  EXPECT_EQ(shift, 3);
}

TEST_F(ListEventTest, BlockKeyKeepsTheKeysThatWouldLeaveTheListFromIt) {
  const struct {
    bool isBlocked;
    int selected;
    UINT key;
    bool isKept;
  } cases[] = {{true, 0, VK_UP, true},   {true, 4, VK_DOWN, true},  {true, 0, VK_DOWN, false},
               {true, 4, VK_UP, false},  {true, 0, VK_END, false},  {true, 4, VK_HOME, false},
               {false, 0, VK_UP, false}, {false, 4, VK_DOWN, false}};
  for (const auto& [isBlocked, selected, key, isKept] : cases) {
    list.BlockKey(isBlocked);
    list.SetSelectList(selected);
    // With another row focused, each of the keys moves the selection of the native list.
    LVITEMW focused = {};
    focused.state = focused.stateMask = LVIS_FOCUSED;
    Send(LVM_SETITEMSTATE, 2, reinterpret_cast<LPARAM>(&focused));
    Key(key);
    EXPECT_EQ(list.Selected() == selected, isKept) << key << " at " << selected;
    EXPECT_EQ(Raised().size(), 2U) << "the events come all the same";
  }
}

TEST(ListUnloadTest, HandlersOfKeysAndTheMouseMayUnloadTheForm) {
  const POINT place = {60, 60};
  const std::function<void(HostedList&)> inputs[] = {
      [](HostedList& hosted) { hosted.Send(WM_KEYDOWN, VK_DOWN); },
      [&](HostedList& hosted) {
        hosted.list.MouseDown = [&](const MouseEvent&) { hosted.form.Unload(); };
        hosted.ClickAt(place);
      },
      [&](HostedList& hosted) { hosted.ClickAt(place, false); },
      [&](HostedList& hosted) {
        hosted.PostMouse(WM_LBUTTONDBLCLK, place, MK_LBUTTON);
        hosted.PostMouse(WM_LBUTTONUP, place);
        Pump();
      },
  };
  for (const auto& input : inputs) {
    HostedList hosted;
    hosted.list.ListCount(5);
    const auto unload = [&](auto...) { hosted.form.Unload(); };
    hosted.list.KeyDown = unload;
    hosted.list.Click = hosted.list.DblClick = unload;
    input(hosted);
    EXPECT_EQ(hosted.list.hwnd(), nullptr) << &input - inputs;
  }
}

class ListTypingTest : public ListTest {
 protected:
  ListTypingTest() {
    list.OnData = [this](int row, int column, LVITEMW& cell) {
      if ((cell.mask & LVIF_TEXT) == 0) return;
      list.GiveText(cell, column == 0 ? names.at(static_cast<size_t>(row)) : L"b");
    };
    list.ListCount(static_cast<int>(names.size()));
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

TEST_F(ListTypingTest, ALetterSelectsTheNextNameThatBeginsWithIt) {
  list.SetSelectList(0);
  Send(WM_CHAR, L'b', 1);
  EXPECT_EQ(list.Selected(), 1);
  list.SetSelectList(3);
  Send(WM_CHAR, L'x', 1);
  EXPECT_EQ(list.Selected(), 3) << "no name begins with it";
}

TEST_F(ListTypingTest, FindsTheRowThatTheNativeListAsksFor) {
  constexpr UINT kBegins = LVFI_PARTIAL;
  constexpr UINT kSubstring = 0x0004;  // LVFI_SUBSTRING, the same
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
  list.ListCount(0);
  EXPECT_EQ(Found(kTyped, L"b", 0), -1);
}

}  // namespace
}  // namespace tellurvane

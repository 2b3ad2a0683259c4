// What the list tells its owner: by real mouse and key messages, and by the native list's own
// notifications.
#include "ListTestSupport.h"
#include "tests/support/FormProbe.h"
#include "ui/clsLictView.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ListEventTest : public ListTest {
 protected:
  ListEventTest() {
    list().RowHeight(30);
    list().ListCount(5);
    Listen();
  }

  void Listen() {
    const auto note = [this](const std::string& event) { told.push_back(event); };
    const auto number = [](auto value) { return " " + std::to_string(value); };
    const auto side = [](bool isLeft) { return std::string(isLeft ? " left" : " right"); };
    list().Click = [=](bool isLeft, int row, int column) {
      note("Click" + side(isLeft) + number(row) + number(column));
    };
    list().DblClick = [=](bool isLeft, int row, int column) {
      note("DblClick" + side(isLeft) + number(row) + number(column));
    };
    list().ColumnClick = [=](int column) { note("ColumnClick" + number(column)); };
    list().ItemActivate = [=](int row) { note("ItemActivate" + number(row)); };
    list().DragBegin = [=](bool isLeft, int row) {
      note("DragBegin" + side(isLeft) + number(row));
    };
    list().LostFocus = [=] { note("LostFocus"); };
    list().KeyDown = [=](UINT key, int shift) { note("KeyDown" + number(key) + number(shift)); };
    list().KeyUp = [=](UINT key, int shift) { note("KeyUp" + number(key) + number(shift)); };
  }

  void ListenToMouse() {
    const auto noteAs = [this](const char* name) {
      return [this, name](const MouseEvent& event) {
        told.push_back(std::string(name) + " " + std::to_string(event.button) + " " +
                       std::to_string(event.shift) + " " + std::to_string(event.x) + "," +
                       std::to_string(event.y));
      };
    };
    list().Click = nullptr;
    list().DblClick = nullptr;
    list().ItemActivate = nullptr;
    list().MouseDown = noteAs("down");
    list().MouseMove = noteAs("move");
    list().MouseUp = noteAs("up");
  }

  void DoubleClickAt(const POINT& point, bool isLeft = true) {
    PostMouse(isLeft ? WM_LBUTTONDBLCLK : WM_RBUTTONDBLCLK, point,
              isLeft ? MK_LBUTTON : MK_RBUTTON);
    if (isLeft) PostMouse(WM_LBUTTONUP, point);
    Pump();
  }

  std::vector<std::string> Told() { return std::exchange(told, {}); }

  std::vector<std::string> told;
};

// Its container is a window of the system's own class.
TEST_F(ListEventTest, TheNativeListIsToldOfNewColoursAndSettings) {
  for (const UINT message : {WM_SYSCOLORCHANGE, WM_SETTINGCHANGE}) {
    CaughtMessage caught(list().hwnd(), message);
    SendMessageW(form.hwnd(), message, 5, 0);
    EXPECT_THAT(caught.Taken(), ElementsAre(WPARAM{5}));
  }
}

TEST_F(ListEventTest, ClicksAreToldWithTheirSideRowAndColumn) {
  ClickAt(Middle(2));
  EXPECT_THAT(Told(), ElementsAre("Click left 2 0"));
  ClickAt({150, Middle(1).y});
  EXPECT_THAT(Told(), ElementsAre("Click left 1 1"));
  ClickAt(Middle(3), false);
  EXPECT_THAT(Told(), ElementsAre("Click right 3 0"));
  EXPECT_EQ(list().Selected(), 3);
}

TEST_F(ListEventTest, ClickInAnyColumnSelectsTheRow) {
  for (const int row : {1, 3}) {
    ClickAt({150, Middle(row).y});
    EXPECT_EQ(list().Selected(), row);
  }
}

TEST_F(ListEventTest, TabReachesTheListThroughItsContainer) {
  PictureBox before;
  before.Create({.parent = form.hwnd(), .y = 220, .width = 20, .height = 20, .isTabStop = true});
  before.SetFocus();
  PostMessageW(before.hwnd(), WM_KEYDOWN, VK_TAB, 1);
  Pump();
  EXPECT_EQ(GetFocus(), list().hwnd());
}

TEST_F(ListEventTest, ClickBesideTheRowsSelectsNothing) {
  list().SetSelectList(1);
  ClickAt({60, 195});
  EXPECT_EQ(Told(), std::vector<std::string>{"Click left -1 0"});
  EXPECT_EQ(list().Selected(), -1);
}

TEST_F(ListEventTest, DoubleClickIsToldAndActivates) {
  ClickAt(Middle(2));
  Told();
  DoubleClickAt(Middle(2));
  const auto events = Told();
  EXPECT_THAT(events, testing::Contains("DblClick left 2 0"));
  EXPECT_THAT(events, testing::Contains("ItemActivate 2"));
  DoubleClickAt(Middle(2), false);
  EXPECT_THAT(Told(), testing::Contains("DblClick right 2 0"));
}

TEST_F(ListEventTest, EachNotificationRaisesItsEvent) {
  NMLISTVIEW row = {};
  row.iItem = 4;
  row.iSubItem = 1;
  NMITEMACTIVATE place = {};
  place.iItem = 3;
  place.iSubItem = 1;
  list().SetSelectList(3);
  EXPECT_EQ(Notify(static_cast<UINT>(-109), row), 0);
  Notify(static_cast<UINT>(-111), row);
  Notify(static_cast<UINT>(-108), row);
  Notify(static_cast<UINT>(-114), place);
  Notify(static_cast<UINT>(-2), place);
  Notify(static_cast<UINT>(-5), place);
  Notify(static_cast<UINT>(-3), place);
  Notify(static_cast<UINT>(-6), place);
  NMHDR plain = {};
  Notify(static_cast<UINT>(-8), plain);
  Notify(static_cast<UINT>(-7), plain);  // focus gained: nobody's event
  EXPECT_THAT(Told(), ElementsAre("DragBegin left 4", "DragBegin right 4", "ColumnClick 1",
                                  "ItemActivate 3", "Click left 3 1", "Click right 3 1",
                                  "DblClick left 3 1", "DblClick right 3 1", "LostFocus"));
}

TEST_F(ListEventTest, OnDataGetsACopyOfTheRecordWhichIsWrittenBack) {
  wchar_t own[] = L"自己的";
  NMLVDISPINFOW info = {};
  info.item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_STATE;
  info.item.iItem = 3;
  info.item.iSubItem = 1;
  info.item.lParam = 77;
  wchar_t buffer[10] = L"rest";
  info.item.pszText = buffer;
  info.item.cchTextMax = 10;
  list().OnData = [&](int row, int column, LVITEMW& cell) {
    EXPECT_EQ(row, 3);
    EXPECT_EQ(column, 1);
    EXPECT_NE(&cell, &info.item);
    EXPECT_EQ(cell.lParam, 77);
    EXPECT_EQ(cell.pszText, buffer);
    EXPECT_STREQ(cell.pszText, L"");  // what the owner leaves alone is empty
    EXPECT_EQ(cell.iImage, I_IMAGENONE);
    cell.pszText = own;
    cell.iImage = 6;
    cell.state = LVIS_CUT;
  };
  EXPECT_EQ(Notify(static_cast<UINT>(-177), info), 0);
  EXPECT_EQ(info.item.pszText, own);
  EXPECT_EQ(info.item.iImage, 6);
  EXPECT_EQ(info.item.state, static_cast<UINT>(LVIS_CUT));
}

TEST_F(ListEventTest, NotificationsOfOthersAreLeftAlone) {
  NMITEMACTIVATE place = {};
  place.hdr.hwndFrom = form.hwnd();
  place.hdr.code = NM_CLICK;
  SendMessageW(container(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&place));
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(ListEventTest, ItemChangedTellsTheRowAndItsStates) {
  std::vector<std::string> changes;
  list().ItemChanged = [&](int row, UINT oldState, UINT newState) {
    changes.push_back(std::to_string(row) + ": " + std::to_string(oldState & LVIS_SELECTED) +
                      " to " + std::to_string(newState & LVIS_SELECTED));
  };
  list().SetSelectList(2);
  EXPECT_THAT(changes, testing::Contains("2: 0 to 2"));
  changes.clear();
  list().SetSelectList(-1);
  EXPECT_THAT(changes, testing::Contains("2: 2 to 0"));
}

TEST_F(ListEventTest, LosingTheKeyboardIsTold) {
  list().SetFocus();
  EXPECT_EQ(GetFocus(), list().hwnd());
  SetFocus(form.hwnd());
  EXPECT_THAT(Told(), ElementsAre("LostFocus"));
}

TEST_F(ListEventTest, HeaderClickIsTold) {
  NMHEADERW click = {};
  click.hdr.hwndFrom = list().HeaderhWnd();
  click.hdr.code = HDN_ITEMCLICKW;
  click.iItem = 1;
  SendMessageW(list().hwnd(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&click));
  EXPECT_THAT(Told(), ElementsAre("ColumnClick 1"));
}

TEST_F(ListEventTest, KeysAreToldAndReachTheNativeList) {
  list().SetSelectList(2);
  Key(VK_DOWN);
  EXPECT_THAT(Told(), ElementsAre("KeyDown 40 0", "KeyUp 40 0"));
  EXPECT_EQ(list().Selected(), 3);
}

TEST_F(ListEventTest, KeysCarryTheShiftKeys) {
  BYTE keys[256] = {};
  GetKeyboardState(keys);
  BYTE held[256] = {};
  held[VK_SHIFT] = held[VK_CONTROL] = 0x80;
  SetKeyboardState(held);
  SendMessageW(list().hwnd(), WM_KEYUP, 'A', 0);
  SetKeyboardState(keys);
  EXPECT_THAT(Told(), ElementsAre("KeyUp 65 3"));
}

TEST_F(ListEventTest, EnterActivatesTheRow) {
  list().SetSelectList(2);
  list().KeyDown = nullptr;
  list().KeyUp = nullptr;
  Key(VK_RETURN);
  EXPECT_THAT(Told(), ElementsAre("ItemActivate 2"));
}

TEST_F(ListEventTest, EnterIsTheListsWhereItActivatesARowAndElseTheForms) {
  const auto press = [&] {
    list().SetFocus();
    PostMessageW(list().hwnd(), WM_KEYDOWN, VK_RETURN, 1);
    Pump();
  };
  list().KeyDown = nullptr;
  press();
  EXPECT_THAT(Told(), IsEmpty());
  EXPECT_EQ(form.enters, 1);
  list().SetSelectList(2);
  press();
  EXPECT_THAT(Told(), ElementsAre("ItemActivate 2"));
  EXPECT_EQ(form.enters, 1);
  list().ItemActivate = nullptr;
  press();
  EXPECT_EQ(form.enters, 2);
}

TEST_F(ListEventTest, MouseIsToldWithButtonAndPosition) {
  ListenToMouse();
  PostMouse(WM_MOUSEMOVE, {60, 190}, MK_LBUTTON | MK_MBUTTON);
  Pump();
  EXPECT_THAT(Told(), ElementsAre("move 5 0 60,190"));
  PostMouse(WM_LBUTTONDOWN, {61, 191}, MK_LBUTTON);
  PostMouse(WM_LBUTTONUP, {62, 192});
  PostMouse(WM_LBUTTONDBLCLK, {63, 193}, MK_LBUTTON);
  PostMouse(WM_LBUTTONUP, {64, 194});
  Pump();
  EXPECT_THAT(Told(),
              ElementsAre("down 1 0 61,191", "up 1 0 62,192", "down 1 0 63,193", "up 1 0 64,194"));
  PostMouse(WM_RBUTTONDOWN, {61, 191}, MK_RBUTTON);
  PostMouse(WM_RBUTTONUP, {61, 191});
  PostMouse(WM_MBUTTONDOWN, {63, 193}, MK_MBUTTON);
  PostMouse(WM_MBUTTONUP, {-4, -5});
  Pump();
  EXPECT_THAT(Told(),
              ElementsAre("down 2 0 61,191", "up 2 0 61,191", "down 4 0 63,193", "up 4 0 -4,-5"));
}

TEST_F(ListEventTest, BlockKeyHoldsBackTheKeysThatWouldLeaveTheList) {
  struct Row {
    int selected;
    UINT key;
    bool reaches;
  };
  EXPECT_FALSE(list().BlockKey());
  list().BlockKey(true);
  list().SetSelectList(0);
  Key(VK_UP);
  EXPECT_EQ(list().Selected(), 0);
  EXPECT_EQ(SendMessageW(list().hwnd(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED), 0);
  // The focused row stands elsewhere than the selected one: only then the native list would move.
  const auto focus = [&](int row) {
    LVITEMW item = {};
    item.state = item.stateMask = LVIS_FOCUSED;
    SendMessageW(list().hwnd(), LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&item));
  };
  for (const Row& row :
       {Row{0, VK_UP, false}, Row{4, VK_DOWN, false}, Row{0, VK_DOWN, true}, Row{4, VK_UP, true},
        Row{2, VK_UP, true}, Row{2, VK_DOWN, true}, Row{0, VK_END, true}, Row{4, VK_HOME, true}}) {
    for (const bool isBlocked : {true, false}) {
      list().BlockKey(isBlocked);
      list().SetSelectList(row.selected);
      focus(2);
      Key(row.key);
      EXPECT_EQ(list().Selected() != row.selected || row.selected == 2, row.reaches || !isBlocked)
          << row.key << " at " << row.selected << (isBlocked ? " blocked" : "");
    }
  }
}

TEST_F(ListEventTest, BlockedKeyIsStillTold) {
  list().BlockKey(true);
  list().SetSelectList(0);
  Key(VK_UP);
  EXPECT_THAT(Told(), ElementsAre("KeyDown 38 0", "KeyUp 38 0"));
}

TEST_F(ListEventTest, CheckBoxIsToggledByClickAndSpace) {
  std::vector<std::string> changes;
  list().CheckBoxes(true);
  list().ItemChanged = [&](int row, UINT oldState, UINT newState) {
    if (((oldState ^ newState) & LVIS_STATEIMAGEMASK) != 0) {
      changes.push_back(std::to_string(row) + ": " + std::to_string(oldState >> 12) + " to " +
                        std::to_string(newState >> 12));
    }
  };
  // The box stands at the row's left.
  const POINT box = {10, Middle(2).y};
  ClickAt(box);
  EXPECT_TRUE(list().Checked(2));
  EXPECT_THAT(changes, ElementsAre("2: 1 to 2"));
  ClickAt(box);
  EXPECT_FALSE(list().Checked(2));
  ClickAt(Middle(2));
  EXPECT_FALSE(list().Checked(2));
  list().SetSelectList(1);
  Key(VK_SPACE);
  EXPECT_TRUE(list().Checked(1));
  EXPECT_THAT(changes, ElementsAre("2: 1 to 2", "2: 2 to 1", "1: 1 to 2"));
  list().CheckBoxes(false);
  Key(VK_SPACE);
  EXPECT_TRUE(list().Checked(1));
}

TEST_F(ListEventTest, HandlersOfInputMayDestroyTheList) {
  const auto end = [&](auto...) { made.reset(); };
  const std::function<void()> inputs[] = {
      [&] {
        list().KeyDown = end;
        SendMessageW(list().hwnd(), WM_KEYDOWN, VK_DOWN, 0);
      },
      [&] {
        list().MouseDown = end;
        ClickAt({60, 60});
      },
      [&] {
        list().DblClick = end;
        DoubleClickAt({60, 60});
      },
      [&] {
        list().Click = end;
        ClickAt({60, 60}, false);
      },
  };
  for (const auto& input : inputs) {
    Make();
    list().RowHeight(30);
    list().ListCount(5);
    list().SetSelectList(2);
    input();
    EXPECT_EQ(made, nullptr);
  }
}

TEST_F(ListEventTest, DoubleClickMayUnloadTheForm) {
  list().DblClick = [&](bool, int, int) { form.Unload(); };
  DoubleClickAt({60, 60});
  EXPECT_EQ(list().hwnd(), nullptr);
}

}  // namespace
}  // namespace tellurvane

// The schedule editor by keyboard alone.
#include <gmock/gmock.h>

#include "tests/scheduler/EditorFixture.h"
#include "tests/ui/ClipboardSupport.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FrmSetKeysTest : public EditorFixture {
 protected:
  // Where the keyboard is after each Tab, until it is where it began.
  std::string TabOrder() const {
    const std::string first = Focused();
    std::string order = first;
    for (int i = 0; i < 30; ++i) {
      Press(VK_TAB);
      const std::string next = Focused();
      if (next == first) return order;
      order += " " + next;
    }
    return order + " and never back";
  }
};

// Tab passes over a control that cannot be used.
TEST_F(FrmSetKeysTest, TabGoesAsTheEyeReadsAndOnlyWhereItMakesSense) {
  const char* const whileEditing =
      "name media source ... date time unit interval enabled saveTask cancelTask close cancel";
  tasks = {Task(L"a")};
  Play({}, [&] {
    EXPECT_EQ(TabOrder(), whileEditing) << "a new task";
    EXPECT_EQ(SelectedRow(), -1);
    Click(cmdCancelJob);
    EXPECT_EQ(TabOrder(), "list new name source interval close cancel") << "nothing selected";
    EXPECT_EQ(Writable(), "");
    SelectRow(0);
    Click(cmdEdit);
    EXPECT_EQ(TabOrder(), whileEditing) << "an existing task";
    EXPECT_EQ(Writable(), "name source interval");
    Click(cmdSaveJob);
    EXPECT_EQ(TabOrder(), "list new edit remove name source interval close cancel") << "saved";
  });
}

TEST_F(FrmSetKeysTest, EnterSavesWhereverTheKeyboardIsAndThenEdits) {
  for (HWND* const field :
       {&txtName, &cboMediaType, &txtSrc, &dtpDate, &cboTimeType, &txtInterval, &chkEnabled}) {
    tasks = {Task(L"abc", kApplication)};
    saves = 0;
    Play(0, [&] {
      EXPECT_EQ(Focused(), "name");
      EXPECT_EQ(SendMessageW(txtName, EM_GETSEL, 0, 0), MAKELRESULT(0, 3));
      Type(txtName, L"b");
      SetFocus(*field);
      const std::string where = Focused();
      Press(VK_RETURN);
      EXPECT_EQ(saves, 1) << where;
      EXPECT_EQ(Focused(), "list") << where;
      Press(VK_RETURN);
      EXPECT_EQ(Focused(), "name") << where;
      EXPECT_EQ(Writable(), "name source interval") << where;
    });
    EXPECT_EQ(tasks[0].Name, L"b");
  }
}

TEST_F(FrmSetKeysTest, AWrongFieldGetsTheKeyboard) {
  tasks = {Task(L"a"), Task(L"b")};
  tasks[0].IntervalUnit = 9;
  Play(0, [&] {
    const auto saved = [&] {
      Click(cmdSaveJob);
      return Focused();
    };
    EXPECT_EQ(saved(), "unit") << "only a file can bring this unit";
    Choose(cboTimeType, kMinutes);
    Type(txtInterval, L"61");
    EXPECT_EQ(saved(), "interval");
    Type(txtInterval, L"60");
    Type(txtName, L"B");
    EXPECT_EQ(saved(), "name");
    EXPECT_EQ(SendMessageW(txtName, EM_GETSEL, 0, 0), MAKELRESULT(0, 1));
    Type(txtName, L"c");
    Choose(cboMediaType, kInternetRadio);
    EXPECT_EQ(saved(), "source");
    SendMessageW(txtSrc, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L"http://a/"));
    EXPECT_EQ(WindowText(txtSrc), L"http://a/") << "the old text was selected";
    EXPECT_EQ(saved(), "list") << "saved";
  });
  EXPECT_EQ(asked.size(), 4U);
}

// A real message box has a loop of its own.
TEST_F(FrmSetKeysTest, EnterHeldOnAWrongSourceAsksOnceAndTypesNothing) {
  whileAsking = Pump;
  Play({}, [&] {
    SetFocus(txtSrc);
    Press(VK_RETURN);
    EXPECT_EQ(asked.size(), 1U);
    PostMessageW(txtSrc, WM_KEYDOWN, VK_RETURN, 0x4000'0001);
    Pump();
    EXPECT_EQ(asked.size(), 1U);
    EXPECT_EQ(WindowText(txtSrc), L"");
  });
}

TEST_F(FrmSetKeysTest, AnEditingThatEndsDuringItsMessageLeavesTheKeyboardInTheList) {
  tasks = {Task(L"a")};
  whileAsking = [this] { Click(cmdCancelJob); };
  Play(0, [&] {
    const std::wstring interval = WindowText(txtInterval);
    Type(txtInterval, L"0");
    Click(cmdSaveJob);
    EXPECT_EQ(Focused(), "list");
    EXPECT_EQ(WindowText(txtInterval), interval);
  });
}

TEST_F(FrmSetKeysTest, AnEditorThatIsDestroyedDuringItsMessageTakesNoKeyboard) {
  const TestForm other;
  whileAsking = [&] {
    DestroyWindow(window);
    SetFocus(other.hwnd());
  };
  Play({}, [&] {
    Click(cmdSaveJob);
    EXPECT_EQ(GetFocus(), other.hwnd());
  });
}

TEST_F(FrmSetKeysTest, EnterInTheSourceDependsOnTheKindTheStateAndTheOtherKeys) {
  const struct {
    MediaType kind;
    std::vector<int> held;
    UINT message;
    bool isSaved;
  } rows[] = {
      {kApplication, {}, WM_KEYDOWN, true},
      {kApplication, {VK_CONTROL}, WM_KEYDOWN, true},
      {kApplication, {VK_CONTROL, VK_MENU}, WM_KEYDOWN, true},
      {kApplication, {VK_MENU}, WM_SYSKEYDOWN, false},
      {kReminderNote, {}, WM_KEYDOWN, false},
      {kReminderNote, {VK_CONTROL}, WM_KEYDOWN, true},
  };
  for (const auto& [kind, held, message, isSaved] : rows) {
    tasks = {Task(L"a", kind)};
    saves = 0;
    const auto press = [&] {
      SetFocus(txtSrc);
      const HeldKeys keys(held);
      PostMessageW(txtSrc, message, VK_RETURN, 1);
      Pump();
    };
    Play(0, [&] {
      press();
      EXPECT_EQ(saves, isSaved ? 1 : 0) << kind << held.size() << message;
    });
    if (message == WM_SYSKEYDOWN) continue;
    Browse(0, [&] {
      press();
      EXPECT_EQ(Focused(), "name") << kind << ": the editing begins";
    });
  }
}

TEST_F(FrmSetKeysTest, EscAsksBeforeItGivesUpWhatWasTypedAndThenCloses) {
  tasks = {Task(L"a")};
  const Question question = {L"排程專案尚未儲存，您確定要放棄變更嗎？",
                             MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2};
  for (HWND* const field : {&txtName, &txtSrc, &cboTimeType, &dtpDate, &cmdFiles}) {
    for (const bool isTyped : {true, false}) {
      asked.clear();
      Play(0, [&] {
        if (isTyped) Type(txtName, L"b");
        SetFocus(*field);
        const std::string where = Focused();
        answer = IDNO;
        if (isTyped) Press(VK_ESCAPE);
        EXPECT_EQ(Writable(), "name source interval") << where;
        EXPECT_EQ(Focused(), where);
        answer = IDYES;
        Press(VK_ESCAPE);
        ASSERT_TRUE(IsOpen()) << where;
        EXPECT_EQ(Writable(), "") << where;
        EXPECT_EQ(WindowText(txtName), L"a") << where;
        Press(VK_ESCAPE);
        EXPECT_FALSE(IsOpen()) << where;
        EXPECT_EQ(asked, std::vector<Question>(isTyped ? 2 : 0, question)) << where;
      });
    }
  }
  EXPECT_EQ(saves, 0);
}

TEST_F(FrmSetKeysTest, ATextBoxKeepsDeleteAndADroppedDownListEsc) {
  Play({}, [&] {
    SendMessageW(txtName, EM_SETSEL, 0, 0);
    Press(VK_DELETE);
    EXPECT_EQ(WindowText(txtName), L"的排程專案") << "Delete edits the text";
    SetFocus(cboMediaType);
    SendMessageW(cboMediaType, CB_SHOWDROPDOWN, TRUE, 0);
    Press(VK_ESCAPE);
    EXPECT_FALSE(SendMessageW(cboMediaType, CB_GETDROPPEDSTATE, 0, 0));
    EXPECT_EQ(Writable(), "name source interval") << "the editing goes on";
  });
}

TEST_F(FrmSetKeysTest, AfterATaskWasGivenUpKeysTakeTheFramedRow) {
  tasks = {Task(L"a"), Task(L"b")};
  for (const UINT key : {VK_F2, VK_RETURN, VK_DELETE}) {
    asked.clear();
    Play({}, [&] {
      Press(VK_ESCAPE);
      EXPECT_EQ(Focused(), "list");
      EXPECT_EQ(SelectedRow(), -1);
      Press(key);
      EXPECT_EQ(WindowText(txtName), L"a") << key;
      EXPECT_EQ(Writable(), key == VK_DELETE ? "" : "name source interval") << key;
      EXPECT_EQ(asked.size(), key == VK_DELETE ? 1U : 0U) << key;
    });
  }
}

TEST_F(FrmSetKeysTest, TheListHasKeysOfItsOwn) {
  tasks = {Task(L"a"), Task(L"b")};
  Browse(0, [&] {
    Press(VK_DOWN);
    EXPECT_EQ(WindowText(txtName), L"b");
    Press(VK_F2);
    EXPECT_EQ(Focused(), "name");
    EXPECT_EQ(WindowText(txtName), L"b");
    Press(VK_ESCAPE);
    Press(VK_INSERT);
    EXPECT_EQ(WindowText(txtName), L"新的排程專案");
    Press(VK_ESCAPE);
    answer = IDYES;
    Press(VK_DELETE);
    EXPECT_THAT(asked, ElementsAre(Question{L"您確定要移除【b】嗎？",
                                            MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2}));
    EXPECT_THAT(Rows(), ElementsAre(L"a"));
    EXPECT_EQ(WindowText(txtName), L"a") << "the row that is selected then";
    Press(VK_DELETE);
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_EQ(WindowText(txtName), L"");
    // Nothing is selected any more.
    Press(VK_DELETE);
    Press(VK_F2);
    Press(VK_RETURN);
    EXPECT_EQ(Writable(), "");
    EXPECT_EQ(asked.size(), 2U);
    Press(VK_INSERT);
    EXPECT_EQ(Focused(), "name");
  });
}

}  // namespace
}  // namespace tellurvane

// What the editor shows, allows and does. Its keys are in FrmSetKeys_test.cpp, its end in
// FrmSetClosing_test.cpp, unusual tasks in FrmSetContent_test.cpp.
#include "scheduler/FrmSet.h"

#include <gmock/gmock.h>

#include "tests/scheduler/EditorFixture.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kWhileEditing =
    "name media source ... date time unit interval enabled saveTask cancelTask close cancel";
constexpr const char* kWhileBrowsing = "list new edit remove name source interval close cancel";
constexpr UINT kMessage = MB_OK | MB_ICONINFORMATION;
constexpr UINT kRemovalQuestion = MB_YESNO | MB_ICONQUESTION;

class FrmSetTest : public EditorFixture {};

TEST_F(FrmSetTest, ShowsItsCaptionsAndEntriesAndANewTask) {
  now = At(2011, 2, 14, 12, 34, 56);
  Play({}, [&] {
    EXPECT_EQ(WindowText(window), L"新增 / 編輯排程專案");
    EXPECT_THAT(ButtonCaptions(),
                ElementsAre(L"新增", L"編輯", L"移除", L"...", L"儲存後立即啟動音樂排程",
                            L"儲存專案", L"放棄編輯", L"關閉", L"取消"));
    EXPECT_THAT(LabelCaptions(), ElementsAre(L"專案名稱", L"媒體類型", L"來源音樂", L"執行日期",
                                             L"排程類型", L"分鐘執行一次"));
    EXPECT_THAT(Entries(cboMediaType),
                ElementsAre(L"網路電台", L"本地音樂", L"應用程式", L"記事提醒"));
    EXPECT_THAT(Entries(cboTimeType),
                ElementsAre(L"每幾分鐘執行一次", L"每幾小時執行一次", L"每幾天執行一次"));
    EXPECT_EQ(WindowText(txtName), L"新的排程專案");
    EXPECT_EQ(WindowText(txtSrc), L"");
    EXPECT_EQ(Picked(), now);
    EXPECT_FALSE(IsWindowEnabled(owner->hwnd())) << "the owner waits";
  });
}

TEST_F(FrmSetTest, AllowsInEachStateWhatMakesSense) {
  tasks = {Task(L"a")};
  Play({}, [&] {
    EXPECT_EQ(Usable(), kWhileEditing) << "a new task";
    EXPECT_EQ(Writable(), "name source interval");
    EXPECT_EQ(SelectedRow(), -1);
    Click(cmdCancelJob);
    EXPECT_EQ(Usable(), "list new name source interval close cancel") << "nothing selected";
    EXPECT_EQ(Writable(), "");
    SelectRow(0);
    EXPECT_EQ(Usable(), kWhileBrowsing);
    Click(cmdEdit);
    EXPECT_EQ(Usable(), kWhileEditing) << "an existing task";
    Click(cmdSaveJob);
    EXPECT_EQ(Usable(), kWhileBrowsing) << "saved";
  });
}

TEST_F(FrmSetTest, OpensOnAnElementByEditingIt) {
  tasks = {Task(L"a"), Task(L"gone"), Task(L"c", kApplication, L"notepad.exe")};
  tasks[1].Deleted = true;
  tasks[2].IntervalUnit = kHours;
  tasks[2].Enabled = false;
  Play(2, [&] {
    EXPECT_THAT(Rows(), ElementsAre(L"a", L"c")) << "a removed task has no row";
    EXPECT_EQ(SelectedRow(), 1);
    EXPECT_EQ(WindowText(txtName), L"c");
    EXPECT_EQ(Entry(cboMediaType), kApplication);
    EXPECT_EQ(WindowText(txtSrc), L"notepad.exe");
    EXPECT_EQ(Picked(), At(2011, 2, 14, 13));
    EXPECT_EQ(Entry(cboTimeType), kHours);
    EXPECT_EQ(WindowText(lblInterval), L"小時執行一次");
    EXPECT_EQ(WindowText(txtInterval), L"5");
    EXPECT_EQ(SendMessageW(chkEnabled, BM_GETCHECK, 0, 0), BST_UNCHECKED);
    Type(txtName, L"d");
    Click(cmdSaveJob);
    EXPECT_THAT(Rows(), ElementsAre(L"a", L"d"));
  });
  EXPECT_EQ(tasks[1].Name, L"gone");
  EXPECT_EQ(tasks[2].Name, L"d");
}

TEST_F(FrmSetTest, FollowsTheSelectionAndShowsNoPastMoment) {
  tasks = {Task(L"a"), Task(L"b", kLocalMusic, L"C:\\b.mp3")};
  tasks[0].NextRun = At(2011, 2, 14, 11, 58, 30);
  Browse(0, [&] {
    EXPECT_EQ(Picked(), At(2011, 2, 14, 12, 3, 30));
    SelectRow(1);
    EXPECT_EQ(WindowText(txtName), L"b");
    EXPECT_EQ(WindowText(txtSrc), L"C:\\b.mp3");
    SelectRow(0);
    EXPECT_EQ(WindowText(txtName), L"a");
    EXPECT_EQ(Entry(cboMediaType), kReminderNote);
  });
  EXPECT_EQ(tasks[0].NextRun, At(2011, 2, 14, 11, 58, 30)) << "looking changes nothing";
}

TEST_F(FrmSetTest, ChangesOnlyTheLabelWithTheTimeType) {
  Play({}, [&] {
    Type(txtInterval, L"1.5x");
    const auto before = ButtonCaptions();
    const wchar_t* const words[] = {L"分鐘執行一次", L"小時執行一次", L"天執行一次"};
    for (const int unit : {1, 2, 0}) {
      Choose(cboTimeType, unit);
      EXPECT_EQ(WindowText(lblInterval), words[unit]);
    }
    EXPECT_EQ(WindowText(txtInterval), L"1.5x");
    EXPECT_EQ(WindowText(txtName), L"新的排程專案");
    EXPECT_EQ(Picked(), now);
    EXPECT_EQ(ButtonCaptions(), before);
  });
}

TEST_F(FrmSetTest, KeepsTheSourceWhenTheMediaTypeChanges) {
  Play({}, [&] {
    Type(txtSrc, L"a\\r\\nb");
    Choose(cboMediaType, kReminderNote);
    EXPECT_EQ(WindowText(txtSrc), L"a\r\nb") << "its line breaks can be read";
    EXPECT_EQ(WindowText(lblSource), L"提醒文字");
    Choose(cboMediaType, kApplication);
    EXPECT_EQ(WindowText(txtSrc), L"a\\r\\nb");
    EXPECT_EQ(WindowText(lblSource), L"執行程式");
    Choose(cboMediaType, kReminderNote);
    Click(cmdSaveJob);
  });
  ASSERT_EQ(tasks.size(), 1U);
  EXPECT_EQ(tasks[0].Source, L"a\\r\\nb");
}

TEST_F(FrmSetTest, OpensWhatChoosesTheSourceOfEachKind) {
  Play({}, [&] {
    const char* const expected[] = {"stations", "music", "programs", "note"};
    for (const int media : {3, 1, 0, 2}) {
      Choose(cboMediaType, media);
      called.clear();
      offered = L"x\\r\\ny" + std::to_wstring(media);
      Click(cmdFiles);
      EXPECT_THAT(called, ElementsAre(expected[media]));
      const std::wstring shown =
          media == kReminderNote ? L"x\r\ny3" : L"x\\r\\ny" + std::to_wstring(media);
      EXPECT_EQ(WindowText(txtSrc), shown);
      offered.reset();
      Click(cmdFiles);
      EXPECT_EQ(WindowText(txtSrc), shown) << "the user changed his mind";
    }
    EXPECT_EQ(WindowText(txtName), L"新的排程專案");
  });
}

// The dialog belongs to the main window: it does not disable the editor by itself.
TEST_F(FrmSetTest, CannotBeUsedWhileTheOpenFileDialogIsOpen) {
  whileBrowsing = [&] { EXPECT_FALSE(IsWindowEnabled(window)); };
  Play({}, [&] {
    Choose(cboMediaType, kLocalMusic);
    Click(cmdFiles);
    EXPECT_EQ(called.size(), 1U);
    EXPECT_TRUE(IsWindowEnabled(window));
    EXPECT_FALSE(IsWindowEnabled(owner->hwnd()));
    EXPECT_EQ(Focused(), "...");
  });
}

TEST_F(FrmSetTest, SaysWhyATaskIsRefusedAndKeepsTheFields) {
  tasks = {Task(L"taken")};
  const struct {
    const wchar_t* name;
    const wchar_t* interval;
    const wchar_t* message;
    const wchar_t* intervalAfter;
  } rows[] = {
      {L"n", L"61", L"時間數值超過 60 分鐘，請再次輸入一個您所要執行的時間。", L""},
      {L"TAKEN", L"5", L"排程專案名稱重複，請另外指定一個新的排程專案名稱", L"5"},
  };
  Play({}, [&] {
    for (const auto& row : rows) {
      asked.clear();
      Choose(cboMediaType, kReminderNote);
      Type(txtName, row.name);
      Type(txtSrc, L"text");
      Type(txtInterval, row.interval);
      Click(cmdSaveJob);
      EXPECT_THAT(asked, ElementsAre(Question{row.message, kMessage}));
      EXPECT_EQ(Usable(), kWhileEditing);
      EXPECT_EQ(Entry(cboMediaType), kReminderNote);
      EXPECT_EQ(WindowText(txtName), row.name);
      EXPECT_EQ(WindowText(txtSrc), L"text");
      EXPECT_EQ(WindowText(txtInterval), row.intervalAfter);
    }
  });
  EXPECT_EQ(tasks.size(), 1U);
  EXPECT_EQ(saves, 0);
}

TEST_F(FrmSetTest, SavesANewTaskAtTheEndAndSelectsIt) {
  tasks = {Task(L"a")};
  Play({}, [&] {
    Type(txtName, L" radio ");
    Type(txtSrc, L" Http://host/a|b ");
    Pick(At(2011, 2, 14, 9, 30, 15));
    Choose(cboTimeType, kHours);
    Type(txtInterval, L"24");
    Click(chkEnabled);
    Click(cmdSaveJob);
    EXPECT_THAT(asked, IsEmpty());
    EXPECT_THAT(Rows(), ElementsAre(L"a", L"radio"));
    EXPECT_EQ(SelectedRow(), 1);
    EXPECT_EQ(Focused(), "list");
    EXPECT_EQ(WindowText(txtName), L"radio");
    EXPECT_EQ(Picked(), At(2011, 2, 15, 9, 30, 15));
  });
  ASSERT_EQ(tasks.size(), 2U);
  EXPECT_EQ(saves, 1);
  const TaskRecord& task = tasks[1];
  EXPECT_EQ(task.Name, L"radio");
  EXPECT_EQ(task.Source, L"Http://host/a|b");
  EXPECT_EQ(task.MediaType, kInternetRadio);
  EXPECT_EQ(task.NextRun, At(2011, 2, 15, 9, 30, 15)) << "moved forward, not run at once";
  EXPECT_EQ(task.IntervalUnit, kHours);
  EXPECT_EQ(task.Interval, 24);
  EXPECT_FALSE(task.Enabled);
  EXPECT_EQ(task.Index, 1);
}

TEST_F(FrmSetTest, ShowsTheSelectedTaskAgainWhenTheEditingIsGivenUp) {
  tasks = {Task(L"a"), Task(L"b")};
  Play(1, [&] {
    Type(txtName, L"x");
    Type(txtSrc, L"y");
    Pick(At(2012, 1, 1));
    Choose(cboMediaType, kApplication);
    Click(cmdCancelJob);
    EXPECT_EQ(Usable(), kWhileBrowsing);
    EXPECT_EQ(SelectedRow(), 1);
    EXPECT_EQ(WindowText(txtName), L"b");
    EXPECT_EQ(WindowText(txtSrc), L"text");
    EXPECT_EQ(Picked(), At(2011, 2, 14, 13));
    EXPECT_EQ(Entry(cboMediaType), kReminderNote);
    Click(cmdNew);
    Click(cmdCancelJob);
    EXPECT_EQ(WindowText(txtName), L"b") << "a new one given up";
  });
  EXPECT_THAT(asked, IsEmpty());
  EXPECT_EQ(saves, 0);
}

TEST_F(FrmSetTest, RemovesATaskOnlyAfterAYes) {
  tasks = {Task(L"a"), Task(L"b")};
  Browse(0, [&] {
    answer = IDNO;
    Click(cmdDel);
    EXPECT_THAT(asked, ElementsAre(Question{L"您確定要移除【a】嗎？", kRemovalQuestion}));
    EXPECT_THAT(Rows(), ElementsAre(L"a", L"b"));
    EXPECT_EQ(saves, 0);
    answer = IDYES;
    Click(cmdDel);
    EXPECT_THAT(Rows(), ElementsAre(L"b"));
    EXPECT_EQ(saves, 1);
    EXPECT_EQ(SelectedRow(), 0);
    EXPECT_EQ(WindowText(txtName), L"b") << "the one that moved up";
    Click(cmdDel);
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_EQ(Usable(), "list new name source interval close cancel");
    EXPECT_EQ(WindowText(txtName), L"");
  });
  for (const TaskRecord& task : tasks) EXPECT_TRUE(task.Deleted);
}

}  // namespace
}  // namespace tellurvane

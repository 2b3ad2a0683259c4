// What the editor shows and allows. Its keys are in FrmSetKeys_test.cpp, its end in
// FrmSetClosing_test.cpp.
#include "scheduler/FrmSet.h"

#include <gmock/gmock.h>

#include "tests/scheduler/EditorFixture.h"
#include "tests/support/FormProbe.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FrmSetTest : public EditorFixture {};

TEST_F(FrmSetTest, ShowsItsCaptionsAndEntriesAndANewTask) {
  now = At(2011, 2, 14, 12, 34, 56);
  Play({}, [&] {
    EXPECT_EQ(WindowText(window), L"新增 / 編輯排程專案");
    EXPECT_THAT(Captions(InsideOf(window, L"Button")),
                ElementsAre(L"新增", L"編輯", L"移除", L"...", L"儲存後立即啟動音樂排程",
                            L"儲存專案", L"放棄編輯", L"關閉", L"取消"));
    EXPECT_THAT(Captions(LabelsOf(window)), ElementsAre(L"專案名稱", L"媒體類型", L"來源音樂",
                                                        L"執行日期", L"排程類型", L"分鐘執行一次"));
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

TEST_F(FrmSetTest, ShowsTheSelectedTaskAlsoAfterAnEditIsGivenUpAndNoPastMoment) {
  tasks = {Task(L"a"), Task(L"b", kLocalMusic, L"C:\\b.mp3")};
  tasks[0].NextRun = At(2011, 2, 14, 11, 58, 30);
  Play(0, [&] {
    Type(txtName, L"x");
    Type(txtSrc, L"y");
    Pick(At(2012, 1, 1));
    Choose(cboMediaType, kApplication);
    Click(cmdCancelJob);
    EXPECT_EQ(WindowText(txtName), L"a");
    EXPECT_EQ(WindowText(txtSrc), L"text");
    EXPECT_EQ(Picked(), At(2011, 2, 14, 12, 3, 30));
    EXPECT_EQ(Entry(cboMediaType), kReminderNote);
    SelectRow(1);
    EXPECT_EQ(WindowText(txtSrc), L"C:\\b.mp3");
    Click(cmdNew);
    Click(cmdCancelJob);
    EXPECT_EQ(SelectedRow(), 1);
    EXPECT_EQ(WindowText(txtName), L"b");
  });
  EXPECT_EQ(tasks[0].NextRun, At(2011, 2, 14, 11, 58, 30)) << "looking changes nothing";
}

TEST_F(FrmSetTest, ChangesOnlyTheLabelWithTheTimeType) {
  Play({}, [&] {
    Type(txtInterval, L"1.5x");
    const wchar_t* const words[] = {L"分鐘執行一次", L"小時執行一次", L"天執行一次"};
    for (const int unit : {1, 2, 0}) {
      Choose(cboTimeType, unit);
      EXPECT_EQ(WindowText(lblInterval), words[unit]);
    }
    EXPECT_EQ(WindowText(txtInterval), L"1.5x");
    EXPECT_EQ(WindowText(txtName), L"新的排程專案");
    EXPECT_EQ(Picked(), now);
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

TEST_F(FrmSetTest, SavesTheDateOfOnePickerAndTheTimeOfTheOther) {
  Play({}, [&] {
    Choose(cboMediaType, kReminderNote);
    Type(txtSrc, L"text");
    Pick(At(2012, 3, 4, 23, 59, 58), At(2013, 1, 1, 7, 8, 9));
    Click(cmdSaveJob);
  });
  ASSERT_EQ(tasks.size(), 1U);
  EXPECT_EQ(tasks[0].NextRun, At(2012, 3, 4, 7, 8, 9));
}

TEST_F(FrmSetTest, TheDotsButtonOpensTheDialogOfEachMediaType) {
  // The open-file dialog belongs to the main window: it does not disable the editor by itself.
  whileBrowsing = [&] { EXPECT_FALSE(IsWindowEnabled(window)); };
  Play({}, [&] {
    const char* const expected[] = {"stations", "music", "programs", "note"};
    for (const int media : {3, 1, 0, 2}) {
      Choose(cboMediaType, media);
      called.clear();
      offered = L"x\\r\\ny" + std::to_wstring(media);
      Click(cmdFiles);
      EXPECT_THAT(called, ElementsAre(expected[media]));
      EXPECT_TRUE(IsWindowEnabled(window));
      EXPECT_FALSE(IsWindowEnabled(owner->hwnd()));
      EXPECT_EQ(Focused(), "...");
      const std::wstring shown =
          media == kReminderNote ? L"x\r\ny3" : L"x\\r\\ny" + std::to_wstring(media);
      EXPECT_EQ(WindowText(txtSrc), shown);
      offered.reset();
      Click(cmdFiles);
      EXPECT_EQ(WindowText(txtSrc), shown) << "the user changed his mind";
    }
    EXPECT_EQ(WindowText(txtName), L"新的排程專案");
  });
  EXPECT_EQ(noteGiven, L"x\\r\\ny3") << "the text as the list stores it";
}

TEST_F(FrmSetTest, ShowsATaskOfAnUnknownKindAndKeepsTheKind) {
  tasks = {Task(L"a"), Task(L"b", 7, L"what"), Task(L"c", -3, L"ever")};
  tasks[2].IntervalUnit = 9;
  Play(1, [&] {
    EXPECT_EQ(Entry(cboMediaType), -1);
    EXPECT_EQ(WindowText(txtSrc), L"what");
    Click(cmdFiles);
    EXPECT_THAT(called, IsEmpty());
    Type(txtName, L"d");
    Click(cmdSaveJob);
    SelectRow(2);
    EXPECT_EQ(Entry(cboTimeType), -1);
    EXPECT_EQ(WindowText(lblInterval), L"") << "no other task's word";
    Click(cmdEdit);
    Click(cmdSaveJob);
    EXPECT_EQ(asked.size(), 1U) << "an unknown unit cannot be saved";
    Choose(cboTimeType, kDays);
    EXPECT_EQ(WindowText(lblInterval), L"天執行一次");
    Click(cmdSaveJob);
  });
  EXPECT_EQ(tasks[1].Name, L"d");
  EXPECT_EQ(tasks[1].MediaType, 7);
  EXPECT_EQ(tasks[2].MediaType, -3);
  EXPECT_EQ(tasks[2].IntervalUnit, kDays);
}

TEST_F(FrmSetTest, LeavesNothingBehindHoweverOftenItIsOpened) {
  tasks = {Task(L"a"), Task(L"b")};
  EXPECT_EQ(LeakedBy([&] { Play(1, [&] { Click(cmdCancelJob), SelectRow(0); }); }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane

// How the schedule editor is closed, and when it asks.
#include <gmock/gmock.h>

#include "tests/scheduler/EditorFixture.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FrmSetClosingTest : public EditorFixture {};

TEST_F(FrmSetClosingTest, AsksBeforeTheCloseBoxLosesWhatWasTyped) {
  tasks = {Task(L"a")};
  const Question question = {L"正在編輯的排程專案尚未儲存，您確定要關閉嗎？",
                             MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2};
  Play(0, [&] {
    Type(txtName, L"b");
    answer = IDNO;
    ClickCloseBox();
    EXPECT_TRUE(IsOpen());
    EXPECT_THAT(asked, ElementsAre(question));
    EXPECT_EQ(WindowText(txtName), L"b");
    answer = IDYES;
    ClickCloseBox();
    EXPECT_FALSE(IsOpen());
  });
  const struct {
    const char* what;
    std::function<void()> change;
    bool asks;
  } rows[] = {
      {"nothing", [] {}, false},
      {"the source", [&] { Type(txtSrc, L"x"); }, true},
      {"the kind", [&] { Choose(cboMediaType, kInternetRadio); }, true},
      {"the moment", [&] { Pick(At(2012, 1, 1)); }, true},
      {"the unit", [&] { Choose(cboTimeType, kDays); }, true},
      {"the interval", [&] { Type(txtInterval, L""); }, true},
      {"the mark", [&] { Click(chkEnabled); }, true},
      {"given up", [&] { Type(txtSrc, L"x"), Click(cmdCancelJob); }, false},
      {"取消", [&] { Type(txtSrc, L"x"), Click(cmdCancel); }, false},
  };
  for (const auto& row : rows) {
    asked.clear();
    Play(0, [&] {
      row.change();
      if (IsOpen()) ClickCloseBox();
      EXPECT_FALSE(IsOpen()) << row.what;
    });
    EXPECT_EQ(asked.size(), row.asks ? 1U : 0U) << row.what;
  }
  EXPECT_EQ(saves, 0);
}

// None of them is valid.
TEST_F(FrmSetClosingTest, ClosesAnEditThatNobodyTouchedWithoutCheckingOrSaving) {
  tasks = {Task(L"away", kLocalMusic, L"C:\\none.mp3"), Task(L"by hand")};
  tasks[1].Interval = 90;
  doPathsExist = false;
  const struct {
    const char* what;
    std::optional<size_t> element;
  } rows[] = {{"a new task", {}}, {"a file that is away", 0}, {"90 minutes", 1}};
  for (const auto& row : rows) {
    Play(row.element, [&] {
      Click(cmdSave);
      EXPECT_FALSE(IsOpen()) << row.what;
    });
    EXPECT_THAT(asked, IsEmpty()) << row.what;
  }
  EXPECT_EQ(saves, 0);
  EXPECT_EQ(tasks.size(), 2U);
  EXPECT_EQ(tasks[1].Interval, 90);
}

TEST_F(FrmSetClosingTest, ClosesAfterSavingAndStaysWhenTheTaskIsRefused) {
  tasks = {Task(L"a")};
  Play(0, [&] {
    Type(txtName, L"b");
    Type(txtInterval, L"61");
    Click(cmdSave);
    EXPECT_TRUE(IsOpen());
    EXPECT_THAT(asked,
                ElementsAre(Question{L"時間數值超過 60 分鐘，請再次輸入一個您所要執行的時間。",
                                     MB_OK | MB_ICONINFORMATION}));
    EXPECT_EQ(WindowText(txtName), L"b");
    EXPECT_EQ(WindowText(txtInterval), L"");
    EXPECT_EQ(Focused(), "interval");
    Type(txtInterval, L"60");
    Click(cmdSave);
    EXPECT_FALSE(IsOpen());
  });
  EXPECT_EQ(asked.size(), 1U);
  EXPECT_EQ(saves, 1);
  EXPECT_EQ(tasks[0].Name, L"b");
  EXPECT_EQ(tasks[0].Interval, 60);
  Browse(0, [&] {
    Click(cmdSave);
    EXPECT_FALSE(IsOpen());
  });
  EXPECT_EQ(saves, 1) << "nothing was being edited";
}

}  // namespace
}  // namespace tellurvane

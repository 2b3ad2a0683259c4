// The schedule editor with tasks and texts that nobody expects, and opened again and again.
#include <gmock/gmock.h>

#include "scheduler/TaskListText.h"
#include "tests/scheduler/EditorFixture.h"
#include "tests/support/HostDates.h"

namespace tellurvane {
namespace {

using testing::IsEmpty;

class FrmSetContentTest : public EditorFixture {
 protected:
  // What was saved, written to the bytes of a list file and read back.
  TaskList ReadBack() const {
    const auto text = DecodeTaskListBytes(TaskListBytes(tasks, HostDateWriter(EnUs())), {});
    auto reading = ReadTaskListText(text.value().text, HostDateReader(EnUs()), now);
    EXPECT_FALSE(reading.hasLoss);
    return std::move(reading.tasks);
  }
};

TEST_F(FrmSetContentTest, ShowsATaskOfAnUnknownKindAndKeepsTheKind) {
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

TEST_F(FrmSetContentTest, NeverWritesABrokenLine) {
  const std::wstring longText(40'000, L'長');
  const struct {
    std::wstring typed, stored, storedNote;
  } rows[] = {
      {L"a\tb", L"a b", L"a b"},        {L"a|b", L"a|b", L"a|b"},
      {L"a\r\nb", L"a b", L"a\\r\\nb"}, {L"\xD83D\xDE00", L"\xD83D\xDE00", L"\xD83D\xDE00"},
      {longText, longText, longText},
  };
  for (const auto& row : rows) {
    tasks.clear();
    Play({}, [&] {
      Choose(cboMediaType, kApplication);
      Type(txtName, row.typed);
      Type(txtSrc, row.typed);
      Click(cmdSaveJob);
      Click(cmdNew);
      Type(txtName, L"next");
      Choose(cboMediaType, kReminderNote);
      Type(txtSrc, row.typed);
      Click(cmdSaveJob);
    });
    const TaskList read = ReadBack();
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].Name, row.stored);
    EXPECT_EQ(read[0].Source, row.stored);
    EXPECT_EQ(read[1].Name, L"next");
    EXPECT_EQ(read[1].Source, row.storedNote);
  }
}

TEST_F(FrmSetContentTest, LeavesNothingBehindHoweverOftenItIsOpened) {
  tasks = {Task(L"a"), Task(L"b")};
  EXPECT_EQ(LeakedBy([&] { Play(1, [&] { Click(cmdCancelJob), SelectRow(0); }); }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane

#include "scheduler/ScheduleEditor.h"

#include <gmock/gmock.h>

#include <functional>

#include "base/Text.h"
#include "tests/support/Moments.h"

namespace tellurvane {
namespace {

const EditorAbilities kNothingSelected = {.list = true, .newTask = true};
const EditorAbilities kSelected = {
    .list = true, .newTask = true, .editTask = true, .removeTask = true};
const EditorAbilities kEditing = {.fields = true, .saveTask = true, .cancelTask = true};

TaskRecord Note(const std::wstring& name) {
  TaskRecord task;
  task.Name = name;
  task.Source = L"text";
  task.MediaType = kReminderNote;
  task.Enabled = true;
  task.Interval = 5;
  task.NextRun = At(2011, 2, 14, 13);
  return task;
}

class ScheduleEditorTest : public testing::Test {
 protected:
  ScheduleEditor Editor() {
    return {tasks,
            {.clock = [this] { return now; },
             .pathExists = [](const std::wstring&) { return true; },
             .isSameName = EqualsIgnoringAsciiCase},
            [this] { ++saves; }};
  }
  static std::vector<std::wstring> Names(const ScheduleEditor& editor) {
    std::vector<std::wstring> names;
    for (size_t row = 0; row < editor.RowCount(); ++row) names.push_back(editor.Task(row).Name);
    return names;
  }

  TaskList tasks;
  DateSerial now = At(2011, 2, 14, 12);
  int saves = 0;
};

TEST_F(ScheduleEditorTest, EnablesTheControlsOfEachState) {
  tasks = {Note(L"a")};
  ScheduleEditor editor = Editor();
  const struct {
    const char* name;
    std::function<void()> act;
    EditorAbilities expected;
  } rows[] = {
      {"nothing selected", [] {}, kNothingSelected},
      {"a row", [&] { editor.Select(0); }, kSelected},
      {"edit", [&] { editor.Edit(); }, kEditing},
      {"cancel", [&] { editor.Cancel(); }, kSelected},
      {"no row", [&] { editor.Select(std::nullopt); }, kNothingSelected},
      {"a row that does not exist", [&] { editor.Select(7); }, kNothingSelected},
      {"new", [&] { editor.New(); }, kEditing},
  };
  for (const auto& row : rows) {
    row.act();
    EXPECT_EQ(editor.Abilities(), row.expected) << row.name;
  }
}

TEST_F(ScheduleEditorTest, DoesNothingThatIsNotAllowed) {
  tasks = {Note(L"a"), Note(L"b")};
  ScheduleEditor editor = Editor();
  editor.Edit();
  editor.Remove();
  EXPECT_EQ(editor.Save(editor.Fields()), std::nullopt);
  EXPECT_EQ(editor.State(), EditorState::kBrowsing);
  editor.Select(0);
  editor.Edit();
  editor.Select(1);
  editor.New();
  editor.Remove();
  EXPECT_EQ(editor.SelectedRow(), 0U);
  EXPECT_EQ(editor.State(), EditorState::kExistingTask);
  EXPECT_EQ(saves, 0);
  EXPECT_FALSE(tasks[0].Deleted || tasks[1].Deleted);
}

TEST_F(ScheduleEditorTest, AppendsANewTaskAndSelectsIt) {
  tasks = {Note(L"a")};
  ScheduleEditor editor = Editor();
  editor.Select(0);
  editor.New();
  TaskFields fields = editor.Fields();
  fields.mediaType = kReminderNote;
  fields.source = L"text";
  EXPECT_EQ(editor.Save(fields), std::nullopt);
  EXPECT_THAT(Names(editor), testing::ElementsAre(L"a", L"新的排程專案"));
  EXPECT_EQ(editor.SelectedRow(), 1U);
  EXPECT_EQ(tasks[1].Index, 1);
  EXPECT_EQ(tasks[1].Id, 2);
  EXPECT_EQ(saves, 1);
  EXPECT_EQ(editor.State(), EditorState::kBrowsing);
}

TEST_F(ScheduleEditorTest, StaysWithATaskThatIsRefused) {
  tasks = {Note(L"a"), Note(L"b")};
  ScheduleEditor editor = Editor();
  editor.Select(1);
  editor.Edit();
  TaskFields fields = editor.Fields();
  fields.name = L"A";
  ASSERT_TRUE(editor.Save(fields).has_value());
  EXPECT_EQ(editor.State(), EditorState::kExistingTask);
  EXPECT_EQ(tasks[1].Name, L"b");
  EXPECT_EQ(saves, 0);
  // A removed task keeps its name until the list is loaded again.
  editor.Cancel();
  editor.Select(0);
  editor.Remove();
  editor.New();
  EXPECT_TRUE(editor.Save(fields).has_value());
}

TEST_F(ScheduleEditorTest, CountsRowsWithoutTheRemovedTasks) {
  tasks = {Note(L"a"), Note(L"b"), Note(L"c")};
  ScheduleEditor editor = Editor();
  editor.Select(0);
  editor.Remove();
  EXPECT_TRUE(tasks[0].Deleted);
  EXPECT_THAT(Names(editor), testing::ElementsAre(L"b", L"c"));
  EXPECT_EQ(editor.SelectedRow(), 0U);
  editor.Select(1);
  editor.Edit();
  TaskFields fields = editor.Fields();
  EXPECT_EQ(fields.name, L"c");
  fields.name = L"C";
  editor.Save(fields);
  EXPECT_EQ(tasks[2].Name, L"C") << "the third element is the second row";
  editor.Remove();
  editor.Remove();
  EXPECT_EQ(editor.RowCount(), 0U);
  EXPECT_EQ(editor.SelectedRow(), std::nullopt);
  EXPECT_EQ(tasks.size(), 3U);
}

TEST_F(ScheduleEditorTest, FindsTheRowOfAnElement) {
  tasks = {Note(L"a"), Note(L"b"), Note(L"c")};
  tasks[1].Deleted = true;
  const ScheduleEditor editor = Editor();
  EXPECT_EQ(editor.RowOf(0), 0U);
  EXPECT_EQ(editor.RowOf(1), std::nullopt);
  EXPECT_EQ(editor.RowOf(2), 1U);
  EXPECT_EQ(editor.RowOf(9), std::nullopt);
}

}  // namespace
}  // namespace tellurvane

#include "scheduler/ScheduleEditor.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

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

TEST_F(ScheduleEditorTest, AllowsInEachStateWhatMakesSense) {
  tasks = {Note(L"a")};
  ScheduleEditor editor = Editor();
  EXPECT_EQ(editor.Abilities(), kNothingSelected);
  editor.Select(0);
  EXPECT_EQ(editor.Abilities(), kSelected);
  editor.Edit();
  EXPECT_EQ(editor.Abilities(), kEditing);
  editor.Cancel();
  EXPECT_EQ(editor.Abilities(), kSelected);
  editor.Select(std::nullopt);
  EXPECT_EQ(editor.Abilities(), kNothingSelected);
  editor.New();
  EXPECT_EQ(editor.Abilities(), kEditing);
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

TEST_F(ScheduleEditorTest, NamesANewTask) {
  ScheduleEditor editor = Editor();
  editor.New();
  EXPECT_EQ(editor.Fields().name, L"新的排程專案");
  EXPECT_EQ(editor.Fields().firstRun, now);
}

TEST_F(ScheduleEditorTest, ShowsATasksNextRunBroughtForward) {
  tasks = {Note(L"a")};
  tasks[0].NextRun = At(2011, 2, 14, 11, 57);
  ScheduleEditor editor = Editor();
  editor.Select(0);
  EXPECT_EQ(editor.Fields().firstRun, At(2011, 2, 14, 12, 2));
  EXPECT_EQ(tasks[0].NextRun, At(2011, 2, 14, 11, 57)) << "only shown";
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

TEST_F(ScheduleEditorTest, ChangesATaskInItsPlace) {
  tasks = {Note(L"a"), Note(L"b"), Note(L"c")};
  ScheduleEditor editor = Editor();
  editor.Select(1);
  editor.Edit();
  TaskFields fields = editor.Fields();
  fields.name = L"B";
  EXPECT_EQ(editor.Save(fields), std::nullopt);
  EXPECT_THAT(Names(editor), testing::ElementsAre(L"a", L"B", L"c"));
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

// The editor against a plain list of names and texts, through random commands.
class EditorModelTest : public ScheduleEditorTest {
 protected:
  struct Reference {
    std::wstring name;
    std::wstring text;
  };

  size_t Below(size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(random); }

  void Step(ScheduleEditor& editor) {
    switch (Below(6)) {
      case 0:
        Choose(editor);
        break;
      case 1:
        editor.New();
        break;
      case 2:
        editor.Edit();
        break;
      case 3:
        Save(editor);
        break;
      case 4:
        editor.Cancel();
        break;
      default:
        Remove(editor);
        break;
    }
  }

  void Choose(ScheduleEditor& editor) {
    const size_t row = Below(editor.RowCount() + 2);
    editor.Select(row);
    if (!editor.IsEditing()) {
      chosen = row < reference.size() ? std::optional(row) : std::nullopt;
    }
  }

  void Save(ScheduleEditor& editor) {
    TaskFields fields = editor.Fields();
    // From a few names, so that many are taken; some texts are empty and refused.
    fields.name = L"name " + std::to_wstring(Below(12));
    fields.source = Below(5) == 0 ? L"" : L"text " + std::to_wstring(Below(1'000));
    fields.mediaType = kReminderNote;
    fields.interval = Below(9) == 0 ? L"61" : L"5";
    const EditorState before = editor.State();
    const bool isTaken = IsTaken(fields.name, before);
    const auto refusal = editor.Save(fields);
    if (before == EditorState::kBrowsing) return;
    const bool isRefused = isTaken || fields.source.empty() || fields.interval == L"61";
    ASSERT_EQ(refusal.has_value(), isRefused);
    if (isRefused) return;
    if (before == EditorState::kNewTask) {
      reference.push_back({});
      chosen = reference.size() - 1;
    }
    reference[*chosen] = {fields.name, fields.source};
    everTaken.push_back(fields.name);
  }

  bool IsTaken(const std::wstring& name, EditorState state) const {
    // None is beyond the last.
    const size_t own =
        state == EditorState::kExistingTask ? chosen.value_or(reference.size()) : reference.size();
    for (size_t i = 0; i < reference.size(); ++i) {
      if (i != own && reference[i].name == name) return true;
    }
    return std::ranges::find(removed, name) != removed.end();
  }

  void Remove(ScheduleEditor& editor) {
    const bool does = !editor.IsEditing() && chosen.has_value();
    editor.Remove();
    if (!does) return;
    removed.push_back(reference[*chosen].name);
    reference.erase(reference.begin() + static_cast<std::ptrdiff_t>(*chosen));
    if (reference.empty()) {
      chosen.reset();
    } else {
      chosen = std::min(*chosen, reference.size() - 1);
    }
  }

  // What the file would hold is what the reference holds.
  void Compare(const ScheduleEditor& editor) {
    ASSERT_EQ(editor.RowCount(), reference.size());
    ASSERT_EQ(editor.SelectedRow(), chosen);
    size_t row = 0;
    for (const TaskRecord& task : tasks) {
      if (task.Deleted) continue;
      ASSERT_EQ(task.Name, reference[row].name);
      ASSERT_EQ(task.Source, reference[row].text);
      ++row;
    }
    ASSERT_EQ(row, reference.size());
  }

  // Closing: the list is loaded from the file, without the removed ones.
  void Reload() {
    std::erase_if(tasks, [](const TaskRecord& task) { return task.Deleted; });
    removed.clear();
    chosen.reset();
  }

  std::mt19937 random{20'110'214};
  std::vector<Reference> reference;
  std::vector<std::wstring> removed;
  std::vector<std::wstring> everTaken;
  std::optional<size_t> chosen;
};

TEST_F(EditorModelTest, TenThousandSessionsLoseNothingAndTouchNoOther) {
  for (int session = 0; session < 10'000; ++session) {
    ScheduleEditor editor = Editor();
    const size_t steps = Below(20);
    for (size_t step = 0; step < steps; ++step) {
      Step(editor);
      ASSERT_NO_FATAL_FAILURE(Compare(editor)) << "session " << session << ", step " << step;
    }
    Reload();
  }
  EXPECT_GT(everTaken.size(), 1'000U) << "most commands did something";
}

}  // namespace
}  // namespace tellurvane

#include "scheduler/ScheduleEditor.h"

#include <algorithm>
#include <utility>

#include "scheduler/Schedule.h"

namespace tellurvane {
namespace {

constexpr const wchar_t* kNewName = L"新的排程專案";

}  // namespace

ScheduleEditor::ScheduleEditor(TaskList& tasks, ValidationCallbacks callbacks,
                               std::function<void()> saveList)
    : tasks_(tasks), callbacks_(std::move(callbacks)), saveList_(std::move(saveList)) {
  FindRows();
}

void ScheduleEditor::FindRows() {
  rows_.clear();
  for (size_t i = 0; i < tasks_.size(); ++i) {
    if (!tasks_[i].Deleted) rows_.push_back(i);
  }
}

EditorAbilities ScheduleEditor::Abilities() const {
  if (IsEditing()) return {.fields = true, .saveTask = true, .cancelTask = true};
  const bool isSelected = selected_.has_value();
  return {.list = true, .newTask = true, .editTask = isSelected, .removeTask = isSelected};
}

std::optional<size_t> ScheduleEditor::RowOf(size_t element) const {
  const auto found = std::ranges::find(rows_, element);
  if (found == rows_.end()) return std::nullopt;
  return static_cast<size_t>(found - rows_.begin());
}

TaskFields ScheduleEditor::Fields() const {
  TaskFields fields;
  if (state_ == EditorState::kNewTask || !selected_) {
    if (state_ == EditorState::kNewTask) fields.name = kNewName;
    fields.firstRun = callbacks_.clock();
    fields.interval = L"1";
    fields.isEnabled = true;
    return fields;
  }
  const TaskRecord& task = Task(*selected_);
  fields.name = task.Name;
  fields.mediaType = task.MediaType;
  fields.source = task.Source;
  fields.firstRun = CaughtUpNextRun(task, callbacks_.clock(), CatchUp::kStrict);
  fields.timeType = task.IntervalUnit;
  fields.interval = std::to_wstring(task.Interval);
  fields.isEnabled = task.Enabled;
  return fields;
}

void ScheduleEditor::Select(std::optional<size_t> row) {
  if (!Abilities().list) return;
  selected_ = row && *row < rows_.size() ? row : std::nullopt;
}

void ScheduleEditor::New() {
  if (Abilities().newTask) state_ = EditorState::kNewTask;
}

void ScheduleEditor::Edit() {
  if (Abilities().editTask) state_ = EditorState::kExistingTask;
}

std::optional<ValidationError> ScheduleEditor::Save(const TaskFields& fields) {
  if (!Abilities().saveTask) return std::nullopt;
  std::optional<size_t> edited;
  if (state_ == EditorState::kExistingTask) edited = rows_.at(*selected_);
  auto outcome = ValidateTask(fields, edited, tasks_, callbacks_);
  if (const auto* const error = std::get_if<ValidationError>(&outcome)) return *error;
  auto& task = std::get<TaskRecord>(outcome);
  if (edited) {
    tasks_[*edited] = std::move(task);
  } else {
    task.Index = static_cast<std::int32_t>(tasks_.size());
    task.Id = task.Index + 1;
    tasks_.push_back(std::move(task));
    FindRows();
    selected_ = rows_.size() - 1;
  }
  state_ = EditorState::kBrowsing;
  saveList_();
  return std::nullopt;
}

void ScheduleEditor::Cancel() { state_ = EditorState::kBrowsing; }

void ScheduleEditor::Remove() {
  if (!Abilities().removeTask) return;
  tasks_[rows_.at(*selected_)].Deleted = true;
  FindRows();
  // The row that moved up, or the last row.
  if (rows_.empty()) {
    selected_.reset();
  } else {
    selected_ = std::min(*selected_, rows_.size() - 1);
  }
  saveList_();
}

}  // namespace tellurvane

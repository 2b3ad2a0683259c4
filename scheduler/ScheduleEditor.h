// The schedule editor without its window: what is selected, what is being edited, what may be done.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "scheduler/TaskRecord.h"
#include "scheduler/TaskValidation.h"

namespace tellurvane {

enum class EditorState { kBrowsing, kNewTask, kExistingTask };

// Which controls can be used.
struct EditorAbilities {
  bool list = false;  // another task can be selected
  bool newTask = false;
  bool editTask = false;
  bool removeTask = false;
  bool fields = false;  // otherwise they can only be read
  bool saveTask = false;
  bool cancelTask = false;

  bool operator==(const EditorAbilities&) const = default;
};

// Works on the list in place. Row i is the i-th task that is not removed; a removed task stays in
// the list, and its name taken, until the list is loaded from the file again.
class ScheduleEditor {
 public:
  ScheduleEditor(TaskList& tasks, ValidationCallbacks callbacks, std::function<void()> saveList);

  EditorState State() const { return state_; }
  bool IsEditing() const { return state_ != EditorState::kBrowsing; }
  EditorAbilities Abilities() const;

  size_t RowCount() const { return rows_.size(); }
  // The row must exist.
  const TaskRecord& Task(size_t row) const { return tasks_[rows_.at(row)]; }
  std::optional<size_t> SelectedRow() const { return selected_; }
  // The row that shows an element of the list; none for a removed one.
  std::optional<size_t> RowOf(size_t element) const;

  // The selected task's values with its next run brought forward, or a new task's values.
  TaskFields Fields() const;

  // Each does nothing when Abilities() forbids it.
  void Select(std::optional<size_t> row);
  void New();
  void Edit();
  // Nothing when the task was saved; it is then selected. Otherwise editing goes on.
  std::optional<ValidationError> Save(const TaskFields& fields);
  void Cancel();
  void Remove();

 private:
  void FindRows();

  TaskList& tasks_;
  ValidationCallbacks callbacks_;
  std::function<void()> saveList_;
  EditorState state_ = EditorState::kBrowsing;
  std::vector<size_t> rows_;  // elements of the list
  std::optional<size_t> selected_;
};

}  // namespace tellurvane

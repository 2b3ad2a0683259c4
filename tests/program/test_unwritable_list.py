"""Editing while the list cannot be written: nothing is lost, and nothing runs late."""

from datetime import timedelta

from editor import open_editor, open_editor_on
from harness import until, windows_path
from joblist import APPLICATION, MINUTES, NOTE, ZERO_DAY, Task, list_bytes, now, read_tasks

UNWRITABLE = "排程清單無法寫入磁碟，變更只保留到程式結束為止。"


def saved(folder):
    return read_tasks(folder.list.read_bytes())


class Obstacle:
    """Stands where the list is written before it takes the old one's place."""

    def __init__(self, folder):
        self.path = folder.path / "JobList.dbs.tmp"
        self.path.mkdir()

    def remove(self):
        self.path.rmdir()


def test_an_edited_list_is_kept_in_memory_and_the_user_is_told(folder, start):
    folder.list.write_bytes(list_bytes(Task("first"), Task("second")))
    program = start().started()
    obstacle = Obstacle(folder)
    before = folder.list.read_bytes()
    editor = open_editor_on(program, 0)
    editor.fill("name", "changed")
    editor.click("save task")
    until(lambda: not editor.is_editing(), "the saved task")
    editor.click("close")
    text, buttons = editor.box()
    assert (text, len(buttons)) == (UNWRITABLE, 1)
    editor.answer(0)
    assert folder.list.read_bytes() == before
    # As soon as it can be written again, it is.
    obstacle.remove()
    assert program.exit() == 0
    assert [task.name for task in saved(folder)] == ["changed", "second"]


def test_what_fell_due_behind_the_editor_is_skipped_without_a_word(folder, start):
    report = folder.path.parent / "report"
    executable = folder.add("CommandProbe.exe").rename(folder.path.parent / "probe.exe")
    moment = now() + timedelta(seconds=12)
    folder.list.write_bytes(list_bytes(
        Task("due", f"{windows_path(executable)} {windows_path(report)}", moment, unit=MINUTES,
             interval=5, media_type=APPLICATION)))
    program = start().started()
    obstacle = Obstacle(folder)
    editor = open_editor(program)
    assert now() < moment, "the editor came too late for this test"
    until(lambda: now() > moment + timedelta(seconds=2), "the moment and a while")
    editor.close("cancel")
    until(lambda: program.main_window()["enabled"], "the main window in use again")
    # No box either: nothing was changed.
    assert not editor.find_box()
    obstacle.remove()
    assert program.exit() == 0
    task, = saved(folder)
    assert (task.last_run, task.next_run) == (ZERO_DAY, moment + timedelta(minutes=5))
    assert not report.exists()


def test_the_name_of_a_removed_task_is_free_once_the_editor_was_closed(folder, start):
    folder.list.write_bytes(list_bytes(Task("name"), Task("other")))
    program = start().started()
    editor = open_editor_on(program, 0)
    until(editor.is_editing, "the task's fields")
    editor.click("cancel task")
    until(lambda: not editor.is_editing(), "the list")
    editor.click("remove")
    editor.answer(0)
    until(lambda: len(saved(folder)) == 1, "the removal")
    editor.close()
    editor = open_editor(program)
    editor.fill_in("name", NOTE, "text", MINUTES, 5)
    editor.click("save task")
    until(lambda: [task.name for task in saved(folder)] == ["other", "name"], "the new task")
    editor.close()
    assert program.exit() == 0

"""Editing while the list cannot be written: nothing is lost, and nothing runs late."""

from datetime import timedelta

import pytest

from desktop import until
from due import FIVE_MINUTES, NEVER_RUN, Reports
from editor import OK, YES, open_editor, open_editor_on
from task_list import MINUTES, NOTE, Task, now

UNWRITABLE = "排程清單無法寫入磁碟，變更只保留到程式結束為止。"


def block_saving(folder):
    """A folder in place of the file that is written before it replaces the list."""
    obstacle = folder.path / "JobList.dbs.tmp"
    obstacle.mkdir()
    return obstacle


def test_an_edited_list_is_kept_in_memory_and_the_user_is_informed(folder, start):
    folder.write_list(Task("first"), Task("second"))
    program = start().started()
    obstacle = block_saving(folder)
    before = folder.list.read_bytes()
    editor = open_editor_on(program, 0)
    editor.fill("name", "changed")
    editor.click("save task")
    until(lambda: not editor.is_editing(), "the saved task")
    editor.click("close")
    editor.answer(UNWRITABLE, OK)
    assert folder.list.read_bytes() == before
    # It is written as soon as that is possible.
    obstacle.rmdir()
    assert program.exit() == 0
    assert folder.task_names() == ["changed", "second"]


@pytest.mark.parametrize("is_blocked", [False, True])
def test_a_task_that_falls_due_while_the_editor_is_open_is_skipped(folder, start, is_blocked):
    reports = Reports(folder)
    moment = now() + timedelta(seconds=12)
    folder.write_list(reports.task("due", moment))
    program = start().started()
    obstacle = is_blocked and block_saving(folder)
    editor = open_editor(program)
    assert now() < moment, "the editor came too late for this test"
    until(lambda: now() > moment + timedelta(seconds=2), "the moment and a while")
    assert folder.task("due").next_run == moment
    editor.close("cancel")
    until(lambda: program.main_window()["enabled"], "the main window in use again")
    assert not program.box(), "nothing was changed"
    if is_blocked:
        obstacle.rmdir()
    else:
        until(lambda: folder.task("due").next_run == moment + FIVE_MINUTES, "the next run")
    # A run would be recorded at the end of the program at the latest.
    assert program.exit() == 0
    record = folder.task("due")
    assert (record.last_run, record.next_run) == (NEVER_RUN, moment + FIVE_MINUTES)
    assert not reports.exists("due")


def test_the_name_of_a_removed_task_is_free_after_the_editor_was_closed(folder, start):
    folder.write_list(Task("name"), Task("other"))
    program = start().started()
    editor = open_editor_on(program, 0)
    editor.click("cancel task")
    until(lambda: not editor.is_editing(), "the list")
    editor.click("remove")
    editor.answer("您確定要移除【name】嗎？", YES)
    until(lambda: folder.task_names() == ["other"], "the removal")
    editor.close()
    editor = open_editor(program)
    editor.fill_in("name", NOTE, "text", MINUTES, 5)
    editor.click("save task")
    until(lambda: folder.task_names() == ["other", "name"], "the new task")
    editor.close()
    assert program.exit() == 0

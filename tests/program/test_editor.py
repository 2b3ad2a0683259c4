"""The schedule editor with real clicks and keys: tasks made, changed, removed, run, kept."""

import wave
from datetime import timedelta

from editor import CAPTION, open_editor, open_editor_on, type_text
from harness import LOCALE, click_at, press_key, until, windows_path
from joblist import (APPLICATION, DAYS, HOURS, MINUTES, MUSIC, NOTE, RADIO, ZERO_DAY, Task,
                     list_bytes, now, read_tasks)

SAME_NAME = "排程專案名稱重複，請另外指定一個新的排程專案名稱"
UNSAVED = "正在編輯的排程專案尚未儲存，您確定要關閉嗎？"
FIRST_BUTTON, SECOND_BUTTON = 0, 1
YES, NO = FIRST_BUTTON, SECOND_BUTTON


def saved(folder):
    return read_tasks(folder.list.read_bytes())


def facts(task):
    return task.name, task.media_type, task.source, task.unit, task.interval, task.enabled


def pick_second(editor, seconds):
    """Types the seconds into the time picker."""
    editor.click("time")
    # The morning or afternoon stands before the hour, or behind the seconds.
    press_key(*["Right"] * (4 if LOCALE == "zh_TW" else 3))
    type_text(f"{seconds:02}")
    press_key("shift+Tab")
    until(lambda: f":{seconds:02}" in editor.controls()["time"]["text"], "the seconds")


def probe(folder):
    """A program that reports, and its report."""
    report = folder.path.parent / "report"
    executable = folder.add("CommandProbe.exe").rename(folder.path.parent / "probe.exe")
    return f"{windows_path(executable)} {windows_path(report)}", report


def test_tasks_of_every_kind_are_made_run_changed_removed_and_kept(folder, start):
    sound = folder.path.parent / "a.wav"
    with wave.open(str(sound), "wb") as file:
        file.setparams((1, 2, 8_000, 0, "NONE", ""))
        file.writeframes(bytes(16_000))
    command, report = probe(folder)
    program = start().started()
    assert saved(folder) == []

    editor = open_editor(program)
    editor.fill_in("radio", RADIO, "Http://127.0.0.1:9/a|b", DAYS, 7)
    editor.click("save task")
    until(lambda: len(saved(folder)) == 1, "the radio task")

    editor.click("new")
    editor.fill_in("note", NOTE, None, DAYS, 1)
    editor.click("...")
    until(lambda: len(program.windows()) == 3, "the note's editor")
    type_text("drink\nwater")
    click_at(program.child("確 定")["rect"])
    until(lambda: editor.texts()["source"] == "drink\r\nwater", "the note in the source box")
    editor.click("save task")
    until(lambda: len(saved(folder)) == 2, "the note")

    editor.click("new")
    editor.fill_in("music", MUSIC, windows_path(sound), HOURS, 24)
    editor.click("enabled")
    editor.click("save task")
    until(lambda: len(saved(folder)) == 3, "the music task")

    # This one falls due soon after the editor is closed.
    editor.click("new")
    editor.fill_in("program", APPLICATION, command, MINUTES, 1)
    moment = now() + timedelta(seconds=15)
    pick_second(editor, moment.second)
    editor.click("save task")
    until(lambda: len(saved(folder)) == 4, "the application task")
    editor.close()

    until(report.exists, "the program that was due", 90)
    until(lambda: saved(folder)[3].last_run != ZERO_DAY, "the record of the run")
    task = saved(folder)[3]
    assert task.last_run.second in {(moment.second + late) % 60 for late in range(3)}
    assert task.next_run - task.last_run.replace(second=moment.second) in (
        timedelta(minutes=1), timedelta(minutes=2))
    assert [facts(task) for task in saved(folder)] == [
        ("radio", RADIO, "Http://127.0.0.1:9/a|b", DAYS, 7, True),
        ("note", NOTE, "drink\\r\\nwater", DAYS, 1, True),
        ("music", MUSIC, windows_path(sound), HOURS, 24, False),
        ("program", APPLICATION, command, MINUTES, 1, True)]

    # Changed: first to a name that another task has.
    editor = open_editor_on(program, 1)
    until(lambda: editor.is_editing() and editor.texts()["name"] == "note", "the task's fields")
    editor.fill("name", "RADIO")
    editor.fill("interval", "3")
    editor.click("save task")
    assert editor.box()[0] == SAME_NAME
    assert not editor.window()["enabled"]
    editor.answer(FIRST_BUTTON)
    assert editor.is_editing()
    assert editor.texts() == {"name": "RADIO", "source": "drink\r\nwater", "interval": "3"}
    editor.fill("name", "memo")
    press_key("Return")
    until(lambda: saved(folder)[1].name == "memo", "the new name")
    assert not editor.is_editing()

    # Removed.
    editor.select(0)
    until(lambda: editor.texts()["name"] == "radio", "the first task")
    editor.click("remove")
    question, buttons = editor.box()
    assert (question, len(buttons)) == ("您確定要移除【radio】嗎？", 2)
    editor.answer(NO)
    assert len(saved(folder)) == 4
    editor.click("remove")
    editor.answer(YES)
    until(lambda: len(saved(folder)) == 3, "the removal")
    assert editor.texts()["name"] == "memo"
    editor.close()

    assert program.exit() == 0
    kept = [facts(task) for task in saved(folder)]
    assert kept == [
        ("memo", NOTE, "drink\\r\\nwater", DAYS, 3, True),
        ("music", MUSIC, windows_path(sound), HOURS, 24, False),
        ("program", APPLICATION, command, MINUTES, 1, True)]
    start().started()
    assert [facts(task) for task in saved(folder)] == kept
    assert folder.backups() == []


def test_a_task_that_falls_due_while_the_editor_is_open_is_skipped(folder, start):
    command, report = probe(folder)
    moment = now() + timedelta(seconds=12)
    folder.list.write_bytes(list_bytes(
        Task("due", command, moment, unit=MINUTES, interval=5, media_type=APPLICATION)))
    program = start().started()
    editor = open_editor(program)
    editor.fill("name", "other")
    assert now() < moment, "the editor came too late for this test"
    until(lambda: now() > moment + timedelta(seconds=3), "the moment and a while")
    assert not report.exists()
    assert saved(folder)[0].next_run == moment
    editor.close("cancel")
    until(lambda: saved(folder)[0].next_run == moment + timedelta(minutes=5), "the next run")
    # Had it been run now, the list would say so at the latest when the program ends.
    assert program.exit() == 0
    assert not report.exists()
    assert [(task.name, task.last_run) for task in saved(folder)] == [("due", ZERO_DAY)]


def test_a_task_is_made_and_given_up_by_keys_alone(folder, start):
    program = start().started()
    editor = open_editor(program)
    # The name box has the keyboard, its text selected.
    type_text("by keys")
    press_key("Tab", "End", "Tab")
    type_text("one\ntwo")
    press_key("ctrl+Return")
    until(lambda: saved(folder), "the task")
    assert facts(saved(folder)[0]) == ("by keys", NOTE, "one\\r\\ntwo", MINUTES, 1, True)
    press_key("F2")
    until(editor.is_editing, "the editing")
    type_text("given up")
    until(lambda: editor.texts()["name"] == "given up", "the typed name")
    press_key("Escape")
    until(lambda: editor.texts()["name"] == "by keys", "the task's own name")
    press_key("Insert")
    until(editor.is_editing, "a new task")
    press_key("Escape")
    until(lambda: not editor.is_editing(), "the list")
    press_key("Escape")
    editor.is_gone()
    assert len(saved(folder)) == 1


def test_alt_f4_asks_before_typing_is_lost(folder, start):
    program = start().started()
    editor = open_editor(program)
    type_text("typed")
    until(lambda: editor.texts()["name"] == "typed", "the typed name")
    press_key("alt+F4")
    assert editor.box()[0] == UNSAVED
    # The safe answer is the one that Enter gives.
    press_key("Return")
    until(lambda: not editor.find_box(), "the end of the question")
    assert editor.texts()["name"] == "typed"
    press_key("alt+F4")
    editor.answer(YES)
    editor.is_gone()
    assert saved(folder) == []
    # The main window is in use again, and the editor comes as often as it is called.
    open_editor(program).close("cancel")
    assert program.main_window()["text"] != CAPTION

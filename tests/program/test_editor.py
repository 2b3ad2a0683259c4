"""The schedule editor with real clicks and keys: tasks made, changed, removed, run, kept."""

import wave
from datetime import timedelta

from desktop import LOCALE, click_at, press_key, type_text, until, windows_path
from due import Reports
from editor import NO, OK, UNSAVED, YES, open_editor, open_editor_on
from task_list import (APPLICATION, DAYS, HOURS, MINUTES, MUSIC, NOTE, RADIO, ZERO_DAY, now)

SAME_NAME = "排程專案名稱重複，請另外指定一個新的排程專案名稱"
GIVING_UP = "排程專案尚未儲存，您確定要放棄變更嗎？"


def facts(task):
    return task.name, task.media_type, task.source, task.unit, task.interval, task.enabled


def moment_in_this_hour(seconds):
    """A moment some seconds ahead, when that is still in the same hour."""
    def ahead():
        moment = now() + timedelta(seconds=seconds)
        return moment if moment.hour == now().hour else None
    return until(ahead, "the next hour", 2 * seconds)


def pick(editor, moment):
    """Types the minute and the second into the time picker; its hour is that of now."""
    editor.click("time")
    # The half of the day is before the hour in zh_TW.
    press_key(*["Right"] * (3 if LOCALE == "zh_TW" else 2))
    type_text(f"{moment.minute:02}")
    press_key("Right")
    type_text(f"{moment.second:02}")
    press_key("shift+Tab")
    until(lambda: f"{moment:%M:%S}" in editor.controls()["time"]["text"], "the moment")


def silence(folder):
    """A second of it, to be played."""
    sound = folder.path.parent / "a.wav"
    with wave.open(str(sound), "wb") as file:
        file.setparams((1, 2, 8_000, 0, "NONE", ""))
        file.writeframes(bytes(16_000))
    return windows_path(sound)


def make(folder, editor, moment, *fields):
    """Fills in a new task that falls due at a moment, and saves it."""
    before = len(folder.tasks())
    editor.fill_in(*fields)
    if fields[1] == NOTE:
        editor.click("...")
        until(lambda: len(editor.program.windows()) == 3, "the note's editor")
        type_text("drink\nwater")
        click_at(editor.program.child("確 定")["rect"])
        editor.shows("source", "drink\nwater")
    pick(editor, moment)
    editor.click("save task")
    until(lambda: len(folder.tasks()) == before + 1, "the task")


def change_the_note(folder, program):
    """First to a name that another task has."""
    editor = open_editor_on(program, 1)
    assert editor.texts()["name"] == "note"
    editor.fill("name", "RADIO")
    editor.fill("interval", "3")
    editor.click("save task")
    editor.box_text()
    assert not editor.window()["enabled"]
    editor.answer(SAME_NAME, OK)
    assert editor.is_editing()
    assert editor.texts() == {"name": "RADIO", "source": "drink\r\nwater", "interval": "3"}
    # The name has the keyboard, and is selected.
    type_text("memo")
    editor.click("enabled")
    press_key("Return")
    until(lambda: folder.tasks()[1].name == "memo", "the new name")
    assert not editor.is_editing()
    return editor


def remove_the_radio(folder, editor):
    editor.select(0)
    editor.shows("name", "radio")
    for answer, count in ((NO, 4), (YES, 3)):
        editor.click("remove")
        editor.answer("您確定要移除【radio】嗎？", answer)
        until(lambda: len(folder.tasks()) == count, f"{count} tasks")
    assert editor.texts()["name"] == "memo"


def check_the_records(folder, moment, steps):
    """Each task ran at the moment and is due again a step later."""
    until(lambda: all(task.last_run != ZERO_DAY for task in folder.tasks()), "each run's record")
    for task, step in zip(folder.tasks(), steps):
        assert task.next_run - moment in (step, 2 * step), task.name
        assert timedelta() <= task.last_run - moment < timedelta(seconds=12), task.name


def close_the_note(program):
    until(program.notes, "the note")
    click_at(program.notes()[0]["rect"], times=2)
    until(lambda: not program.notes(), "the end of the note")


def test_tasks_of_every_kind_are_made_run_changed_removed_and_kept(folder, start):
    # Beside the program's folder, whose name cannot be typed.
    reports = Reports(folder, folder.path.parent)
    kinds = [("radio", RADIO, "Http://127.0.0.1:9/a|b", DAYS, 7), ("note", NOTE, None, DAYS, 1),
             ("music", MUSIC, silence(folder), HOURS, 24),
             ("program", APPLICATION, reports.command("report"), MINUTES, 1)]
    program = start().started()
    assert folder.tasks() == []

    # All of them fall due soon after the editor is closed.
    moment = moment_in_this_hour(45)
    editor = open_editor(program)
    for number, kind in enumerate(kinds):
        if number > 0:
            editor.click("new")
        make(folder, editor, moment, *kind)
    editor.close()
    assert now() < moment, "the tasks were made too late for this test"
    made = [(name, media, source or r"drink\r\nwater", unit, interval, True)
            for name, media, source, unit, interval in kinds]
    assert [facts(task) for task in folder.tasks()] == made

    until(lambda: reports.exists("report"), "the program that was due", 120)
    steps = [timedelta(days=7), timedelta(days=1), timedelta(hours=24), timedelta(minutes=1)]
    check_the_records(folder, moment, steps)
    close_the_note(program)

    editor = change_the_note(folder, program)
    remove_the_radio(folder, editor)
    editor.close()
    assert program.exit() == 0
    kept = [("memo", *made[1][1:4], 3, False), made[2], made[3]]
    assert [facts(task) for task in folder.tasks()] == kept
    start().started()
    assert [facts(task) for task in folder.tasks()] == kept
    assert folder.backups() == []


def test_a_task_is_made_and_given_up_by_keys_alone_and_alt_f4_asks(folder, start):
    program = start().started()
    editor = open_editor(program)
    # The name box has the keyboard, its text selected.
    type_text("by keys")
    press_key("Tab", "End", "Tab")
    type_text("one\ntwo")
    press_key("ctrl+Return")
    until(folder.tasks, "the task")
    assert facts(folder.tasks()[0]) == ("by keys", NOTE, "one\\r\\ntwo", MINUTES, 1, True)
    # Enter, the default answer, keeps what was typed.
    for key, question in (("Escape", GIVING_UP), ("alt+F4", UNSAVED)):
        press_key("F2")
        until(editor.is_editing, "the fields in use")
        type_text("given up")
        editor.shows("name", "given up")
        press_key(key)
        assert editor.box_text() == question
        press_key("Return")
        editor.box_is_gone()
        assert editor.texts()["name"] == "given up"
        press_key(key)
        editor.answer(question, YES)
        if key == "Escape":
            editor.shows("name", "by keys")
    editor.is_gone()
    # The main window is in use again. Without changes there is no question.
    editor = open_editor(program)
    press_key("Escape")
    until(lambda: not editor.is_editing(), "the list")
    press_key("Insert")
    until(editor.is_editing, "a new task")
    press_key("Escape")
    until(lambda: not editor.is_editing(), "the list")
    press_key("Escape")
    editor.is_gone()
    assert len(folder.tasks()) == 1

"""The schedule editor with real clicks and keys: tasks made, changed, removed, run, kept."""

import wave
from datetime import timedelta

from editor import Editor, open_editor, open_editor_on, type_text
from harness import LOCALE, click_at, press_key, until, windows_path
from joblist import (APPLICATION, DAYS, HOURS, MINUTES, MUSIC, NOTE, RADIO, ZERO_DAY, Task,
                     list_bytes, now, read_tasks)

SAME_NAME = "排程專案名稱重複，請另外指定一個新的排程專案名稱"
UNSAVED = "正在編輯的排程專案尚未儲存，您確定要關閉嗎？"
GIVING_UP = "排程專案尚未儲存，您確定要放棄變更嗎？"
FIRST_BUTTON, SECOND_BUTTON = 0, 1
YES, NO = FIRST_BUTTON, SECOND_BUTTON


def saved(folder):
    return read_tasks(folder.list.read_bytes())


def facts(task):
    return task.name, task.media_type, task.source, task.unit, task.interval, task.enabled


def moment_in_this_hour(seconds):
    """So many seconds ahead, once that is still in the hour of now."""
    def ahead():
        moment = now() + timedelta(seconds=seconds)
        return moment if moment.hour == now().hour else None
    return until(ahead, "the next hour", 2 * seconds)


def pick(editor, moment):
    """Types the minute and the second into the time picker; its hour is that of now."""
    editor.click("time")
    # The morning or afternoon stands before the hour, or behind the seconds.
    press_key(*["Right"] * (3 if LOCALE == "zh_TW" else 2))
    type_text(f"{moment.minute:02}")
    press_key("Right")
    type_text(f"{moment.second:02}")
    press_key("shift+Tab")
    until(lambda: f"{moment:%M:%S}" in editor.controls()["time"]["text"], "the moment")


def probe(folder):
    """A program that reports, and its report."""
    report = folder.path.parent / "report"
    executable = folder.add("CommandProbe.exe").rename(folder.path.parent / "probe.exe")
    return f"{windows_path(executable)} {windows_path(report)}", report


def silence(folder):
    """A second of it, to be played."""
    sound = folder.path.parent / "a.wav"
    with wave.open(str(sound), "wb") as file:
        file.setparams((1, 2, 8_000, 0, "NONE", ""))
        file.writeframes(bytes(16_000))
    return windows_path(sound)


def make(folder, editor, moment, *fields):
    """Fills in a new task that falls due at a moment, and saves it."""
    before = len(saved(folder))
    editor.fill_in(*fields)
    if fields[1] == NOTE:
        editor.click("...")
        until(lambda: len(editor.program.windows()) == 3, "the note's editor")
        type_text("drink\nwater")
        click_at(editor.program.child("確 定")["rect"])
        until(lambda: editor.texts()["source"] == "drink\r\nwater", "the note in the source box")
    pick(editor, moment)
    editor.click("save task")
    until(lambda: len(saved(folder)) == before + 1, "the task")


def change_the_note(folder, program):
    """First to a name that another task has."""
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
    editor.click("enabled")
    press_key("Return")
    until(lambda: saved(folder)[1].name == "memo", "the new name")
    assert not editor.is_editing()
    return editor


def remove_the_radio(folder, editor):
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


def check_the_records(folder, moment, steps):
    """Of tasks that fell due at one moment, each with a step of its own to the next run."""
    until(lambda: all(task.last_run != ZERO_DAY for task in saved(folder)), "each run's record")
    for task, step in zip(saved(folder), steps):
        assert task.next_run - moment in (step, 2 * step), task.name
        assert timedelta() <= task.last_run - moment < timedelta(seconds=12), task.name


def close_the_note(program):
    note = until(lambda: next((window for window in program.windows()
                               if window["class"].startswith("frmNotes")), None), "the note")
    click_at(note["rect"], times=2)
    until(lambda: all(window["class"] != note["class"] for window in program.windows()),
          "the end of the note")


def test_tasks_of_every_kind_are_made_run_changed_removed_and_kept(folder, start):
    command, report = probe(folder)
    kinds = [("radio", RADIO, "Http://127.0.0.1:9/a|b", DAYS, 7), ("note", NOTE, None, DAYS, 1),
             ("music", MUSIC, silence(folder), HOURS, 24),
             ("program", APPLICATION, command, MINUTES, 1)]
    program = start().started()
    assert saved(folder) == []

    # All of them fall due soon after the editor is closed.
    moment = moment_in_this_hour(75)
    editor = open_editor(program)
    for number, kind in enumerate(kinds):
        if number > 0:
            editor.click("new")
        make(folder, editor, moment, *kind)
    editor.close()
    assert now() < moment, "the tasks were made too late for this test"
    made = [(name, media, source or r"drink\r\nwater", unit, interval, True)
            for name, media, source, unit, interval in kinds]
    assert [facts(task) for task in saved(folder)] == made

    until(report.exists, "the program that was due", 120)
    steps = [timedelta(days=7), timedelta(days=1), timedelta(hours=24), timedelta(minutes=1)]
    check_the_records(folder, moment, steps)
    close_the_note(program)

    editor = change_the_note(folder, program)
    remove_the_radio(folder, editor)
    editor.close()
    assert program.exit() == 0
    kept = [("memo", *made[1][1:4], 3, False), made[2], made[3]]
    assert [facts(task) for task in saved(folder)] == kept
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
    assert editor.box()[0] == GIVING_UP
    # The safe answer is the one that Enter gives.
    press_key("Return")
    until(lambda: not editor.find_box(), "the end of the question")
    assert editor.texts()["name"] == "given up"
    press_key("Escape")
    editor.answer(YES)
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
    assert program.main_window()["text"] != Editor.CAPTION

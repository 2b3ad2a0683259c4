"""Close messages from outside, a fatal error, and leaving while something waits for the user."""

import subprocess

import pytest

from clock import CAPTION, clock_menu, clock_shows
from desktop import (BOX_CLASS, DEADLINE, button_of, click_at, tray_icon, type_text, until)
from due import due_task
from editor import NO, UNSAVED, YES, open_editor
from task_list import APPLICATION, NOTE, RADIO, Task

SHOW_WINDOW, LEAVE = 1, 3


@pytest.fixture
def program(open_program):
    program = open_program(Task("kept"), TimeForm="1")
    clock_shows(program)
    return program


def ask_to_close():
    """As a task manager does: a close message to every window, hidden ones too."""
    done = subprocess.run(["wine", "taskkill", "/IM", "Tellurvane.exe"], check=False,
                          stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL, timeout=DEADLINE)
    assert done.returncode == 0


def lives_on_hidden(program, before):
    until(lambda: not program.main_window(), "the hidden window")
    until(tray_icon, "the tray icon")
    assert program.code() is None
    assert program.window(CAPTION)
    assert program.folder.list.read_bytes() == before
    assert program.folder.read_settings()["TimeForm"] == "1"


def leave(program, answer=YES):
    """By the clock's menu. A question about unsaved changes is answered."""
    before = {window["handle"] for window in program.windows()}
    clock_menu(program).choose(LEAVE)

    def question():
        return next((window for window in program.windows() if window["class"] == BOX_CLASS
                     and window["handle"] not in before), None)

    until(lambda: program.code() is not None or question(), "the end or a question")
    if program.code() is None:
        assert UNSAVED in [child["text"] for child in question()["children"]]
        click_at(button_of(question(), answer)["rect"])


def test_a_program_that_is_asked_to_close_hides_and_lives_on(open_program, folder):
    program = open_program(due_task("note", "喝水", media_type=NOTE, interval=50), TimeForm="1")
    click_at(program.row(0), times=2)
    until(program.notes, "the note")
    before = folder.list.read_bytes()
    ask_to_close()
    until(lambda: not program.notes(), "the note closed")
    lives_on_hidden(program, before)
    # Again, while it is hidden.
    ask_to_close()
    lives_on_hidden(program, before)
    leave(program)
    assert program.wait() == 0
    assert folder.list.read_bytes() == before
    trace = program.trace.read_text("ascii", "replace")
    assert "user32.DisableProcessWindowsGhosting(" in trace, "a busy window keeps its look"


@pytest.mark.parametrize("close", [ask_to_close, None], ids=["a close message", "the clock's menu"])
def test_an_editor_asks_before_it_loses_what_was_typed(program, folder, close):
    editor = open_editor(program)
    type_text("typed")
    editor.shows("name", "typed")
    before = folder.list.read_bytes()
    if close:
        close()
        editor.answer(UNSAVED, NO)
    else:
        leave(program, NO)
        editor.box_is_gone()
    assert editor.texts()["name"] == "typed"
    assert program.main_window(), "it stays under its editor"
    assert folder.list.read_bytes() == before
    leave(program, YES)
    assert program.wait(20) == 0
    assert folder.task_names() == ["kept"]


def open_from_editor(editor, media, is_open):
    editor.choose("media", media)
    editor.click("...")
    until(is_open, "the dialog of the editor")


def open_message(editor):
    editor.fill("name", "kept")
    editor.click("save task")
    editor.box_text()


@pytest.mark.parametrize("open_more", [
    lambda editor: None,
    lambda editor: open_from_editor(editor, NOTE, lambda: editor.program.child("確 定")),
    lambda editor: open_from_editor(editor, APPLICATION, editor.program.box),
    lambda editor: open_from_editor(editor, RADIO, lambda: editor.program.window("Radio List")),
    open_message,
], ids=["editor", "note editor", "file dialog", "radio directory", "message"])
def test_leaving_from_a_dialog_ends_the_program_and_loses_nothing(program, folder, open_more):
    open_more(open_editor(program))
    leave(program)
    assert program.wait(20) == 0
    assert folder.task_names() == ["kept"]
    assert folder.backups() == []


def test_a_fatal_error_removes_the_icon(open_program):
    # Without the system's library for rich text the editor's controls cannot be made.
    program = open_program(TimeForm="1",
                           environment={"WINEDLLOVERRIDES": "mscoree,mshtml,riched20="})
    program.hide()
    until(tray_icon, "the tray icon")
    clock_menu(program).choose(SHOW_WINDOW)
    until(program.main_window, "the window, with its icon")
    program.click(program.toolbar_button("new"))
    until(program.box, "the fatal report")
    until(lambda: not tray_icon(), "no icon while the report is open")
    click_at(button_of(program.box(), 0)["rect"])
    assert program.wait() == 1

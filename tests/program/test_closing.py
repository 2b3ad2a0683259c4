"""Close messages from outside, a fatal error, and what keeps others from ending the program."""

import re
import subprocess

import pytest

import menus
from clock import clock, clock_menu, main_window
from editor import BOX_CLASS, open_editor, type_text
from harness import DEADLINE, SETTINGS, click_at, tray_icon, until
from joblist import MINUTES, NOTE, Task, list_bytes


@pytest.fixture(scope="module", autouse=True)
def watch_menus():
    menus.watch("DisableProcessWindowsGhosting")


@pytest.fixture
def open_program(folder, start, tmp_path):
    def open_one(*tasks, environment=None):
        until(lambda: not tray_icon(), "the tray without what was killed before")
        folder.write_settings(SETTINGS | {"TimeForm": "1"})
        folder.list.write_bytes(list_bytes(*(tasks or [Task("kept")])))
        program = start(trace=tmp_path / "trace", environment=environment).started()
        until(lambda: main_window(program) and clock(program), "the window and the clock")
        return program
    return open_one


def ask_to_close():
    """As a task manager does: a close message to every window, hidden ones too."""
    done = subprocess.run(["wine", "taskkill", "/IM", "Tellurvane.exe"], check=False,
                          stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL, timeout=DEADLINE)
    assert done.returncode == 0


def time_form(folder):
    return re.search(r"TimeForm=(.*?)\r\n", folder.settings_text())[1]


def lives_on_hidden(program, folder, before):
    until(lambda: not main_window(program), "the window put away")
    until(tray_icon, "the tray icon")
    assert program.code() is None
    assert clock(program)
    assert folder.list.read_bytes() == before
    assert time_form(folder) == "1"


def leave(program):
    """By the clock's menu; the last entry."""
    clock_menu(program).choose(3)
    assert program.wait() == 0


def test_a_program_that_is_asked_to_close_goes_behind_its_icon_and_lives_on(open_program, folder):
    program = open_program()
    before = folder.list.read_bytes()
    ask_to_close()
    lives_on_hidden(program, folder, before)
    # And once more, while it is hidden.
    ask_to_close()
    lives_on_hidden(program, folder, before)
    leave(program)
    assert folder.list.read_bytes() == before


def test_a_note_that_is_asked_to_close_goes(open_program, folder):
    program = open_program(Task("note", "喝水", media_type=NOTE, unit=MINUTES, interval=50))
    click_at(program.row(0), times=2)

    def note():
        return next((w for w in program.windows() if w["text"] == "frmNotes"), None)

    until(note, "the note")
    before = folder.list.read_bytes()
    ask_to_close()
    until(lambda: not note(), "the end of the note")
    lives_on_hidden(program, folder, before)
    leave(program)


def test_an_editor_that_is_asked_to_close_asks_for_what_was_typed(open_program, folder):
    program = open_program()
    editor = open_editor(program)
    type_text("typed")
    until(lambda: editor.texts()["name"] == "typed", "the typed name")
    before = folder.list.read_bytes()
    ask_to_close()
    editor.answer(1)
    assert editor.texts()["name"] == "typed"
    assert main_window(program), "it stays under its editor"
    assert folder.list.read_bytes() == before
    editor.close("cancel")
    assert program.exit() == 0


def test_windows_puts_no_ghost_over_a_window_that_is_busy(open_program):
    program = open_program()
    assert "user32.DisableProcessWindowsGhosting(" in program.trace.read_text("ascii", "replace")


def test_a_fatal_error_takes_the_icon_away(open_program):
    # Without the system's library for rich text the editor's controls cannot be made.
    program = open_program(environment={"WINEDLLOVERRIDES": "mscoree,mshtml,riched20="})
    ask_to_close()
    until(tray_icon, "the tray icon")
    clock_menu(program).choose(1)
    until(lambda: main_window(program), "the window, with its icon")
    program.click(program.toolbar_button(1))

    def box():
        return next((w for w in program.windows() if w["class"] == BOX_CLASS), None)

    until(box, "the fatal report")
    until(lambda: not tray_icon(), "no icon while the report is open")
    button, = [c for c in box()["children"] if c["class"] == "Button" and c["visible"]]
    click_at(button["rect"])
    assert program.wait() == 1

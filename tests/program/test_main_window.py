"""The main window with real clicks and keys: hiding and coming back, running tasks."""

import pytest

from desktop import (click_at, click_tray_icon, picture, press_key, run, tray_icon, until,
                     until_the_tray_is_empty)
from due import NEVER_RUN, Reports, due_task, has_run
from task_list import NOTE
from taskbar import is_in_taskbar, skips_taskbar

BELOW_THE_ROWS = [3, 280, 351, 300]


class Window:
    """The running program with two tasks, of which the first starts a program that reports."""

    def __init__(self, folder, start):
        until_the_tray_is_empty()
        self.folder = folder
        self.reports = Reports(folder)
        folder.write_list(self.reports.task("program"), due_task("note", "text", media_type=NOTE))
        self.program = start().started()
        self.parts = self.program.parts()
        self.rows = [self.program.row(index) for index in range(2)]

    def has_run(self):
        """Waits until the first task has run."""
        self.reports.read("program")
        until(lambda: has_run(self.folder, "program"), "the record of the run")
        assert not has_run(self.folder, "note")

    def input_is_handled(self):
        """Waits for the effect of another click, which is handled after earlier input."""
        click_at(self.parts["volume"], 0.9)
        until(lambda: "SavedVolume=50" not in self.folder.settings_text(), "the volume")


@pytest.fixture
def window(folder, start):
    return Window(folder, start)


CLOSERS = {"the close box": lambda program: program.click_close_box(),
           "Alt+F4": lambda program: program.press("alt+F4")}


@pytest.mark.parametrize("way", CLOSERS)
def test_a_closed_window_is_in_the_tray_and_comes_back_by_its_icon(window, way):
    program = window.program
    until(lambda: is_in_taskbar(program), "the taskbar button")
    assert not tray_icon()
    before = program.main_window()["rect"]
    for _ in range(2):
        program.hide(lambda: CLOSERS[way](program))
        until(tray_icon, "the tray icon")
        assert not is_in_taskbar(program) and not skips_taskbar(program)
        click_tray_icon()
        until(program.on_screen, "the window")
        until_the_tray_is_empty()
        until(lambda: is_in_taskbar(program), "the taskbar button")
        assert program.main_window()["rect"] == before
    # Its rows are there and can be run.
    program.click(window.rows[0])
    press_key("Return")
    window.has_run()


def test_a_minimised_window_stays_in_the_taskbar(window):
    program = window.program
    handle, = program.on_screen()

    def has_state(name):
        return name in run("xprop", "-id", handle, "WM_STATE")

    run("xdotool", "windowminimize", handle)
    until(lambda: has_state("Iconic"), "the window minimised")
    assert not tray_icon()
    run("xdotool", "windowactivate", handle)
    until(lambda: has_state("Normal"), "the window again")
    until(lambda: program.main_window()["rect"][0] >= 0, "the window in its place")
    assert is_in_taskbar(program)


RUNNERS = {
    "a double click": lambda window: click_at(window.rows[0], times=2),
    "Enter": lambda window: (click_at(window.rows[0]), press_key("Return")),
    "the play button": lambda window: (
        click_at(window.rows[0]), click_at(window.program.toolbar_button("play"))),
    "keys alone": lambda window: press_key("Up", "Return"),
}


@pytest.mark.parametrize("way", RUNNERS)
def test_the_selected_task_is_run_and_its_row_shows_it(window, way):
    left, top, right, bottom = window.rows[0]
    name, rest = [left, top, right, top + 18], [left, top + 18, right, bottom]
    window.program.click(window.rows[1])
    before = picture(name), picture(rest)
    RUNNERS[way](window)
    window.has_run()

    # Back to the other row: now only the date of the last run makes a difference. X can lose a click
    # that follows a key at once.
    def shows_another_last_run():
        click_at(window.rows[1])
        return picture(name) == before[0] and picture(rest) != before[1]

    until(shows_another_last_run, "another last run in its row")


def test_the_mouse_runs_nothing_without_a_selection_and_by_selecting_alone(window):
    program = window.program
    written = window.folder.list.stat().st_mtime_ns
    program.click(BELOW_THE_ROWS)
    program.click(program.toolbar_button("play"))
    click_at(BELOW_THE_ROWS, times=2)
    press_key("Delete")
    before = picture(window.rows[0])
    icon = before.crop((22, 27, 54, 59))
    assert len(icon.getcolors(32 * 32)) > 2
    program.click(window.rows[0])
    until(lambda: picture(window.rows[0]) != before, "the row selected")
    press_key("Delete")
    window.input_is_handled()
    assert window.folder.list.stat().st_mtime_ns == written
    assert [task.last_run for task in window.folder.tasks()] == [NEVER_RUN] * 2
    assert not window.reports.exists("program")
